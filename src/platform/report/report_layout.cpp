#include "platform/report/report_layout.h"

#include "platform/core/error.h"
#include "platform/report/column_places.h"
#include "platform/report/page_writer.h"

namespace quilla {

namespace {

constexpr double SideMargin = 15 * TwipsPerMillimetre;
constexpr double TopMargin = 15 * TwipsPerMillimetre;
constexpr double BottomMargin = 12 * TwipsPerMillimetre;
constexpr double FooterHeight = 22 * TwipsPerPoint;
constexpr double CellPadding = 0.35; ///< of the size of the text
constexpr double RowPadding = 3.5 * TwipsPerPoint;
constexpr double LineSpacing = 1.25;
constexpr int MostLines = 3;
constexpr double LeastCode = 0.65;

} // namespace

ReportLayout::ReportLayout(
    ReportDesign design, ReportData data, ReportFrame frame, std::shared_ptr<const TextRuler> ruler)
    : m_design(std::move(design))
    , m_data(std::move(data))
    , m_frame(std::move(frame))
    , m_ruler(std::move(ruler))
{
    if (m_frame.texts.title.isEmpty()) m_frame.texts.title = m_design.title;
    checkLabels();
    placeColumns();
    breakPages();
}

const std::vector<ReportLine>& ReportLayout::groupLines() const
{
    static const std::vector<ReportLine> none;
    return m_design.group.empty() ? none : m_design.group.front().Section6;
}

void ReportLayout::checkLabels() const
{
    QStringList known;
    const auto note = [&](const ReportLine& line) {
        for (const ReportLabel& label : line.labels)
            known.append(label.name);
    };
    std::for_each(m_design.Section4.begin(), m_design.Section4.end(), note);
    std::for_each(groupLines().begin(), groupLines().end(), note);
    note(m_design.Section3);
    for (const QString& name : m_frame.texts.captions.keys())
        if (!known.contains(name))
            throw Error(
                ErrorNumber::NoSuchField, u"Report"_s, u"报表“%1”没有标签 %2。"_s.arg(m_design.title, name));
}

std::optional<ReportTable> ReportLayout::table() const
{
    QStringList captions;
    for (const ReportColumn& column : m_design.Section1)
        captions.append(filled(column.caption, 0));
    return ReportTable {m_frame.texts.title, captions, m_design, m_data};
}

void ReportLayout::placeColumns()
{
    const QSizeF paper = paperSize(m_design.paper);
    m_area = QRectF(QPointF(SideMargin, TopMargin),
        QPointF(paper.width() - SideMargin, paper.height() - BottomMargin - FooterHeight));
    m_edges = columnEdges(m_design, m_area.left(), m_area.width());
    for (std::size_t column = 0; column < m_design.Section1.size(); ++column) {
        const auto lines = fitEvenLines(filled(m_design.Section1[column].caption, 0), tableFont(true),
            roomOf(int(column)), *m_ruler, MostLines);
        m_captionLines = std::max(m_captionLines, int(lines.size()));
    }
}

Typeface ReportLayout::tableFont(bool bold) const
{
    return {u"宋体"_s, m_design.points, bold};
}

double ReportLayout::cellPadding() const
{
    return CellPadding * m_design.points * TwipsPerPoint;
}

double ReportLayout::roomOf(int column) const
{
    return m_edges[std::size_t(column) + 1] - m_edges[std::size_t(column)] - 2 * cellPadding();
}

double ReportLayout::rowHeight(int lines) const
{
    return lines * m_design.points * TwipsPerPoint * LineSpacing + 2 * RowPadding;
}

/// A number is never cut: it would be another one. Codes and dates stay on one line while they can be read.
std::vector<FittedLine> ReportLayout::fitted(const QString& text, int column) const
{
    const Content content = m_design.Section1[std::size_t(column)].content;
    const bool isNumber = content == Content::Count || content == Content::Money;
    const bool isOneWord = isNumber || content == Content::Code || content == Content::Date;
    const double least = isNumber ? 0 : LeastCode;
    const double room = roomOf(column);
    if (isOneWord && m_ruler->width(text, tableFont()) * least <= room && !text.isEmpty())
        return {fitLine(text, tableFont(), room, *m_ruler, least)};
    return fitLines(text, tableFont(), room, *m_ruler, MostLines);
}

int ReportLayout::linesOf(qsizetype row) const
{
    std::size_t most = 1;
    for (int column = 0; column < int(m_design.Section1.size()); ++column)
        most = std::max(most, fitted(m_data.cell(row, column), column).size());
    return int(most);
}

void ReportLayout::breakPages()
{
    m_lines.reserve(std::size_t(m_data.rows()));
    for (qsizetype row = 0; row < m_data.rows(); ++row)
        m_lines.push_back(quint8(linesOf(row)));
    if (m_design.group.empty()) addRows(-1, 0, m_data.rows());
    for (std::size_t group = 0; group < m_data.groups().size(); ++group)
        addRows(int(group), m_data.groups()[group].first, m_data.groups()[group].count);
    if (m_pages.empty()) beginPage(-1, 0);
    if (showsTotals()) addTotals();
}

void ReportLayout::beginPage(int group, qsizetype row)
{
    m_left = m_area.height() - rowHeight(m_captionLines) - heightOf(groupLines());
    if (m_pages.empty()) m_left -= heightOf(m_design.Section4);
    m_pages.push_back({row, 0, group, false});
}

void ReportLayout::addRows(int group, qsizetype first, qsizetype count)
{
    beginPage(group, first);
    for (qsizetype row = first; row < first + count; ++row) {
        const double height = rowHeight(m_lines[std::size_t(row)]);
        if (height > m_left && m_pages.back().count > 0) beginPage(group, row);
        ++m_pages.back().count;
        m_left -= height;
    }
}

/// A line of totals that are all blank says nothing and is left out.
bool ReportLayout::showsTotals() const
{
    return std::any_of(m_data.totals().begin(), m_data.totals().end(),
        [](const QString& total) { return !total.isEmpty(); });
}

void ReportLayout::addTotals()
{
    if (rowHeight(1) > m_left) beginPage(m_pages.back().group, m_data.rows());
    m_pages.back().totals = true;
}

QString ReportLayout::filled(QString caption, int page) const
{
    const QString date = m_frame.date.toString(u"yyyy年M月d日"_s);
    QString result;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        const QChar mark = caption[i] == u'%' && i + 1 < caption.size() ? caption[i + 1] : QChar();
        if (mark == u'i')
            result += m_frame.texts.title;
        else if (mark == u'D')
            result += date;
        else if (mark == u'p')
            result += QString::number(page + 1);
        else if (mark == u'P')
            result += QString::number(pageCount());
        else {
            result += caption[i];
            continue;
        }
        ++i;
    }
    return result;
}

QString ReportLayout::captionOf(const ReportLabel& label, int page) const
{
    const auto given = m_frame.texts.captions.constFind(label.name);
    return given != m_frame.texts.captions.cend() ? *given : filled(label.caption, page);
}

ReportPage ReportLayout::page(int index) const
{
    const Span& span = m_pages[std::size_t(index)];
    PageWriter writer(*this, index);
    if (index == 0) writer.lines(m_design.Section4, {});
    if (!m_design.group.empty())
        writer.lines(
            groupLines(), span.group < 0 ? QStringList() : m_data.groups()[std::size_t(span.group)].heads);
    writer.captions();
    for (qsizetype row = span.first; row < span.first + span.count; ++row)
        writer.row(row);
    if (span.totals) writer.totals();
    writer.closeTable();
    writer.footer();
    return writer.takePage();
}

} // namespace quilla
