#include "platform/report/report_design.h"

namespace quilla {

namespace {

constexpr double TitlePoints = 18;
constexpr double FootPoints = 9;

ReportLabel placed(ReportLabel label, Place place)
{
    label.place = place;
    return label;
}

} // namespace

ReportLine heading(const QString& caption, const QString& name)
{
    return {{{name, caption, {u"宋体"_s, TitlePoints, true}, Place::Centre}}, false, {}, 6};
}

ReportLine run(std::vector<ReportLabel> labels)
{
    return {std::move(labels), true, {}, 4};
}

ReportLine ends(const ReportLabel& left, const ReportLabel& right)
{
    return {{placed(left, Place::Left), placed(right, Place::Right)}, false, {}, 4};
}

ReportLine groupHeading(const QString& field)
{
    return {{}, false, field, 4};
}

ReportLine dateAndPages(const ReportLabel& date)
{
    ReportLine line = ends(date, {u"labPage"_s, u"第 %p 页  共 %P 页"_s});
    for (ReportLabel& label : line.labels)
        label.font.points = FootPoints;
    line.gap = 0;
    return line;
}

} // namespace quilla
