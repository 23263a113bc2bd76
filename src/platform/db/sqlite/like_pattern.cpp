#include "platform/db/sqlite/like_pattern.h"

#include "platform/db/sqlite/text_collation.h"

#include <algorithm>

namespace quilla {

namespace {

constexpr char32_t WideBlank = 0x3000;

/// A character as LIKE compares it: without case, and a full width form as the character that it shows.
char32_t plain(char32_t c)
{
    if (c >= 0xff01 && c <= 0xff5e) return folded(c - 0xff01 + '!');
    return c == WideBlank ? U' ' : folded(c);
}

bool hasOnlyBlanks(const char* at, const char* end)
{
    while (at != end)
        if (plain(nextCodePoint(at, end)) != ' ') return false;
    return true;
}

} // namespace

LikePattern::LikePattern(std::string_view utf8)
{
    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    while (at != end && !m_never) {
        const char32_t c = nextCodePoint(at, end);
        if (c == '[')
            m_never = !takeSet(at, end);
        else if (c == '_')
            m_tokens.push_back({What::Any});
        else if (c != '%')
            m_tokens.push_back({What::One, plain(c)});
        else if (m_tokens.empty() || m_tokens.back().what != What::Many)
            m_tokens.push_back({What::Many});
    }
}

/// What stands between the brackets; false when the closing one is missing.
bool LikePattern::takeSet(const char*& at, const char* end)
{
    const char* const close = std::find(at, end, ']');
    if (close == end) return false;
    const bool negated = at != close && *at == '^';
    if (negated) ++at;
    const std::size_t firstRange = m_ranges.size();
    while (at != close) {
        const char32_t first = plain(nextCodePoint(at, close));
        char32_t last = first;
        if (close - at > 1 && *at == '-') last = plain(nextCodePoint(++at, close));
        m_ranges.push_back({first, last});
    }
    ++at;
    m_tokens.push_back({negated ? What::NotSet : What::Set, 0, firstRange, m_ranges.size()});
    return true;
}

bool LikePattern::fits(const Token& token, char32_t character) const
{
    if (token.what == What::Any) return true;
    if (token.what == What::One) return token.character == character;
    const bool inside = std::any_of(m_ranges.begin() + std::ptrdiff_t(token.firstRange),
        m_ranges.begin() + std::ptrdiff_t(token.endRange),
        [&](const Range& range) { return character >= range.first && character <= range.last; });
    return inside == (token.what == What::Set);
}

/// Only the last "%" ever needs to take one character more: what an earlier one takes can't help once the
/// tokens between the two have found their place.
bool LikePattern::matches(std::string_view utf8) const
{
    if (m_never) return false;
    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    auto token = m_tokens.begin();
    auto afterMany = m_tokens.end();
    const char* retry = nullptr; ///< where the last "%" gives over to what follows it
    while (true) {
        if (token == m_tokens.end() && hasOnlyBlanks(at, end)) return true;
        if (token != m_tokens.end() && token->what == What::Many) {
            if (++token == m_tokens.end()) return true;
            afterMany = token;
            retry = at;
            continue;
        }
        if (at == end) return false;
        const char* next = at;
        if (token != m_tokens.end() && fits(*token, plain(nextCodePoint(next, end)))) {
            at = next;
            ++token;
            continue;
        }
        if (!retry) return false;
        nextCodePoint(retry, end);
        at = retry;
        token = afterMany;
    }
}

} // namespace quilla
