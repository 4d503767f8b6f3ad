// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/book/utf8.h"

namespace Book::Utf8
{
namespace
{
/// How many bytes a character's first byte says that it has; 0 for no first byte.
std::size_t Length_Of(unsigned char first)
{
    if (first < 0x80)
        return 1;
    if (first < 0xC2 || first > 0xF4)
        return 0;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}
} // namespace

char32_t Take(std::string_view &text)
{
    const auto byte = [&](std::size_t i) {
        return static_cast<unsigned char>(text[i]);
    };
    const std::size_t length = Length_Of(byte(0));
    static constexpr char32_t Lowest[] = {0, 0, 0x80, 0x800, 0x10000};
    char32_t character = length == 1 ? byte(0) : byte(0) & (0x7FU >> length);
    bool good = length > 0 && length <= text.size();
    for (std::size_t i = 1; good && i < length; ++i) {
        good = (byte(i) & 0xC0U) == 0x80;
        character = (character << 6) | (byte(i) & 0x3FU);
    }
    good = good && character >= Lowest[length] && character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
    text.remove_prefix(good ? length : 1);
    return good ? character : Replacement;
}

void Append(std::string &text, char32_t character)
{
    const auto add = [&](char32_t byte) {
        text += static_cast<char>(static_cast<unsigned char>(byte));
    };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 | (character >> 6));
        add(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        add(0xE0 | (character >> 12));
        add(0x80 | ((character >> 6) & 0x3F));
        add(0x80 | (character & 0x3F));
    } else {
        add(0xF0 | (character >> 18));
        add(0x80 | ((character >> 12) & 0x3F));
        add(0x80 | ((character >> 6) & 0x3F));
        add(0x80 | (character & 0x3F));
    }
}
} // namespace Book::Utf8
