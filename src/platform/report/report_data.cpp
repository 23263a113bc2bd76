#include "platform/report/report_data.h"

#include "platform/core/dates.h"
#include "platform/core/error.h"
#include "platform/db/decimal.h"

#include <optional>

namespace quilla {

namespace {

constexpr int CentPlaces = 2;

int neededIndexOf(const Recordset& rows, const QString& field, const ReportDesign& design)
{
    const auto index = rows.findField(field);
    if (!index)
        throw Error(ErrorNumber::NoSuchField, u"Report"_s,
            u"报表“%1”需要的字段 %2 不在查询结果中。"_s.arg(design.title, field));
    return *index;
}

std::optional<Decimal> decimalOf(const Value& value)
{
    return value.isNull() ? std::nullopt : Decimal::read(value.text());
}

QString amountText(const Decimal& amount, Content content)
{
    return content == Content::Money ? amount.fixed(CentPlaces) : amount.text();
}

/// One line: what would break it becomes a blank.
QString plainText(QString text)
{
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator
            || c == QChar::ParagraphSeparator)
            c = u' ';
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

QString textOf(const Value& value, Content content)
{
    if (value.isNull()) return {};
    if (value.kind() == sql::Kind::Date || content == Content::Date)
        if (const auto moment = value.moment()) return isoDate(moment->date);
    if (value.kind() == sql::Kind::Decimal || content == Content::Money)
        if (const auto amount = decimalOf(value)) return amountText(*amount, content);
    return plainText(value.text());
}

Content contentUnder(const ReportDesign& design, const ReportTotal& total)
{
    const QString& field = total.under.isEmpty() ? total.field : total.under;
    for (const ReportColumn& column : design.Section1)
        if (column.field == field) return column.content;
    return Content::Money;
}

} // namespace

/// The totals of a report while its rows go by.
class ReportData::Sums {
public:
    explicit Sums(const ReportDesign& design)
        : m_design(design)
        , m_sums(design.Section5.size())
    {
    }

    void look(const Recordset& rows)
    {
        m_indexes.clear();
        for (std::size_t i = 0; i < m_sums.size(); ++i) {
            m_indexes.push_back(rows.findField(m_design.Section5[i].field));
            if (m_indexes.back() && !m_sums[i]) m_sums[i] = Decimal();
        }
    }

    void add(const Recordset& row)
    {
        for (std::size_t i = 0; i < m_sums.size(); ++i)
            if (m_indexes[i])
                if (const auto amount = decimalOf(row.field(*m_indexes[i]))) m_sums[i] = *m_sums[i] + *amount;
    }

    QStringList texts() const
    {
        QStringList texts;
        for (std::size_t i = 0; i < m_sums.size(); ++i)
            texts.append(
                m_sums[i] ? amountText(*m_sums[i], contentUnder(m_design, m_design.Section5[i])) : QString());
        return texts;
    }

private:
    const ReportDesign& m_design;
    std::vector<std::optional<int>> m_indexes;
    std::vector<std::optional<Decimal>> m_sums; ///< nothing for a field that no rows have
};

ReportData::ReportData(const ReportDesign& design, Recordset& rows)
    : m_columns(qsizetype(design.Section1.size()))
{
    Sums sums(design);
    if (rows.recordCount() >= 0) rows.first();
    design.group.empty() ? readRows(design, rows, sums) : readGroups(design, rows, sums);
    m_totals = sums.texts();
}

void ReportData::readRows(const ReportDesign& design, Recordset& rows, Sums& sums)
{
    std::vector<int> indexes;
    for (const ReportColumn& column : design.Section1)
        indexes.push_back(neededIndexOf(rows, column.field, design));
    sums.look(rows);
    for (; !rows.eof(); rows.next()) {
        for (std::size_t column = 0; column < indexes.size(); ++column)
            m_cells.push_back(textOf(rows.field(indexes[column]), design.Section1[column].content));
        sums.add(rows);
    }
}

void ReportData::readGroups(const ReportDesign& design, Recordset& groups, Sums& sums)
{
    const ReportGroup& group = design.group.front();
    std::vector<int> heads;
    for (const ReportLine& line : group.Section6)
        if (!line.field.isEmpty()) heads.push_back(neededIndexOf(groups, line.field, design));
    for (; !groups.eof(); groups.next()) {
        Group read {{}, rows(), 0};
        for (const int head : heads)
            read.heads.append(plainText(groups.field(head).text()));
        Recordset child = groups.child(group.rows);
        readRows(design, child, sums);
        read.count = rows() - read.first;
        m_groups.push_back(read);
    }
}

} // namespace quilla
