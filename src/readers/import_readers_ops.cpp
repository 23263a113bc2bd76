#include "readers/import_readers_ops.h"

#include "database/row_text.h"
#include "platform/core/dates.h"
#include "readers/import_check.h"

namespace quilla {

namespace {

using sql::Kind;

void put(RowText& row, Kind kind, const QString& value)
{
    if (kind == Kind::Text) {
        row.text(value);
    } else if (value.isEmpty()) {
        row.null();
    } else if (kind == Kind::Date) {
        row.date(readDay(value).value_or(QDate()));
    } else {
        row.value(Value(DecimalText {value}));
    }
}

/// Writes readers into `dzk`, and those who bring details into `dzkx`.
class ReaderWriter {
public:
    ReaderWriter(Connection& connection, const sql::Schema& schema)
        : m_connection(connection)
        , m_card(connection, u"dzk", columns(0, FirstDetail) + u",orderbook"_s)
        , m_details(connection, u"dzkx", u"readercode,"_s + columns(FirstDetail, ImportField::Count))
    {
        for (int field = 0; field < ImportField::Count; ++field)
            m_kinds.push_back(importColumn(schema, field).kind);
    }

    /// `hasDetails`: a card of that code, gone since, left its details behind; they are another person's.
    void write(const ImportValues& reader, bool hasDetails)
    {
        const QString& code = reader[ImportField::Code];
        for (int field = 0; field < FirstDetail; ++field)
            put(m_card, m_kinds[std::size_t(field)], reader[std::size_t(field)]);
        m_card.number(0).send();
        if (hasDetails) m_connection.execute(u"delete from dzkx where readercode='%1'"_s.arg(doubled(code)));
        const bool brings = std::any_of(
            reader.begin() + FirstDetail, reader.end(), [](const QString& text) { return !text.isEmpty(); });
        if (!brings) return;
        m_details.text(code);
        for (int field = FirstDetail; field < ImportField::Count; ++field)
            put(m_details, m_kinds[std::size_t(field)], reader[std::size_t(field)]);
        m_details.send();
    }

private:
    static QString columns(int first, int end)
    {
        QStringList names;
        for (int field = first; field < end; ++field)
            names.append(importField(field).column);
        return names.join(u',');
    }

    Connection& m_connection;
    std::vector<Kind> m_kinds;
    RowText m_card;
    RowText m_details;
};

/// The spreadsheet's empty columns at the right are no headings.
TextRecord headingsOf(const DelimitedText& text)
{
    if (text.records.empty()) throw Error(5, u"ImportReaders"_s, u"文件是空的。"_s);
    TextRecord headings = text.records.front();
    while (headings.fields.last().trimmed().isEmpty())
        headings.fields.removeLast();
    return headings;
}

std::vector<ImportValues> checked(const DelimitedText& text, LineCheck& check, ImportReport& report)
{
    std::vector<ImportValues> readers;
    for (std::size_t line = 1; line < text.records.size(); ++line) {
        ++report.lines;
        if (check.check(text.records[line]))
            readers.push_back(check.reader());
        else
            report.refused.push_back({text.records[line], check.reason()});
    }
    return readers;
}

/// Enters the units that are not listed yet, each once; all cards take its first spelling.
void enterUnits(Connection& connection, QHash<QString, QString> units, std::vector<ImportValues>& readers,
    ImportReport& report)
{
    RowText row(connection, u"dzdw", u"readunit");
    for (ImportValues& reader : readers) {
        QString& unit = reader[ImportField::Unit];
        if (unit.isEmpty()) continue;
        QString& listed = units[comparable(unit)];
        if (listed.isEmpty()) {
            listed = unit;
            row.text(unit).send();
            report.newUnits.append(unit);
        }
        unit = listed;
    }
}

void writeReaders(Connection& connection, const sql::Schema& schema, const ImportLists& lists,
    std::vector<ImportValues>& readers, ImportReport& report)
{
    enterUnits(connection, lists.units, readers, report);
    ReaderWriter writer(connection, schema);
    for (const ImportValues& reader : readers) {
        const QString& code = reader[ImportField::Code];
        try {
            writer.write(reader, lists.details.contains(comparable(code)));
        } catch (const Error& error) {
            throw Error(error.number, error.source, u"读者证号 %1：%2"_s.arg(code, error.text));
        }
        ++report.readers;
    }
}

} // namespace

ImportReport importReaders(
    Connection& connection, const sql::Schema& schema, const QByteArray& file, const ImportOptions& options)
{
    const QString content = decodedText(file);
    const DelimitedText text = readDelimited(content);
    ImportReport report;
    report.headings = headingsOf(text);
    report.delimiter = text.delimiter;
    report.unknownHeadings = unknownHeadings(report.headings.fields);
    const std::vector<int> fields = fieldsOfHeadings(report.headings.fields);

    connection.begin(OnFailure::EndTransaction);
    const ImportLists lists = readImportLists(connection);
    LineCheck check(schema, lists, fields, options.addUnits);
    std::vector<ImportValues> readers = checked(text, check, report);
    if (report.refused.empty() || options.skipRefused)
        writeReaders(connection, schema, lists, readers, report);
    options.dryRun ? connection.rollback() : connection.commit();
    return report;
}

QByteArray refusedFile(const ImportReport& report)
{
    // Reasons of an earlier run give way to the new ones.
    QList<qsizetype> old;
    for (qsizetype column = report.headings.fields.size() - 1; column >= 0; --column)
        if (report.headings.fields[column].trimmed() == ReasonCaption) old.append(column);
    const auto line = [&](const QString& reason, QStringList fields) {
        for (const qsizetype column : old)
            if (column < fields.size()) fields.removeAt(column);
        return delimitedLine(QStringList {reason} + fields, report.delimiter);
    };
    QString text = u"\ufeff"_s + line(ReasonCaption.toString(), report.headings.fields);
    for (const RefusedLine& refused : report.refused)
        text += line(refused.reason, refused.record.fields);
    return text.toUtf8();
}

} // namespace quilla
