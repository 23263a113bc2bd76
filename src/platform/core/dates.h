#pragma once

#include <QDate>
#include <QString>

#include <optional>

namespace quilla {

/// A date with its time of day, to the millisecond and without a time zone: what a date column keeps, and
/// what is reckoned with it. A midnight that the machine's zone leaves out (Havana, 2026-03-08) is one like
/// any other. Lighter than `QDateTime`, which asks the system for the zone's rules at each construction: that
/// is more than a whole statement of the desk costs.
struct Moment {
    QDate date;
    QTime time = QTime(0, 0);

    Moment addDays(qint64 days) const { return {date.addDays(days), time}; }
    bool isMidnight() const { return time.msecsSinceStartOfDay() == 0; }

    friend bool operator==(const Moment&, const Moment&) = default;
    friend bool operator<(const Moment& left, const Moment& right)
    {
        return left.date != right.date ? left.date < right.date : left.time < right.time;
    }
};

/// Where the time of day comes from when the server does not answer, and what the embedded database
/// takes for the server's clock.
class Clock {
public:
    virtual ~Clock() = default;
    /// Local date and time.
    virtual Moment now() const = 0;
};

/// The machine's own clock.
class SystemClock final : public Clock {
public:
    Moment now() const override;
};

/// "yyyy-mm-dd", the form in which every date is shown, typed and stored. Empty for no date.
QString isoDate(const QDate& date);
QString isoDate(const Moment& moment);
QString isoDate(const std::optional<Moment>& moment);

/// The default text of a date and time under the short date style that the program expects of its
/// desk, yyyy-MM-dd: "2004-03-09 8:05:03"; without a time at midnight.
QString localeDateText(const Moment& moment);

/// Reads a date with or without a time, as the database server would: "2003-1-5", "2003/01/05",
/// "20030105", "2003-01-05 8:05:03.120". Nullopt when the text is no date. Blanks around it are ignored.
std::optional<Moment> readDate(QStringView text);

/// Reads a date without a time, as `readDate` does.
std::optional<QDate> readDay(QStringView text);

/// Fixes the time zone of the process to the machine's, once: without it the C library looks the zone's
/// file up anew for every date. For the first line of main.
void settleTimeZone();

/// The date that an unset date variable holds: 1899-12-30.
QDate zeroDate();

} // namespace quilla
