#pragma once

#include <string_view>
#include <vector>

namespace quilla {

/// A LIKE pattern of the server's dialect: "%", "_", "[a-z]", "[^a]"; all else, "\" too, stands for itself.
/// Case and width do not count, but only the narrow signs of the pattern are signs. Blanks at the end of the
/// text may be left over, blanks of the pattern may not.
class LikePattern {
public:
    explicit LikePattern(std::string_view utf8);

    /// In time of at most the text's length by the pattern's, whatever the pattern.
    bool matches(std::string_view utf8) const;

private:
    enum class What : unsigned char { One, Any, Many, Set, NotSet };
    struct Range {
        char32_t first;
        char32_t last;
    };
    struct Token {
        What what;
        char32_t character = 0; ///< of One, in its plain form
        std::size_t firstRange = 0; ///< of a set
        std::size_t endRange = 0;
    };

    bool takeSet(const char*& at, const char* end);
    bool fits(const Token& token, char32_t character) const;

    std::vector<Token> m_tokens;
    std::vector<Range> m_ranges; ///< in their plain forms
    bool m_never = false; ///< a bracket without its end fits no text
};

} // namespace quilla
