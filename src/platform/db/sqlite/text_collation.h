#pragma once

#include <string_view>

namespace quilla {

/// The order of libraries of version 1: by code point, without case and blanks at the end. Their indexes can
/// only be read in it. Below, equal or above 0.
int compareByCodePoint(std::string_view left, std::string_view right);

/// The code point at `at`, which moves past it. U+FFFD for a byte that is no UTF-8.
char32_t nextCodePoint(const char*& at, const char* end);

/// Without case, one code point to one.
char32_t folded(char32_t c);

} // namespace quilla
