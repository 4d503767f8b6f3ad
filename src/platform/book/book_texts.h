// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What stands in a book's items. Texts are UTF-8, the system's own coding.
namespace Book
{
inline constexpr std::uint32_t Parameters_Id = 10;
inline constexpr std::uint32_t Index_Id = 11;
inline constexpr std::uint32_t First_Document_Id = 100;
/// An entry of the index has room for an id of three digits.
inline constexpr std::uint32_t Last_Document_Id = 999;

/// A text without blanks around it, each UTF-16 unit joined with the next number of the stream. As these are below 128,
/// a unit stays within its block of 128: every character, Chinese and those of two units too, becomes another one that
/// UTF-8 can write, and comes through. Bytes that are no UTF-8 become U+FFFD first.
std::string Scrambled(std::string_view text);
/// The trimmed text that Scrambled got. Nothing is dropped.
std::string Unscrambled(std::string_view bytes);

struct Parameters {
    std::string password; ///< "" for none
    int uses = 0;         ///< how often the book may still be opened
};
/// Item 10. The password has no blanks at its front; it may hold "//".
std::string Written(const Parameters &parameters);
std::optional<Parameters> Read_Parameters(std::string_view item);

struct Entry {
    std::uint32_t id = 0;
    std::string type; ///< three letters, filled with blanks: "TXT", "JPG", or what the document was
    std::string title;
};
/// Item 11. Where a title would end its entry early, a blank is set between the signs.
std::string Written(const std::vector<Entry> &index);
/// The entries that can be read, at most as many as there are ids.
std::vector<Entry> Read_Index(std::string_view item);
/// The title as the index holds it.
std::string Index_Title(std::string title);
} // namespace Book
