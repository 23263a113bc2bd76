#include "readers/import_readers_ops.h"

#include "database/row_text.h"
#include "platform/core/dates.h"
#include "readers/export_readers_ops.h"
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
        writeDetails(reader);
    }

    /// All that a file can hold, and nothing else of the card.
    void change(const ImportValues& reader)
    {
        const QString code = doubled(reader[ImportField::Code]);
        QStringList settings;
        for (int field = ImportField::Code + 1; field < FirstDetail; ++field)
            settings.append(importField(field).column + u'=' + literal(field, reader[std::size_t(field)]));
        m_connection.execute(u"update dzk set %1 where readercode='%2'"_s.arg(settings.join(u','), code));
        m_connection.execute(u"delete from dzkx where readercode='%1'"_s.arg(code));
        writeDetails(reader);
    }

private:
    QString literal(int field, const QString& value) const
    {
        const Kind kind = m_kinds[std::size_t(field)];
        if (kind != Kind::Text && value.isEmpty()) return u"null"_s;
        return kind == Kind::Text || kind == Kind::Date ? u'\'' + doubled(value) + u'\'' : value;
    }

    void writeDetails(const ImportValues& reader)
    {
        const bool brings = std::any_of(
            reader.begin() + FirstDetail, reader.end(), [](const QString& text) { return !text.isEmpty(); });
        if (!brings) return;
        m_details.text(reader[ImportField::Code]);
        for (int field = FirstDetail; field < ImportField::Count; ++field)
            put(m_details, m_kinds[std::size_t(field)], reader[std::size_t(field)]);
        m_details.send();
    }

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

struct CheckedReader {
    ImportValues values;
    bool known = false; ///< one to change
};

std::vector<CheckedReader> checked(const DelimitedText& text, LineCheck& check, ImportReport& report)
{
    std::vector<CheckedReader> readers;
    for (std::size_t line = 1; line < text.records.size(); ++line) {
        ++report.lines;
        if (check.check(text.records[line]))
            readers.push_back({check.reader(), check.isKnown()});
        else
            report.refused.push_back({text.records[line], check.reason()});
    }
    return readers;
}

ImportValues readReader(Connection& connection, const QString& code)
{
    return readerValues(connection.open(readerSelect() + u" where d.readercode='%1'"_s.arg(doubled(code))));
}

/// Enters the units that are not listed yet, each once; all cards take its first spelling.
void enterUnits(Connection& connection, QHash<QString, QString> units, std::vector<CheckedReader>& readers,
    ImportReport& report)
{
    RowText row(connection, u"dzdw", u"readunit");
    for (CheckedReader& reader : readers) {
        QString& unit = reader.values[ImportField::Unit];
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
    std::vector<CheckedReader>& readers, ImportReport& report)
{
    enterUnits(connection, lists.units, readers, report);
    ReaderWriter writer(connection, schema);
    for (const auto& [reader, known] : readers) {
        const QString& code = reader[ImportField::Code];
        try {
            if (known)
                writer.change(reader);
            else
                writer.write(reader, lists.details.contains(comparable(code)));
        } catch (const Error& error) {
            throw Error(error.number, error.source, u"读者证号 %1：%2"_s.arg(code, error.text));
        }
        ++(known ? report.changed : report.readers);
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
    const std::vector<int> fields = fieldsOfHeadings(report.headings.fields, options.update);

    connection.begin(OnFailure::EndTransaction);
    const ImportLists lists = readImportLists(connection);
    const CurrentReader current = [&](const QString& code) { return readReader(connection, code); };
    LineCheck check(schema, lists, fields, options.addUnits, options.update ? current : CurrentReader());
    std::vector<CheckedReader> readers = checked(text, check, report);
    if (report.refused.empty() || options.skipRefused)
        writeReaders(connection, schema, lists, readers, report);
    options.dryRun ? connection.rollback() : connection.commit();
    if (!options.dryRun) connection.gatherStatistics();
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
