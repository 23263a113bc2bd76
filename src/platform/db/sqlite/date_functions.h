#pragma once

#include "platform/db/moment.h"

#include <QByteArray>

#include <optional>
#include <string_view>

namespace quilla {

// The date functions of the dialect, as the server defines them, for the embedded database. Parts and
// styles are those named in platform/sql/functions.h; an unknown one gives nullopt.

/// How many borders of `part` lie between `from` and `to`; below 0 when `to` is the earlier one. A week
/// begins with Sunday.
std::optional<qint64> dateDifference(std::string_view part, const Moment& from, const Moment& to);

/// Nullopt also when the result has left the calendar (years 1 to 9999).
std::optional<Moment> dateAdd(std::string_view part, qint64 number, const Moment& moment);

std::optional<int> datePart(std::string_view part, const Moment& moment);

std::optional<QByteArray> convertDate(int style, const Moment& moment);

} // namespace quilla
