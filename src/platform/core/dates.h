#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>

namespace quilla {

/// Where the time of day comes from when the server does not answer, and what the embedded database
/// takes for the server's clock.
class Clock {
public:
    virtual ~Clock() = default;
    /// Local date and time.
    virtual QDateTime now() const = 0;
};

/// The machine's own clock.
class SystemClock final : public Clock {
public:
    QDateTime now() const override;
};

/// "yyyy-mm-dd", the form in which every date is shown, typed and stored. Empty for no date.
QString isoDate(const QDate& date);
QString isoDate(const QDateTime& moment);

/// The default text of a date and time under the short date style that the program expects of its
/// desk, yyyy-MM-dd: "2004-03-09 8:05:03"; without a time at midnight.
QString localeDateText(const QDateTime& moment);
QString localeDateText(const QDate& date, const QTime& time);

/// Reads a date with or without a time, as the database server would: "2003-1-5", "2003/01/05",
/// "20030105", "2003-01-05 8:05:03.120". Nullopt when the text is no date. Blanks around it are ignored.
std::optional<QDateTime> readDate(QStringView text);

/// Reads a date without a time, as `readDate` does. Cheaper, since no time zone is asked.
std::optional<QDate> readDay(QStringView text);

/// Fixes the time zone of the process to the machine's, once: without it the C library looks the zone's
/// file up anew for every date. For the first line of main.
void settleTimeZone();

/// The date that an unset date variable holds: 1899-12-30.
QDate zeroDate();

} // namespace quilla
