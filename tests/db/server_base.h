#pragma once

#include "db/error_of.h"
#include "platform/core/text.h"
#include "platform/db/pooled_factory.h"
#include "support/postgres_database.h"

namespace quilla {

/// A small base on the server of the run, with a factory on it.
class ServerBase {
public:
    ServerBase()
    {
        Connection connection = open();
        connection.prepareEmptyBase();
        for (const auto& part : sql::splitScript(script()))
            connection.execute(part.text);
    }

    QString text() const { return database.connectionText(); }
    Connection open() { return factory.open(text()); }
    /// The first field of the first row, through a connection of its own.
    QString one(QStringView tsql) { return open().open(tsql).field(0).text(); }
    /// Ends all but the test's own connection, as a server that fails does.
    void dropConnections() const
    {
        database.run("select pg_terminate_backend(pid) from pg_stat_activity where "
                     "datname=current_database() and pid<>pg_backend_pid()");
    }

    static QString script()
    {
        return u"create table book (bookid int identity(1,1) not null primary key, code varchar(20) not "
               u"null, "
               "name varchar(50), price decimal(8,3), lent bit default 0, day datetime, memo "
               "varchar(20000))\n"
               "go\n"
               "create index ix_book_code on book (code)\n"_s;
    }

    PostgresDatabase database;
    SystemClock clock;
    sql::Schema schema = sql::readSchema(script());
    PooledFactory factory {schema, clock};
};

} // namespace quilla
