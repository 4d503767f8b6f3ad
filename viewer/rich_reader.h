// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

/// Rich text as it is shown: UTF-8, and for each byte the letter of its style.
struct Shown_Text {
    std::string text;
    std::string styles;
};

/// A style's letter: 'A', and 1 for bold, 2 for italic, 4 for each of the two larger sizes.
inline constexpr int Style_Count = 12;

/// Reads RTF as the program writes it, and as much of any other as can be had: text, bold, italic and sizes, cells with
/// tabs between. Groups are kept to a depth and the text to a size, whatever the bytes are.
Shown_Text Read_Rich(std::string_view rtf);
