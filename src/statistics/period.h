#pragma once

#include "platform/core/text.h"

#include <QDate>

#include <optional>

namespace quilla {

enum class PeriodKind { Month, Year };

/// The month or the year that a statistic covers.
struct Period {
    int year = 0;
    int month = 0; ///< 0 for a whole year

    PeriodKind kind() const { return month == 0 ? PeriodKind::Year : PeriodKind::Month; }
    /// How many days the month has.
    int days() const { return QDate(year, month, 1).daysInMonth(); }
    /// As the procedures and the printed forms have it: "2003" or, without a leading zero, "2003-3".
    QString text() const;
    QString firstDay() const; ///< "2003-01-01", "2003-3-01"
    QString lastDay() const;
    /// The condition that a date column lies in the period.
    QString holds(QStringView column) const;
};

/// What stands in the period box of a new screen.
QString presetPeriod(PeriodKind kind, const QDate& today);

/// The period that was typed, nullopt when it is none: a month is any date of the platform, a year a whole
/// number from 1901 to 2048.
std::optional<Period> readPeriod(PeriodKind kind, const QString& typed);

} // namespace quilla
