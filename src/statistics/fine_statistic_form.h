#pragma once

#include "statistics/report_statistic.h"

#include <QPushButton>

namespace quilla {

/// Lists the fines in a report.
class FkTjFrm final : public ReportStatistic {
    Q_OBJECT

public:
    explicit FkTjFrm(const Workplace& place);

    QPushButton CmdOK;
    QPushButton CmdExit;

private:
    bool report(
        const std::optional<DateLimits>& dates, const QString& condition, const QString& order) override;
};

} // namespace quilla
