#include "desk/scan_log_ops.h"

#include "frame/work.h"
#include "platform/db/sources.h"

namespace quilla {

namespace {

/// Rows of texts.
class TextCursor final : public Cursor {
public:
    TextCursor(const QStringList& names, std::vector<std::vector<std::string>> rows)
        : m_rows(std::move(rows))
    {
        std::vector<Field> fields;
        for (const QString& name : names)
            fields.push_back({name, sql::Kind::Text});
        m_fields = std::make_shared<const std::vector<Field>>(std::move(fields));
    }

    Fields fields() const override { return m_fields; }
    bool step() override { return ++m_row < qsizetype(m_rows.size()); }
    Cell cell(int column) override
    {
        return {Cell::Form::Text, 0, m_rows[std::size_t(m_row)][std::size_t(column)]};
    }

private:
    Fields m_fields;
    std::vector<std::vector<std::string>> m_rows;
    qsizetype m_row = -1;
};

QString dueNote(const Recordset& copy)
{
    return copy.eof() ? QString() : isoDate(copy.field(u"yhdate").moment());
}

/// The sum of the fines of this copy and reader today, empty for none.
QString finesNote(ResumingWork& work, const ScanEntry& entry)
{
    const Recordset sum = work.select(
        u"select sum(sfmoney) from fkk where barcode='%1' and readercode='%2' and opratedate='%3'"_s.arg(
            doubled(entry.barcode), doubled(entry.readercode), isoDate(entry.time.date)));
    const auto amount = Decimal::read(sum.eof() ? QString() : sum.field(0).text());
    return amount ? u"罚款 %1 元"_s.arg(amount->fixed(2)) : u"已还"_s;
}

void noteOutcome(ResumingWork& work, ScanEntry& entry, const Recordset& copy)
{
    const bool lends = entry.kind == ScanKind::Charge || entry.kind == ScanKind::Renewal;
    const QString due = lends ? dueNote(copy) : QString();
    if (work.failed() || (lends && due.isEmpty()))
        entry.outcome = ScanOutcome::Failed;
    else if (lends)
        entry.note = u"应还 "_s + due;
    else if (entry.kind == ScanKind::Fine)
        entry.note = finesNote(work, entry);
}

QString nameOf(ResumingWork& work, const QString& readercode)
{
    if (readercode.isEmpty()) return {};
    const Recordset row
        = work.select(u"select name from dzk where readercode='%1'"_s.arg(doubled(readercode)));
    return row.eof() ? QString() : trimBlanks(row.field(0).text());
}

} // namespace

void completeScan(Session& session, ScanEntry& entry)
{
    ResumingWork work(session, Opened::Directly);
    const Recordset copy = work.select(
        u"select b.bookname,c.yhdate from sck a left join zsk b on a.zskid=b.zskid left join jhsk c on c.barcode=a.barcode where a.barcode='%1'"_s
            .arg(doubled(entry.barcode)));
    if (!copy.eof()) entry.title = trimBlanks(copy.field(0).text());
    entry.readername = nameOf(work, entry.readercode);
    if (entry.outcome == ScanOutcome::Done) noteOutcome(work, entry, copy);
}

Recordset scanRows(const std::vector<ScanEntry>& entries)
{
    std::vector<std::vector<std::string>> rows;
    for (const ScanEntry& entry : entries) {
        const QString result = wordOf(entry.outcome) + u' ' + entry.note;
        std::vector<std::string> row;
        for (const QString& text : {entry.time.time.toString(u"HH:mm:ss"_s), wordOf(entry.kind),
                 entry.barcode, entry.title, entry.readercode, entry.readername, trimBlanks(result)})
            row.push_back(text.toStdString());
        rows.push_back(std::move(row));
    }
    TextCursor cursor(
        {u"scantime"_s, u"kind"_s, u"barcode"_s, u"bookname"_s, u"readercode"_s, u"name"_s, u"result"_s},
        std::move(rows));
    return Recordset(std::make_unique<KeysetSource>(cursor));
}

} // namespace quilla
