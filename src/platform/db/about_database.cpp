#include "platform/db/about_database.h"

#include "platform/core/text.h"
#include "platform/db/embedded.h"

#include <QDir>

#include <sqlite3.h>
#include <unicode/uversion.h>

namespace quilla {

namespace {

/// The first of the keys that the text holds.
QString firstOf(const ConnectionItems& items, std::initializer_list<QStringView> keys)
{
    for (const QStringView key : keys)
        if (const QString value = items.value(key).value_or(QString()); !value.isEmpty()) return value;
    return {};
}

QString sqliteVersion()
{
    return u"SQLite "_s + QString::fromLatin1(sqlite3_libversion());
}

QString icuVersion()
{
    UVersionInfo numbers;
    u_getVersion(numbers);
    return u"ICU %1.%2"_s.arg(numbers[0]).arg(numbers[1]);
}

} // namespace

DatabaseFacts databaseFacts(const ConnectionItems& items)
{
    if (const auto file = embeddedFileOf(items))
        return {sqliteVersion(), u"文件 "_s + QDir::toNativeSeparators(*file)};
    const QString server = firstOf(items, {u"Servername", u"Server"});
    const QString database = firstOf(items, {u"Database"});
    QString place = server.isEmpty() ? u"由数据源指定的服务器"_s : u"服务器 "_s + server;
    if (!database.isEmpty()) place += u"，数据库 "_s + database;
    return {firstOf(items, {u"Driver", u"DSN"}), place};
}

QStringList databaseLibraries()
{
    return {sqliteVersion(), icuVersion()};
}

} // namespace quilla
