#pragma once

#include "db/base.h"
#include "support/postgres_database.h"

namespace quilla {

/// The same on the server of the run.
class ServerBase final : public BookBase {
public:
    ServerBase()
    {
        Connection connection = open();
        connection.prepareEmptyBase();
        fill(connection);
    }
    ~ServerBase() override { factory.drain(); }
    QString text() const override { return database.connectionText(); }
    /// Ends all but the test's own connection, as a server that fails does.
    void dropConnections() const
    {
        database.run("select pg_terminate_backend(pid) from pg_stat_activity where "
                     "datname=current_database() and pid<>pg_backend_pid()");
    }
    PostgresDatabase database;
};

} // namespace quilla
