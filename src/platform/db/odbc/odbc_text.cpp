#include "platform/db/odbc/odbc_text.h"

#include "platform/core/error.h"
#include "platform/core/text.h"
#include "platform/db/odbc/odbc_handle.h"

#include <odbcinst.h>

#include <algorithm>
#include <span>

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

const OdbcInstallation::DataSource& requireSource(const QString& name, const OdbcInstallation& installed)
{
    for (const auto& source : installed.dataSources)
        if (source.name.compare(name, Qt::CaseInsensitive) == 0) return source;
    throw Error(ErrorNumber::CannotOpen, u"ODBC"_s, u"本机没有名为“%1”的数据源。"_s.arg(name));
}

bool is(const QString& key, QStringView name)
{
    return key.compare(name, Qt::CaseInsensitive) == 0;
}

/// In braces, so that the interface reads no part of it as its own.
QString braced(QString value)
{
    return u'{' + value.replace(u'}', u"}}"_s) + u'}';
}

/// The value of an item. What an operator typed has its quotes doubled; other items stand as they were
/// written. A password alone may hold anything, and is the only value that all drivers take in braces.
QString valueText(const QString& key, QString value)
{
    constexpr QStringView Typed[] {u"Server", u"Servername", u"UID", u"PWD", u"Database"};
    const bool typed = std::ranges::any_of(Typed, [&key](QStringView name) { return is(key, name); });
    if (typed) value.replace(u"''"_s, u"'"_s);
    return is(key, u"PWD") && !value.isEmpty() ? braced(value) : value;
}

QString withoutBraces(const QString& value)
{
    const bool has = value.startsWith(u'{') && value.endsWith(u'}');
    return has ? value.sliced(1, value.size() - 2) : value;
}

struct Option {
    QStringView key;
    QStringView value;
    bool mayDiffer = false; ///< the stored text may set another value
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
    {u"CommLog", u"0", true},
    {u"Debug", u"0", true},
    {u"pqopt", u"{keepalives_idle=15 keepalives_interval=5 keepalives_count=3 tcp_user_timeout=30000}", true},
};

constexpr Option FreeTdsOptions[] {
    {u"ClientCharset", u"UTF-8"},
    {u"TDS_Version", u"7.4", true},
};

bool mentions(const QString& driver, QStringView part)
{
    return driver.contains(part, Qt::CaseInsensitive);
}

std::span<const Option> optionsFor(const QString& driver)
{
    if (mentions(driver, u"postgres") || mentions(driver, u"psqlodbc")) return PostgresOptions;
    if (mentions(driver, u"freetds") || mentions(driver, u"tdsodbc")) return FreeTdsOptions;
    return {};
}

/// A named instance and "host,port" bring their own.
bool needsPort(const ConnectionItems& items)
{
    const QString server = items.value(u"Server").value_or(QString());
    return !server.isEmpty() && !server.contains(u'\\') && !server.contains(u',') && !items.value(u"Port");
}

bool tells(const ConnectionItems& stored, const QString& key)
{
    return !stored.value(key).value_or(QString()).isEmpty();
}

/// What opens the driver: the beginning of the text.
struct Opening {
    QString text;
    QString driver;
    bool isSpelled = false; ///< all items of the data source are written out
};

Opening openingOf(const OdbcInstallation::DataSource& source, const ConnectionItems& stored)
{
    Opening opening {{}, source.driver, !source.items.empty()};
    if (!opening.isSpelled) opening.text = u"DSN=%1;"_s.arg(*stored.value(u"DSN"));
    for (const auto& [key, value] : source.items)
        if (!tells(stored, key))
            opening.text += u"%1=%2;"_s.arg(key, is(key, u"PWD") ? braced(value) : value);
    return opening;
}

/// The data source or the driver, as the driver manager wants it.
Opening openingOf(const ConnectionItems& stored, const OdbcInstallation& installed)
{
    if (const auto name = stored.value(u"DSN")) return openingOf(requireSource(*name, installed), stored);
    const auto name = stored.value(u"Driver");
    if (!name) throw Error(ErrorNumber::CannotOpen, u"ODBC"_s, u"连接信息里既没有数据源，也没有驱动。"_s);
    const QString driver = requireDriver(withoutBraces(*name), installed.drivers);
    return {u"Driver={%1};"_s.arg(driver), driver};
}

/// A value of a data source, or all its keys, each followed by a NUL.
QByteArray profileText(const QByteArray& source, const char* key)
{
    QByteArray text(8000, '\0');
    const int length
        = SQLGetPrivateProfileString(source.constData(), key, "", text.data(), int(text.size()), "odbc.ini");
    text.truncate(std::max(length, 0));
    return text;
}

/// A key of the configuration file as a connection text spells it; empty for what is no business of the
/// driver's.
QString connectionKey(const QString& key)
{
    if (is(key, u"Username")) return u"UID"_s;
    if (is(key, u"Password")) return u"PWD"_s;
    return is(key, u"Description") || is(key, u"Setup") ? QString() : key;
}

std::vector<std::pair<QString, QString>> itemsToSpell(const QString& name)
{
    const auto isAscii = [](QChar c) { return c.unicode() < 0x80; };
    if (std::ranges::all_of(name, isAscii)) return {};
    const QByteArray source = name.toUtf8();
    std::vector<std::pair<QString, QString>> items;
    for (const QByteArray& key : profileText(source, nullptr).split('\0')) {
        const QString spelled = connectionKey(QString::fromUtf8(key));
        if (spelled.isEmpty()) continue;
        const QString value = QString::fromUtf8(profileText(source, key.constData()));
        if (!value.isEmpty()) items.emplace_back(spelled, value);
    }
    return items;
}

} // namespace

OdbcInstallation OdbcInstallation::read()
{
    const OdbcEnvironment environment;
    OdbcInstallation installed;
    for (const auto& driver : environment.drivers())
        installed.drivers += driver.name;
    for (const auto& source : environment.dataSources())
        installed.dataSources.push_back({source.name, source.description, itemsToSpell(source.name)});
    return installed;
}

QString dataSourceItem(const QString& source, const QString& key)
{
    return QString::fromUtf8(profileText(source.toUtf8(), key.toUtf8().constData()));
}

QString settingOf(const ConnectionItems& items, std::initializer_list<QStringView> keys)
{
    QString setting = items.firstOf(keys);
    if (!setting.isEmpty()) return setting.replace(u"''"_s, u"'"_s);
    const QString source = items.value(u"DSN").value_or(QString());
    for (const QStringView key : keys) {
        if (source.isEmpty()) break;
        setting = dataSourceItem(source, key.toString());
        if (!setting.isEmpty()) return setting;
    }
    return {};
}

QString odbcText(const ConnectionItems& items, const OdbcInstallation& installed)
{
    auto [text, driver, isSpelled] = openingOf(items, installed);
    const auto options = optionsFor(driver);
    for (const auto& [key, value] : items.items) {
        const bool isOurs = std::ranges::any_of(
            options, [&key = key](const Option& option) { return !option.mayDiffer && is(key, option.key); });
        const bool leavesToSource = isSpelled && value.isEmpty();
        if (!isOurs && !leavesToSource && !is(key, u"PROVIDER") && !is(key, u"DSN") && !is(key, u"Driver"))
            text += key + u'=' + valueText(key, value) + u';';
    }
    for (const Option& option : options)
        if (!option.mayDiffer || !items.value(option.key)) text += u"%1=%2;"_s.arg(option.key, option.value);
    if (options.data() == FreeTdsOptions && needsPort(items)) text += u"Port=1433;"_s;
    return text;
}

} // namespace quilla
