#include "platform/report/page_writer.h"

#include "platform/report/column_places.h"

namespace quilla {

namespace {

constexpr double LabelSpacing = 1.5;
constexpr double TableSpacing = 1.25;
constexpr double SpreadGap = 4 * TwipsPerPoint;
constexpr double FooterMiddle = 13 * TwipsPerPoint;
constexpr double LeastRun = 0.4; ///< how narrow a run of labels may become before one is cut
constexpr double GroupHeadPoints = 12;

double heightOf(const ReportLine& line)
{
    double points = line.field.isEmpty() ? 0 : GroupHeadPoints;
    for (const ReportLabel& label : line.labels)
        points = std::max(points, label.font.points);
    return (points * LabelSpacing + line.gap) * TwipsPerPoint;
}

double leadOf(const ReportLine& line, const ReportLabel& label)
{
    return &label == &line.labels.front() ? 0 : label.lead * TwipsPerPoint;
}

double startOf(double width, double left, double right, Place place)
{
    if (place == Place::Centre) return (left + right - width) / 2;
    return place == Place::Right ? right - width : left;
}

} // namespace

double heightOf(const std::vector<ReportLine>& lines)
{
    double height = 0;
    for (const ReportLine& line : lines)
        height += heightOf(line);
    return height;
}

PageWriter::PageWriter(const ReportLayout& report, int page)
    : m_report(report)
    , m_index(page)
    , m_y(report.m_area.top())
{
}

void PageWriter::lines(const std::vector<ReportLine>& lines, QStringList heads)
{
    for (const ReportLine& line : lines) {
        const double height = heightOf(line);
        const double middle = m_y + (height - line.gap * TwipsPerPoint) / 2;
        if (line.field.isEmpty()) {
            labels(line, middle);
        } else if (!heads.isEmpty()) {
            const Typeface font {u"宋体"_s, GroupHeadPoints, true};
            const FittedLine head
                = fitLine(heads.takeFirst(), font, m_report.m_area.width(), *m_report.m_ruler);
            put(head, font, m_report.m_area.left(), middle);
        }
        m_y += height;
    }
}

void PageWriter::labels(const ReportLine& line, double middle)
{
    line.isRun ? inOneRun(line, middle) : spread(line, middle);
}

void PageWriter::spread(const ReportLine& line, double middle)
{
    const double part = m_report.m_area.width() / double(line.labels.size());
    double left = m_report.m_area.left();
    for (const ReportLabel& label : line.labels) {
        const FittedLine text
            = fitLine(m_report.captionOf(label, m_index), label.font, part - SpreadGap, *m_report.m_ruler);
        const double start = startOf(text.width, left, left + part, label.place);
        put(text, label.font, start, middle);
        left += part;
    }
}

/// One after the other in the middle; all narrower together when there is no room for them.
void PageWriter::inOneRun(const ReportLine& line, double middle)
{
    const double room = m_report.m_area.width();
    std::vector<FittedLine> texts;
    double width = 0;
    for (const ReportLabel& label : line.labels) {
        const double most = room / LeastRun / double(line.labels.size());
        texts.push_back(fitLine(m_report.captionOf(label, m_index), label.font, most, *m_report.m_ruler, 1));
        width += texts.back().width + leadOf(line, label);
    }
    const double squeeze = std::min(1.0, room / width);
    double x = startOf(width * squeeze, m_report.m_area.left(), m_report.m_area.right(), Place::Centre);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        x += leadOf(line, line.labels[i]) * squeeze;
        put({texts[i].text, 0, texts[i].squeeze * squeeze}, line.labels[i].font, x, middle);
        x += texts[i].width * squeeze;
    }
}

void PageWriter::put(const FittedLine& line, const Typeface& font, double x, double middle)
{
    if (!line.text.isEmpty()) m_page.texts.push_back({line.text, font, {x, middle}, line.squeeze});
}

double PageWriter::padding() const
{
    return m_report.cellPadding();
}

void PageWriter::rule(double y, Ink ink)
{
    m_page.rules.push_back({QLineF(m_report.m_area.left(), y, m_report.m_area.right(), y), ink});
}

void PageWriter::captions()
{
    const double height = m_report.rowHeight(m_report.m_captionLines);
    m_tableTop = m_y;
    m_page.bands.push_back({QRectF(m_report.m_area.left(), m_y, m_report.m_area.width(), height), Ink::Band});
    rule(m_y, Ink::Rule);
    const auto& columns = m_report.m_design.Section1;
    for (int column = 0; column < int(columns.size()); ++column)
        cell(fitEvenLines(m_report.filled(columns[std::size_t(column)].caption, m_index),
                 m_report.tableFont(true), m_report.roomOf(column), *m_report.m_ruler,
                 m_report.m_captionLines),
            column, height, true);
    m_y += height;
    rule(m_y, Ink::Rule);
}

void PageWriter::row(qsizetype row)
{
    const double height = m_report.rowHeight(m_report.m_lines[std::size_t(row)]);
    for (int column = 0; column < int(m_report.m_design.Section1.size()); ++column)
        cell(m_report.fitted(m_report.m_data.cell(row, column), column), column, height, false);
    m_y += height;
    rule(m_y, Ink::Hairline);
}

void PageWriter::cell(const std::vector<FittedLine>& lines, int column, double height, bool bold)
{
    const double left = m_report.m_edges[std::size_t(column)] + padding();
    const double right = m_report.m_edges[std::size_t(column) + 1] - padding();
    const Place place = placeOf(m_report.m_design.Section1[std::size_t(column)].content);
    const double spacing = m_report.m_design.points * TwipsPerPoint * TableSpacing;
    double middle = m_y + height / 2 - spacing * (double(lines.size()) - 1) / 2;
    for (const FittedLine& line : lines) {
        inCell(line, left, right, place, middle, bold);
        middle += spacing;
    }
}

void PageWriter::inCell(
    const FittedLine& line, double left, double right, Place place, double middle, bool bold)
{
    put(line, m_report.tableFont(bold), startOf(line.width, left, right, place), middle);
}

/// Where the text of a total ends up: under its column, the first column shared with the caption.
std::size_t PageWriter::columnOf(const ReportTotal& total) const
{
    const auto& columns = m_report.m_design.Section1;
    const QString& under = total.under.isEmpty() ? total.field : total.under;
    const auto column = std::find_if(columns.begin(), columns.end(),
        [&](const ReportColumn& candidate) { return candidate.field == under; });
    return std::size_t(column - columns.begin());
}

void PageWriter::totals()
{
    const auto& design = m_report.m_design;
    const auto& edges = m_report.m_edges;
    std::size_t first = design.Section1.size();
    const double shared = (edges[0] + edges[1]) / 2;
    for (std::size_t i = 0; i < design.Section5.size(); ++i) {
        const std::size_t column = columnOf(design.Section5[i]);
        const QString& text = m_report.m_data.totals()[qsizetype(i)];
        if (text.isEmpty() || column == design.Section1.size()) continue;
        first = std::min(first, column);
        totalCell(text, column == 0 ? shared : edges[column], edges[column + 1], 0);
    }
    totalCell(design.totalCaption, edges[0], first == 0 ? shared : edges[first], 0.6);
    m_y += m_report.rowHeight(1);
}

void PageWriter::totalCell(const QString& text, double left, double right, double least)
{
    const Typeface font = m_report.tableFont(true);
    const double room = right - left - 2 * padding();
    inCell(fitLine(text, font, room, *m_report.m_ruler, least), left + padding(), right - padding(),
        Place::Right, m_y + m_report.rowHeight(1) / 2, true);
}

void PageWriter::closeTable()
{
    if (m_page.rules.back().ink == Ink::Hairline && m_page.rules.back().line.y1() == m_y)
        m_page.rules.pop_back();
    rule(m_y, Ink::Rule);
    for (const double x : m_report.m_edges)
        m_page.rules.push_back({QLineF(x, m_tableTop, x, m_y), Ink::Hairline});
}

void PageWriter::footer()
{
    const double middle = m_report.m_area.bottom() + FooterMiddle;
    labels(m_report.m_design.Section3, middle);
}

} // namespace quilla
