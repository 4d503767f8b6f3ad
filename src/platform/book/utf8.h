// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

/// Characters of UTF-8, for code that has no toolkit.
namespace Book::Utf8
{
inline constexpr char32_t Replacement = 0xFFFD;

/// Takes one character from the front; what is none gives U+FFFD for its first byte.
char32_t Take(std::string_view &text);
void Append(std::string &text, char32_t character);
} // namespace Book::Utf8
