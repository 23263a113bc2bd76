#pragma once

#include <QString>

#include <libpq-fe.h>

#include <memory>

namespace quilla {

/// A database, empty at first, on the private PostgreSQL of a test run, dropped at the end. Throws `Error`
/// when the server was not started: run the test by ctest, or tests/postgres/start.sh before it. The
/// environment may name the file of another server in QUILLA_POSTGRES_SOCKET.
class PostgresDatabase {
public:
    /// A copy of the database `from`, when it is named; nobody may be connected to that one.
    explicit PostgresDatabase(const QString& from = {});
    ~PostgresDatabase();
    PostgresDatabase(const PostgresDatabase&) = delete;
    PostgresDatabase& operator=(const PostgresDatabase&) = delete;

    QString name() const { return m_name; }
    /// What reaches it through ODBC.
    QString connectionText() const;
    /// Gives up the test's own connection to it.
    void disconnect() { m_connection.reset(); }
    PGconn* handle() const { return m_connection.get(); }
    /// One or more statements whose rows do not matter. Throws `Error` with the server's words.
    void run(const QByteArray& text) const;
    /// From now on the server asks this user for the password.
    void askForPassword(const QByteArray& user) const;

private:
    struct Close {
        void operator()(PGconn* connection) const { PQfinish(connection); }
    };
    using Link = std::unique_ptr<PGconn, Close>;

    Link connectTo(const QString& database) const;

    QString m_folder; ///< of the server's socket
    QString m_name;
    Link m_connection;
};

/// A result that is freed. Throws `Error` when it tells of a failure.
using PostgresResult = std::unique_ptr<PGresult, void (*)(PGresult*)>;
PostgresResult checkedResult(PGresult* result);

} // namespace quilla
