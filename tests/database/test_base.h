#pragma once

#include "database/library_schema.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"
#include "support/fixed_clock.h"

#include <QTemporaryDir>
#include <QtTest>

namespace quilla {

/// An embedded library in a folder of its own; the server's day is 2003-10-01.
struct TestBase {
    explicit TestBase(const std::function<void(Connection&)>& fill = {})
    {
        createEmbedded(file, schema, clock, [&](Connection& created) {
            createLibrary(created);
            insertInitialRows(created, u"admin"_s);
            if (fill) fill(created);
        });
        connection = factory.open(u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, file));
    }

    /// All rows of a select: fields parted by "|", rows by line breaks.
    QString rows(QStringView select)
    {
        QStringList lines;
        for (Recordset row = connection.open(select); !row.eof(); row.next()) {
            QStringList fields;
            for (int field = 0; field < row.fieldCount(); ++field)
                fields += row.field(field).isNull() ? u"null"_s : row.field(field).text();
            lines += fields.join(u'|');
        }
        return lines.join(u'\n');
    }

    QTemporaryDir folder;
    QString file = folder.filePath(u"library.db"_s);
    FixedClock clock {{QDate(2003, 10, 1), QTime(9, 30)}};
    sql::Schema schema = librarySchema();
    PooledFactory factory {schema, clock};
    Connection connection;
};

} // namespace quilla
