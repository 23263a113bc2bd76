#pragma once

#include "statistics/loan_count_ops.h"
#include "statistics/report_statistic.h"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

namespace quilla {

/// Counts loans and returns in a report.
class LtCountFrm final : public ReportStatistic {
    Q_OBJECT

public:
    explicit LtCountFrm(const Workplace& place);

    QRadioButton Option1[2]; ///< by readers or by books
    QGroupBox Frame2;
    QRadioButton Option2[3];
    QGroupBox Frame3;
    QRadioButton Option3[2];
    QPushButton CmdSave;
    QPushButton CmdExit;

private:
    void layOut();
    void follow();
    CountBy countBy() const;
    bool report(
        const std::optional<DateLimits>& dates, const QString& condition, const QString& order) override;
};

} // namespace quilla
