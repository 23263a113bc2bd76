#pragma once

#include "frame/workplace.h"
#include "platform/ui/form/date_range.h"
#include "statistics/circulation_ops.h"

namespace quilla {

/// A statistic that goes from the query dialog straight to a report, and closes once that is open.
class ReportStatistic : public QWidget, public QueryReceiver {
    Q_OBJECT

public:
    void loadData(const QString& condition, const QString& order) final;

    DateRange Dates; ///< `Check1` and `Text1`

protected:
    ReportStatistic(
        const Workplace& place, const QString& name, const QString& title, const QString& dateCaption);

    /// Opens the query dialog, unless a date is refused.
    void start(const QueryTriple& triple);
    /// `dates` are as they were typed, nullopt when there is no limit. False when the report did not open.
    virtual bool report(
        const std::optional<DateLimits>& dates, const QString& condition, const QString& order)
        = 0;

    Session& m_session;
    ReportViewer& m_reports;
};

} // namespace quilla
