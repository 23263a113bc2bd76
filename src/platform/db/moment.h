#pragma once

#include "platform/core/dates.h"

#include <QString>

#include <optional>
#include <string_view>

namespace quilla {

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
