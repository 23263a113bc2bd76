#include "database/copy_library.h"

#include "database/library_schema.h"
#include "database/row_text.h"
#include "platform/core/text.h"

namespace quilla {

namespace {

Error fault(const QString& table, const QString& what)
{
    return Error(57, u"copy"_s, u"复制表 %1 时出错：%2"_s.arg(table, what));
}

QString columnList(const sql::Table& table)
{
    QStringList names;
    for (const sql::Column& column : table.columns)
        names += column.name;
    return names.join(u',');
}

qint64 rowCount(Connection& connection, const QString& table)
{
    return connection.open(u"select count(*) from "_s + table).field(0).integer().value_or(0);
}

void copyRows(Connection& from, Connection& to, const sql::Table& table)
{
    const QString columns = columnList(table);
    RowText row(to, table.name, columns);
    for (Recordset rows = from.open(u"select %1 from %2"_s.arg(columns, table.name), CursorType::Forward);
         !rows.eof(); rows.next()) {
        for (int field = 0; field < rows.fieldCount(); ++field)
            row.value(rows.field(field));
        row.send();
    }
}

void copyTable(Connection& from, Connection& to, const sql::Table& table, const TableCopied& copied)
{
    try {
        withoutIndexes(to, table.name,
            [&] { to.withOwnNumbers(table, from.lastNumber(table), [&] { copyRows(from, to, table); }); });
    } catch (const Error& error) {
        throw fault(table.name, error.text);
    }
    const qint64 there = rowCount(from, table.name);
    const qint64 here = rowCount(to, table.name);
    if (there != here) throw fault(table.name, u"应有 %1 行，只有 %2 行。"_s.arg(there).arg(here));
    copied(table.name, here);
}

} // namespace

void copyLibrary(Connection& from, Connection& to, const TableCopied& copied)
{
    const sql::Schema schema = librarySchema();
    createLibrary(to);
    for (const sql::Table& table : schema.tables())
        if (!table.view) copyTable(from, to, table, copied);
}

} // namespace quilla
