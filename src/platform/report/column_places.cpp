#include "platform/report/column_places.h"

#include "platform/report/report_page.h"

#include <numeric>

namespace quilla {

namespace {

constexpr double DesignPoints = 10; ///< the size of text that the widths below are for
constexpr double LeastText = 7.0; ///< of a text column, in characters

/// In points.
double widthOf(Content content)
{
    switch (content) {
    case Content::Text:
        return 0;
    case Content::Code:
        return 68;
    case Content::Name:
        return 62;
    case Content::Word:
        return 50;
    case Content::Date:
        return 64;
    case Content::Count:
        return 50;
    case Content::Money:
        return 62;
    }
    return 0;
}

} // namespace

std::vector<double> columnEdges(const ReportDesign& design, double left, double width)
{
    const double scale = design.points / DesignPoints * TwipsPerPoint;
    std::vector<double> widths;
    double shares = 0;
    double texts = 0;
    for (const ReportColumn& column : design.Section1) {
        widths.push_back(widthOf(column.content) * column.share * scale);
        if (column.content != Content::Text) continue;
        shares += column.share;
        texts += LeastText * design.points * TwipsPerPoint;
    }
    const double fixed = std::accumulate(widths.begin(), widths.end(), 0.0);
    const double forTexts = std::max(width - fixed, texts);
    const double shrink = fixed > 0 && (shares == 0 || forTexts == texts) ? (width - texts) / fixed : 1;
    std::vector<double> edges {left};
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const ReportColumn& column = design.Section1[i];
        const double own
            = column.content == Content::Text ? forTexts * column.share / shares : widths[i] * shrink;
        edges.push_back(edges.back() + own);
    }
    return edges;
}

Place placeOf(Content content)
{
    switch (content) {
    case Content::Word:
    case Content::Date:
        return Place::Centre;
    case Content::Count:
    case Content::Money:
        return Place::Right;
    default:
        return Place::Left;
    }
}

} // namespace quilla
