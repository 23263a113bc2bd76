#pragma once

#include <string_view>

namespace quilla {

/// Orders two UTF-8 texts exactly as `compareText` orders them, without an allocation: below, equal or
/// above 0.
int compareUtf8(std::string_view left, std::string_view right);

/// The code point at `at`, which moves past it. U+FFFD for a byte that is no UTF-8.
char32_t nextCodePoint(const char*& at, const char* end);

/// The case folding of `compareText`, one code point to one.
char32_t folded(char32_t c);

} // namespace quilla
