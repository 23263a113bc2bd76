#include "statistics/fine_statistic_form.h"

#include "platform/ui/form/form.h"
#include "statistics/fine_statistic_ops.h"

namespace quilla {

FkTjFrm::FkTjFrm(const Workplace& place)
    : ReportStatistic(place, u"FkTjFrm"_s, u"罚款统计"_s, u"根据罚款日期统计"_s)
    , CmdOK(u"&O 确定"_s)
    , CmdExit(u"&X 关闭"_s)
{
    QUILLA_NAMES(CmdOK, CmdExit);
    build(*this, column(Dates, stretch(), row(stretch(), CmdOK, CmdExit)));
    onClick(CmdOK, [this] { start(fineTriple()); });
    onClick(CmdExit, [this] { closeScreen(*this); });
}

bool FkTjFrm::report(const std::optional<DateLimits>& dates, const QString& condition, const QString& order)
{
    return reportFines(m_session, m_reports, fineSearch(dates, condition, order));
}

} // namespace quilla
