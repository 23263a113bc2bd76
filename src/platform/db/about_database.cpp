#include "platform/db/about_database.h"

#include "platform/core/text.h"
#include "platform/db/embedded.h"

#include <QDir>

#include <sqlite3.h>
#include <unicode/uversion.h>

namespace quilla {

namespace {

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
    const QString server = items.firstOf({u"Servername", u"Server"});
    const QString database = items.firstOf({u"Database"});
    QString place = server.isEmpty() ? u"由数据源指定的服务器"_s : u"服务器 "_s + server;
    if (!database.isEmpty()) place += u"，数据库 "_s + database;
    return {items.firstOf({u"Driver", u"DSN"}), place};
}

QStringList databaseLibraries()
{
    return {sqliteVersion(), icuVersion()};
}

} // namespace quilla
