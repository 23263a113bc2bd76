#include "support/postgres_database.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QCoreApplication>
#include <QFile>

namespace quilla {

namespace {

void execute(PGconn* connection, const QByteArray& text)
{
    checkedResult(PQexec(connection, text.constData()));
}

} // namespace

PostgresResult checkedResult(PGresult* result)
{
    PostgresResult checked(result, PQclear);
    const ExecStatusType status = PQresultStatus(result);
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY)
        return checked;
    throw Error(1, u"test"_s, QString::fromUtf8(PQresultErrorMessage(result)));
}

PostgresDatabase::PostgresDatabase(const QString& from)
{
    QFile file(qEnvironmentVariable("QUILLA_POSTGRES_SOCKET", QStringLiteral(QUILLA_POSTGRES_SOCKET)));
    if (!file.open(QIODevice::ReadOnly))
        throw Error(1, u"test"_s, u"no server: tests/postgres/start.sh "_s + file.fileName());
    m_folder = QString::fromUtf8(file.readAll());
    static int count = 0;
    m_name = u"quilla_%1_%2"_s.arg(QCoreApplication::applicationPid()).arg(++count);
    execute(connectTo(u"postgres"_s).get(),
        "CREATE DATABASE " + m_name.toUtf8()
            + (from.isEmpty() ? QByteArray() : " TEMPLATE " + from.toUtf8()));
    m_connection = connectTo(m_name);
}

PostgresDatabase::~PostgresDatabase()
{
    m_connection.reset();
    try {
        const Link link = connectTo(u"postgres"_s);
        PQclear(PQexec(link.get(), ("DROP DATABASE " + m_name.toUtf8() + " WITH (FORCE)").constData()));
    } catch (const Error&) {
        // The server has gone, and the database with it.
    }
}

PostgresDatabase::Link PostgresDatabase::connectTo(const QString& database) const
{
    const QString text
        = u"host=%1 user=quilla dbname=%2 options='-c client_min_messages=warning'"_s.arg(m_folder, database);
    Link link(PQconnectdb(text.toUtf8().constData()));
    if (PQstatus(link.get()) == CONNECTION_OK) return link;
    throw Error(1, u"test"_s, QString::fromUtf8(PQerrorMessage(link.get())));
}

QString PostgresDatabase::connectionText() const
{
    return u"PROVIDER=MSDASQL;Driver={PostgreSQL Unicode};Servername=%1;Port=5432;Database=%2;Uid=quilla;Pwd="_s
        .arg(m_folder, m_name);
}

void PostgresDatabase::run(const QByteArray& text) const
{
    execute(m_connection.get(), text);
}

void PostgresDatabase::askForPassword(const QByteArray& user) const
{
    const auto shown = checkedResult(PQexec(m_connection.get(), "SHOW hba_file"));
    const QByteArray file = PQgetvalue(shown.get(), 0, 0);
    run("COPY (SELECT 'local all " + user + " scram-sha-256' UNION ALL SELECT 'local all all trust') TO '"
        + file + "'");
    run("SELECT pg_reload_conf()");
    // The server reads it in its own time.
    const QByteArray attempt = "host=" + m_folder.toUtf8() + " dbname=postgres user=" + user;
    for (bool admitted = true; admitted;) {
        const Link link(PQconnectdb(attempt.constData()));
        admitted = PQstatus(link.get()) == CONNECTION_OK;
    }
}

} // namespace quilla
