#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <string_view>

namespace quilla {

/// A date with its time of day as a date column keeps it, to the millisecond and without a time zone.
/// Lighter than `QDateTime`, which asks the system for the zone's rules at each construction: that is
/// more than a whole statement of the desk costs.
struct Moment {
    QDate date;
    QTime time = QTime(0, 0);

    static Moment of(const QDateTime& moment) { return {moment.date(), moment.time()}; }
    QDateTime toDateTime() const { return QDateTime(date, time); }
    bool isMidnight() const { return time.msecsSinceStartOfDay() == 0; }

    friend bool operator==(const Moment&, const Moment&) = default;
};

/// Reads what `readDate` reads; the canonical form and "yyyy-MM-dd H:mm:ss" on a short way.
std::optional<Moment> readMoment(QStringView text);
std::optional<Moment> readMoment(std::string_view utf8);

/// The form in which the embedded database keeps dates, so that their texts sort as the dates do:
/// "yyyy-MM-dd" at midnight, else "yyyy-MM-dd HH:mm:ss.zzz".
struct CanonicalMoment {
    explicit CanonicalMoment(const Moment& moment);
    std::string_view view() const { return {text, length}; }

    char text[24];
    std::size_t length = 0;
};

} // namespace quilla
