#include "platform/db/sqlite/text_collation.h"

#include <QChar>

namespace quilla {

namespace {

std::string_view withoutTrailingBlanks(std::string_view text)
{
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

/// What stands first in UTF-16, folded: beyond the first plane a half that has no case.
char32_t firstUnit(char32_t c)
{
    return c < 0x10000 ? folded(c) : QChar::highSurrogate(c);
}

/// The order of UTF-16: a character beyond the first plane sorts by its first half, before the full width
/// forms.
int compareCodePoints(char32_t left, char32_t right)
{
    const int units = int(firstUnit(left)) - int(firstUnit(right));
    return units ? units : int(folded(left)) - int(folded(right));
}

} // namespace

char32_t folded(char32_t c)
{
    if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + 32 : c;
    return QChar::toCaseFolded(c);
}

char32_t nextCodePoint(const char*& at, const char* end)
{
    const auto lead = static_cast<unsigned char>(*at++);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xf0 ? 3 : lead >= 0xe0 ? 2 : 1;
    if (lead < 0xc2 || lead > 0xf4 || end - at < more) return 0xfffd;
    char32_t c = lead & (0x3f >> more);
    for (int i = 0; i < more; ++i) {
        if (!isContinuation(at[i])) return 0xfffd;
        c = c << 6 | (static_cast<unsigned char>(at[i]) & 0x3f);
    }
    at += more;
    return c;
}

int compareByCodePoint(std::string_view left, std::string_view right)
{
    left = withoutTrailingBlanks(left);
    right = withoutTrailingBlanks(right);
    const char* a = left.data();
    const char* b = right.data();
    const char* const aEnd = a + left.size();
    const char* const bEnd = b + right.size();
    while (a != aEnd && b != bEnd) {
        if (*a == *b) {
            ++a, ++b;
            continue;
        }
        const char* const differing = a;
        // The bytes so far are the same, so both step back to the same place.
        while (a != left.data() && isContinuation(*a))
            --a, --b;
        if (const int order = compareCodePoints(nextCodePoint(a, aEnd), nextCodePoint(b, bEnd))) return order;
        if (a <= differing) { // only in what is no UTF-8: go on after it
            b += differing + 1 - a;
            a = differing + 1;
        }
    }
    return int(bEnd == b) - int(aEnd == a);
}

} // namespace quilla
