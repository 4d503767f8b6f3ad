// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/book/book_texts.h"

#include "platform/book/number_stream.h"
#include "platform/book/utf8.h"

#include <algorithm>
#include <charconv>

namespace Book
{
namespace
{
constexpr std::string_view Separator = "//";
constexpr std::size_t Id_Digits = 3;
constexpr std::size_t Type_Letters = 3;

/// The character with its UTF-16 units joined with the next numbers.
char32_t Joined(char32_t character, Number_Stream &stream)
{
    if (character < 0x10000)
        return character ^ stream.Next();
    const char32_t above = character - 0x10000;
    const char32_t high = (0xD800 + (above >> 10)) ^ stream.Next();
    const char32_t low = (0xDC00 + (above & 0x3FF)) ^ stream.Next();
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}
} // namespace

std::string Unscrambled(std::string_view bytes)
{
    Number_Stream stream;
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty())
        Utf8::Append(text, Joined(Utf8::Take(bytes), stream));
    return text;
}

std::string Scrambled(std::string_view text)
{
    const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
    return Unscrambled(text.substr(begin, text.find_last_not_of(' ') + 1 - begin));
}

std::string Written(const Parameters &parameters)
{
    std::string text = parameters.password;
    text.append(Separator).append(std::to_string(parameters.uses)).append(Separator);
    return Scrambled(text);
}

std::optional<Parameters> Read_Parameters(std::string_view item)
{
    std::string text = Unscrambled(item);
    if (!text.ends_with(Separator))
        return std::nullopt;
    text.resize(text.size() - Separator.size());
    const std::size_t end = text.rfind(Separator);
    if (end == std::string::npos)
        return std::nullopt;
    Parameters parameters{text.substr(0, end), 0};
    const char *last = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data() + end + Separator.size(), last, parameters.uses);
    return error == std::errc() && behind == last ? std::optional(parameters) : std::nullopt;
}

std::string Index_Title(std::string title)
{
    for (std::size_t at = title.find(Separator); at != std::string::npos; at = title.find(Separator, at + 1))
        title.insert(at + 1, 1, ' ');
    return title.ends_with('/') ? title + ' ' : title;
}

std::string Written(const std::vector<Entry> &index)
{
    std::string text;
    for (const Entry &entry : index) {
        std::string type = entry.type;
        type.resize(Type_Letters, ' ');
        text.append(std::to_string(entry.id)).append(type).append(Index_Title(entry.title)).append(Separator);
    }
    return Scrambled(text);
}

std::vector<Entry> Read_Index(std::string_view item)
{
    const std::string text = Unscrambled(item);
    std::vector<Entry> index;
    std::size_t begin = 0;
    for (std::size_t end = text.find(Separator); end != std::string::npos; end = text.find(Separator, begin)) {
        const std::string_view entry = std::string_view(text).substr(begin, end - begin);
        begin = end + Separator.size();
        std::uint32_t id = 0;
        const char *digits = entry.data() + Id_Digits;
        const bool isRead = entry.size() >= Id_Digits + Type_Letters &&
                            std::from_chars(entry.data(), digits, id).ptr == digits && id >= First_Document_Id;
        if (isRead && index.size() <= Last_Document_Id - First_Document_Id)
            index.push_back({id, std::string(entry.substr(Id_Digits, Type_Letters)),
                             std::string(entry.substr(Id_Digits + Type_Letters))});
    }
    return index;
}
} // namespace Book
