#include "platform/db/odbc/odbc_text.h"

#include "platform/core/error.h"
#include "platform/core/text.h"
#include "platform/db/odbc/odbc_handle.h"

#include <algorithm>

namespace quilla {

namespace {

/// As the connection dialog offers it.
constexpr QStringView SqlServer = u"SQL Server";

QString installedDriver(const QString& stored, const QStringList& drivers)
{
    const auto find = [&drivers](QStringView name) {
        const auto found = std::ranges::find_if(drivers,
            [name](const QString& driver) { return driver.compare(name, Qt::CaseInsensitive) == 0; });
        return found != drivers.end() ? *found : QString();
    };
    QString driver = find(stored);
    if (!driver.isEmpty() || stored.compare(SqlServer, Qt::CaseInsensitive) != 0) return driver;
    driver = find(u"FreeTDS");
    if (!driver.isEmpty()) return driver;
    const QStringList others = drivers.filter(SqlServer.toString(), Qt::CaseInsensitive);
    return others.isEmpty() ? QString() : others.last();
}

QString requireDriver(const QString& stored, const QStringList& drivers)
{
    const QString driver = installedDriver(stored, drivers);
    if (!driver.isEmpty()) return driver;
    const QString known = drivers.isEmpty() ? u"没有任何驱动"_s : drivers.join(u"、"_s);
    throw Error(ErrorNumber::CannotOpen, u"ODBC"_s,
        u"本机没有安装数据库驱动“%1”，请先安装。\n已安装：%2"_s.arg(stored, known));
}

QString driverOfSource(const QString& name, const OdbcInstallation& installed)
{
    for (const auto& [source, driver] : installed.dataSources)
        if (source.compare(name, Qt::CaseInsensitive) == 0) return driver;
    throw Error(ErrorNumber::CannotOpen, u"ODBC"_s, u"本机没有名为“%1”的数据源。"_s.arg(name));
}

/// The value of an item that was typed by an operator: quotes were doubled, and it goes into braces where
/// the interface would else read a part of it as its own. Other items stand as they were written.
QString valueText(const QString& key, QString value)
{
    constexpr QStringView Typed[] {u"DSN", u"Server", u"Servername", u"UID", u"PWD", u"Database"};
    const bool typed = std::ranges::any_of(
        Typed, [&key](QStringView name) { return key.compare(name, Qt::CaseInsensitive) == 0; });
    if (!typed) return value;
    value.replace(u"''"_s, u"'"_s);
    const bool plain = std::ranges::none_of(
        value, [](QChar c) { return QStringView(u"[]{}(),;?*=!@").contains(c) || c.isSpace(); });
    return plain ? value : u'{' + value.replace(u'}', u"}}"_s) + u'}';
}

QString withoutBraces(const QString& value)
{
    const bool has = value.startsWith(u'{') && value.endsWith(u'}');
    return has ? value.sliced(1, value.size() - 2) : value;
}

struct Option {
    QStringView key;
    QStringView value;
};

/// Statements are prepared on the server; transactions and savepoints are ours, since the driver's own give
/// up the whole transaction at a statement that the server can't parse; no catalogue is read for updatable
/// cursors; a server that has gone is noticed.
constexpr Option PostgresOptions[] {
    {u"UseServerSidePrepare", u"1"},
    {u"Protocol", u"7.4-0"},
    {u"UseDeclareFetch", u"0"},
    {u"UpdatableCursors", u"0"},
    {u"BoolsAsChar", u"0"},
    {u"LFConversion", u"0"},
    {u"Parse", u"0"},
    {u"CommLog", u"0"},
    {u"Debug", u"0"},
    {u"pqopt", u"{keepalives_idle=15 keepalives_interval=5 keepalives_count=3 tcp_user_timeout=30000}"},
};

constexpr Option FreeTdsOptions[] {
    {u"TDS_Version", u"7.4"},
    {u"ClientCharset", u"UTF-8"},
};

bool names(const QString& driver, QStringView part)
{
    return driver.contains(part, Qt::CaseInsensitive);
}

QString optionsFor(const QString& driver, const ConnectionItems& items)
{
    QString text;
    const auto add = [&](const Option& option) {
        if (!items.value(option.key)) text += u"%1=%2;"_s.arg(option.key, option.value);
    };
    if (names(driver, u"postgres") || names(driver, u"psqlodbc")) std::ranges::for_each(PostgresOptions, add);
    if (names(driver, u"freetds") || names(driver, u"tdsodbc")) {
        std::ranges::for_each(FreeTdsOptions, add);
        // A named instance and "host,port" bring their own.
        const QString server = items.value(u"Server").value_or(QString());
        const bool hasPort = server.isEmpty() || server.contains(u'\\') || server.contains(u',');
        if (!hasPort) add({u"Port", u"1433"});
    }
    return text;
}

} // namespace

OdbcInstallation OdbcInstallation::read()
{
    const OdbcEnvironment environment;
    OdbcInstallation installed;
    for (const auto& driver : environment.drivers())
        installed.drivers += driver.name;
    for (const auto& source : environment.dataSources())
        installed.dataSources.emplace_back(source.name, source.description);
    return installed;
}

QString odbcText(const ConnectionItems& items, const OdbcInstallation& installed)
{
    QString text;
    QString driver;
    for (const auto& [key, value] : items.items) {
        if (key.compare(u"PROVIDER", Qt::CaseInsensitive) == 0) continue;
        if (key.compare(u"Driver", Qt::CaseInsensitive) == 0) {
            driver = requireDriver(withoutBraces(value), installed.drivers);
            text += u"Driver={"_s + driver + u"};"_s;
            continue;
        }
        if (key.compare(u"DSN", Qt::CaseInsensitive) == 0) driver = driverOfSource(value, installed);
        text += key + u'=' + valueText(key, value) + u';';
    }
    if (driver.isEmpty())
        throw Error(ErrorNumber::CannotOpen, u"ODBC"_s, u"连接信息里既没有数据源，也没有驱动。"_s);
    return text + optionsFor(driver, items);
}

} // namespace quilla
