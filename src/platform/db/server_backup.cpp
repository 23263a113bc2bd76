#include "platform/db/server_backup.h"

#include "platform/core/new_file.h"
#include "platform/core/text.h"
#include "platform/db/odbc/odbc_text.h"
#include "platform/db/open_driver.h"

#include <QProcess>
#include <QRegularExpression>

namespace quilla {

namespace {

struct Server {
    QString host;
    QString port;
    QString user;
    QString password;
    QString database;
    QString encryption; ///< the driver's setting for it
    QString authority; ///< the file of the certificate by which the server is known; empty for the usual one
};

/// "sslrootcert=/etc/ssl/library.pem" among what the driver hands on to the server's own library.
QString authorityOf(const ConnectionItems& items)
{
    static const QRegularExpression file(u"\\bsslrootcert\\s*=\\s*([^\\s{}]+)"_s);
    return file.match(settingOf(items, {u"pqopt"})).captured(1);
}

Server serverOf(const ConnectionItems& items)
{
    return {settingOf(items, {u"Servername", u"Server"}), settingOf(items, {u"Port"}),
        settingOf(items, {u"UID", u"Username"}), settingOf(items, {u"PWD", u"Password"}),
        settingOf(items, {u"Database"}), settingOf(items, {u"SSLmode"}), authorityOf(items)};
}

/// The tool takes from its environment what other users can't see there.
QProcessEnvironment environmentFor(const Server& server)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const std::pair<QString, QString> values[] {{u"PGHOST"_s, server.host}, {u"PGPORT"_s, server.port},
        {u"PGUSER"_s, server.user}, {u"PGPASSWORD"_s, server.password}, {u"PGDATABASE"_s, server.database},
        {u"PGSSLMODE"_s, server.encryption}, {u"PGSSLROOTCERT"_s, server.authority}};
    for (const auto& [name, value] : values)
        if (!value.isEmpty()) environment.insert(name, value);
    return environment;
}

Error failed(const QString& program, const QString& why)
{
    return Error(75, program, u"%1 没有成功：\n%2"_s.arg(program, why.trimmed()));
}

void run(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess tool;
    tool.setProcessEnvironment(environment);
    tool.setStandardOutputFile(QProcess::nullDevice());
    tool.start(program, arguments);
    if (!tool.waitForStarted())
        throw failed(program, u"没有找到这个程序，请先安装软件包 postgresql-client。"_s);
    tool.waitForFinished(-1);
    if (tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0)
        throw failed(program, QString::fromLocal8Bit(tool.readAllStandardError()));
}

/// Written and read back under another name, so that a file with the name is a whole backup.
void dump(const Server& server, const QString& to)
{
    NewFile file(to);
    const QProcessEnvironment environment = environmentFor(server);
    run(u"pg_dump"_s, {u"--format=custom"_s, u"--no-password"_s, u"--file"_s, file.part()}, environment);
    run(u"pg_restore"_s, {u"--file"_s, QProcess::nullDevice(), file.part()}, environment);
    file.finish();
}

/// The data of a connection in a form in which a name may hold any character.
QString databaseItem(const Server& server)
{
    QString name = server.database;
    return u"dbname='%1'"_s.arg(name.replace(u"\\"_s, u"\\\\"_s).replace(u"'"_s, u"\\'"_s));
}

/// Stops at the first error and leaves the database as it was.
void refill(const Server& server, const QString& from)
try {
    run(u"pg_restore"_s,
        {u"--single-transaction"_s, u"--exit-on-error"_s, u"--no-owner"_s, u"--no-password"_s, u"--dbname"_s,
            databaseItem(server), from},
        environmentFor(server));
} catch (const Error& error) {
    throw Error(error.number, error.source,
        error.text + u"\n数据库没有改变。恢复要用空的数据库：已有数据的，请另建一个空的再恢复。"_s);
}

constexpr QStringView BackupStatement = u"BACKUP DATABASE [%1] TO DISK=N'%2' WITH CHECKSUM";
constexpr QStringView RestoreStatement = u"RESTORE DATABASE [%1] FROM DISK=N'%2' WITH CHECKSUM";

/// Throws for a server whose own tools work on its own disk only, with the statement to run there.
void requirePostgres(const ConnectionItems& items, QStringView statement, const QString& file)
{
    const SystemClock clock;
    if (openDriver(items, clock)->engine() == sql::Engine::Postgres) return;
    const Server server = serverOf(items);
    const QString name = file.section(u'/', -1);
    throw Error(5, u"backup"_s,
        u"这种服务器的备份和恢复要在服务器上做，请管理员运行：\n    sqlcmd -S %1 -E -Q \"%2\""_s.arg(
            server.host, statement.toString().arg(server.database, doubled(name))));
}

} // namespace

void backupServer(const ConnectionItems& items, const QString& to)
{
    requirePostgres(items, BackupStatement, to);
    dump(serverOf(items), to);
}

void restoreServer(const ConnectionItems& items, const QString& from)
{
    requirePostgres(items, RestoreStatement, from);
    refill(serverOf(items), from);
}

} // namespace quilla
