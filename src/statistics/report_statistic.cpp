#include "statistics/report_statistic.h"

#include "frame/sublib.h"
#include "platform/ui/form/form.h"
#include "statistics/query_form.h"

namespace quilla {

ReportStatistic::ReportStatistic(
    const Workplace& place, const QString& name, const QString& title, const QString& dateCaption)
    : Dates(
        dateCaption, DateRange::Filling::Fresh, [&session = place.session] { return GetServerDate(session); })
    , m_session(place.session)
    , m_reports(place.reports)
{
    setObjectName(name);
    setWindowTitle(title);
    QUILLA_NAMES(Dates);
}

void ReportStatistic::start(const QueryTriple& triple)
{
    if (!Dates.isOn() || Dates.passes(m_session.prompt)) askQuery(m_session.prompt, triple, *this, this);
}

void ReportStatistic::loadData(const QString& condition, const QString& order)
{
    const auto dates = Dates.isOn() ? std::optional(DateLimits {Dates.from(), Dates.to()}) : std::nullopt;
    if (report(dates, condition, order)) closeScreen(*this);
}

} // namespace quilla
