#pragma once

#include "db/error_of.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"

#include <QTemporaryDir>

namespace quilla {

/// A table of all kinds, and a factory for the base that it is made in.
class BookBase {
public:
    virtual ~BookBase() = default;
    virtual QString text() const = 0;
    Connection open() { return factory.open(text()); }
    /// The first field of the first row, through a connection of its own.
    QString one(QStringView tsql) { return open().open(tsql).field(0).text(); }

    static void fill(Connection& connection)
    {
        for (const auto& part : sql::splitScript(script()))
            connection.execute(part.text);
    }

    SystemClock clock;
    sql::Schema schema = sql::readSchema(script());
    PooledFactory factory {schema, clock};

private:
    static QString script()
    {
        return u"create table book (bookid int identity(1,1) not null primary key,"
               " code varchar(20) not null, name varchar(50), price decimal(8,3), lent bit default 0,"
               " day datetime, memo varchar(20000))\n"
               "go\n"
               "create index ix_book_code on book (code)\n"_s;
    }
};

/// A file in a folder of its own.
class Base final : public BookBase {
public:
    Base() { createEmbedded(path(), schema, clock, fill); }
    ~Base() override { factory.drain(); }
    QString path() const { return folder.filePath(u"库.db"_s); }
    QString text() const override
    {
        return u"PROVIDER=MSDASQL;DSN=%1;UID=a;PWD=;Database=%2;"_s.arg(BuiltInDataSource, path());
    }
    QTemporaryDir folder;
};

} // namespace quilla
