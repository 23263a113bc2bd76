#pragma once

#include "db/error_of.h"
#include "platform/core/dates.h"
#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"

#include <QTemporaryDir>

/// A small base in a folder of its own, with a factory on it.
class Base {
public:
    Base()
        : schema(quilla::sql::readSchema(script()))
        , factory(schema, clock)
    {
        using namespace quilla;
        createEmbedded(path(), schema, clock, [](Connection& connection) {
            for (const auto& part : sql::splitScript(script()))
                connection.execute(part.text);
        });
    }

    QString path() const { return folder.filePath(QStringLiteral("库.db")); }
    QString text() const
    {
        return QStringLiteral("PROVIDER=MSDASQL;DSN=%1;UID=a;PWD=;Database=%2;")
            .arg(quilla::BuiltInDataSource, path());
    }
    quilla::Connection open() { return factory.open(text()); }
    /// The first field of the first row, through a connection of its own.
    QString one(QStringView tsql) { return open().open(tsql).field(0).text(); }

    static QString script()
    {
        return QStringLiteral(
            "create table book (bookid int identity(1,1) not null, code varchar(20) not null, "
            "name varchar(50), price decimal(8,2), lent bit default 0, day datetime)\n"
            "go\n"
            "create index ix_book_code on book (code)\n");
    }

    QTemporaryDir folder;
    quilla::SystemClock clock;
    quilla::sql::Schema schema;
    quilla::PooledFactory factory;
};
