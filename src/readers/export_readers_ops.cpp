#include "readers/export_readers_ops.h"

#include "platform/core/dates.h"
#include "platform/core/error.h"
#include "readers/delimited_text.h"

namespace quilla {

namespace {

QString textOf(const Value& value)
{
    if (value.isNull()) return {};
    if (value.kind() == sql::Kind::Date) return isoDate(value.moment());
    if (value.kind() == sql::Kind::Bit) return value.isTrue() ? u"是"_s : u"否"_s;
    return value.text();
}

void write(QIODevice& file, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    if (file.write(bytes) != bytes.size())
        throw Error(5, u"ExportReaders"_s, u"无法写入文件：%1"_s.arg(file.errorString()));
}

} // namespace

QString readerSelect()
{
    QStringList columns;
    for (int field = 0; field < ImportField::Count; ++field)
        columns.append((field < FirstDetail ? u"d."_s : u"x."_s) + importField(field).column);
    return u"select %1 from dzk d left join dzkx x on d.readercode=x.readercode"_s.arg(columns.join(u','));
}

ImportValues readerValues(const Recordset& row)
{
    ImportValues values;
    for (int field = 0; field < ImportField::Count; ++field)
        values[std::size_t(field)] = textOf(row.field(field));
    return values;
}

int exportReaders(Connection& connection, QIODevice& file)
{
    QStringList headings;
    for (int field = 0; field < ImportField::Count; ++field)
        headings.append(importField(field).captions.first());
    write(file, u"\ufeff"_s + delimitedLine(headings, u','));
    int readers = 0;
    Recordset row = connection.open(readerSelect() + u" order by d.readercode"_s, CursorType::Forward);
    for (; !row.eof(); row.next()) {
        ImportValues values = readerValues(row);
        for (const int field : {ImportField::Issued, ImportField::Term})
            if (values[std::size_t(field)].isEmpty()) values[std::size_t(field)] = NoDate.toString();
        write(file, delimitedLine(QStringList(values.begin(), values.end()), u','));
        ++readers;
    }
    return readers;
}

} // namespace quilla
