#include "platform/core/digit_filter.h"

namespace quilla {

namespace {

constexpr char16_t Backspace = 8;
constexpr char16_t Enter = 13;
constexpr char16_t Escape = 27;
constexpr char16_t Lowest = 47; // "/"
constexpr char16_t Highest = 58; // ":"

} // namespace

bool DigitFilter::accepts(QChar character) const
{
    const char16_t code = character.unicode();
    if (code == Enter || code == Backspace) return true;
    if (code == Escape) return takesEscape;
    return code >= Lowest && code <= Highest;
}

bool passesFilter(const DigitFilter& filter, QChar character, Prompt& prompt)
{
    if (filter.accepts(character)) return true;
    prompt.inform(filter.message, filter.title);
    return false;
}

} // namespace quilla
