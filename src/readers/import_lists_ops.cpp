#include "readers/import_lists_ops.h"

#include "platform/core/text_order.h"

namespace quilla {

namespace {

QHash<QString, QString> readNames(Connection& connection, QStringView column, QStringView table)
{
    QHash<QString, QString> names;
    for (Recordset row = connection.open(u"select %1 from %2"_s.arg(column, table)); !row.eof(); row.next())
        names.insert(comparable(row.field(0).text()), row.field(0).text());
    return names;
}

QSet<QString> readCodes(Connection& connection, QStringView table)
{
    QSet<QString> codes;
    Recordset row = connection.open(u"select readercode from %1"_s.arg(table), CursorType::Forward);
    for (; !row.eof(); row.next())
        codes.insert(comparable(row.field(0).text()));
    return codes;
}

QHash<QString, ImportValues> readParameters(Connection& connection)
{
    QStringList columns {u"readerclass"_s};
    for (int field = FirstParameter; field < FirstDetail; ++field)
        columns.append(importField(field).column);
    QHash<QString, ImportValues> parameters;
    Recordset row = connection.open(u"select %1 from jycs"_s.arg(columns.join(u',')));
    for (; !row.eof(); row.next()) {
        ImportValues& values = parameters[comparable(row.field(0).text())];
        for (int field = FirstParameter; field < FirstDetail; ++field)
            values[std::size_t(field)] = row.field(field - FirstParameter + 1).text();
    }
    return parameters;
}

} // namespace

QString comparable(QStringView text)
{
    return QString::fromLatin1(orderKey(text));
}

ImportLists readImportLists(Connection& connection)
{
    ImportLists lists;
    lists.today = connection.open(u"select getdate()").field(0).moment()->date;
    lists.types = readNames(connection, u"readerclass", u"dzlx");
    lists.units = readNames(connection, u"readunit", u"dzdw");
    lists.parameters = readParameters(connection);
    lists.codes = readCodes(connection, u"dzk");
    lists.details = readCodes(connection, u"dzkx");
    return lists;
}

} // namespace quilla
