#pragma once

#include "platform/ui/form/text_box.h"
#include "statistics/period.h"

#include <QCalendarWidget>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace quilla {

/// The box in which the month or the year of a statistic is typed; a month can be chosen from a calendar.
class PeriodBox final : public QWidget {
    Q_OBJECT

public:
    PeriodBox(PeriodKind kind, const QDate& today);

    /// nullopt when what stands in the box is no period.
    std::optional<Period> period() const { return readPeriod(m_kind, textDate.Text()); }

    QPushButton labMonthhh; ///< opens and closes the calendar
    QLabel labNian;
    MaskDateEdit textDate;
    QFrame Calendar; ///< over the form
    QCalendarWidget MonthView;
    QPushButton cmdDate;

private:
    void setUpCalendar();
    void toggleCalendar();
    void takeDate();

    const PeriodKind m_kind;
};

} // namespace quilla
