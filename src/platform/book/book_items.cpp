// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/book/book_items.h"

#include <algorithm>
#include <zlib.h>

namespace Book
{
namespace
{
constexpr std::string_view Mark = "ZLQBOOK1";
constexpr std::size_t Type_Room = 8;
constexpr std::size_t Most_Items = 10'000;

struct Footer {
    std::uint64_t at = 0;
    std::uint64_t size = 0;
    std::uint64_t former = 0;
    std::uint32_t id = 0;
    std::uint32_t sum = 0;
};

/// CRC-32 as in ISO 3309.
std::uint32_t Sum(std::string_view bytes)
{
    return static_cast<std::uint32_t>(crc32_z(0, reinterpret_cast<const Bytef *>(bytes.data()), bytes.size()));
}

template <class Number>
void Put(std::string &bytes, Number number)
{
    for (std::size_t i = 0; i < sizeof number; ++i)
        bytes += static_cast<char>(static_cast<unsigned char>(number >> (8 * i)));
}

/// Reads from the front.
template <class Number>
Number Take(std::string_view &bytes)
{
    Number number = 0;
    for (std::size_t i = 0; i < sizeof number; ++i)
        number |= static_cast<Number>(static_cast<Number>(static_cast<unsigned char>(bytes[i])) << (8 * i));
    bytes.remove_prefix(sizeof number);
    return number;
}

std::string Padded_Type()
{
    std::string type(Type);
    type.resize(Type_Room, '\0');
    return type;
}

/// The footer at a place, when it is one of the book's own: whole, standing where it says, with its bytes between the
/// former one and itself.
std::optional<Footer> Footer_At(std::string_view bytes, std::uint64_t at)
{
    std::string_view rest = bytes;
    if (bytes.size() < Footer_Size || !bytes.starts_with(Mark))
        return std::nullopt;
    const std::uint32_t own = Sum(bytes.substr(0, Footer_Size - sizeof own));
    rest.remove_prefix(Mark.size());
    Footer footer;
    footer.at = Take<std::uint64_t>(rest);
    footer.size = Take<std::uint64_t>(rest);
    footer.former = Take<std::uint64_t>(rest);
    footer.id = Take<std::uint32_t>(rest);
    const auto language = Take<std::uint32_t>(rest);
    const bool isType = rest.starts_with(Padded_Type());
    rest.remove_prefix(Type_Room);
    footer.sum = Take<std::uint32_t>(rest);
    const bool isWhole = Take<std::uint32_t>(rest) == own && footer.at == at && language == Language && isType;
    if (!isWhole || footer.former >= at)
        return std::nullopt;
    const std::uint64_t floor = footer.former == 0 ? 0 : footer.former + Footer_Size;
    return floor <= at && footer.size <= at - floor ? std::optional(footer) : std::nullopt;
}

/// The chain of footers, the first written first.
std::vector<Footer> Footers(std::string_view file)
{
    std::vector<Footer> chain;
    std::optional<std::uint64_t> at = Last_Footer(file, 0);
    while (at && chain.size() < Most_Items) {
        const std::optional<Footer> footer = Footer_At(file.substr(*at), *at);
        if (!footer)
            break;
        chain.push_back(*footer);
        at = footer->former == 0 ? std::nullopt : std::optional(footer->former);
    }
    std::reverse(chain.begin(), chain.end());
    return chain;
}
} // namespace

std::optional<std::uint64_t> Last_Footer(std::string_view end, std::uint64_t from)
{
    if (end.size() < Footer_Size)
        return std::nullopt;
    for (std::size_t at = end.size() - Footer_Size;; --at) {
        at = end.rfind(Mark, at);
        if (at == std::string_view::npos)
            return std::nullopt;
        if (Footer_At(end.substr(at), from + at))
            return from + at;
        if (at == 0)
            return std::nullopt;
    }
}

std::string Record(std::uint64_t size, std::optional<std::uint64_t> former, std::uint32_t id, std::string_view bytes)
{
    std::string footer(Mark);
    Put(footer, size + bytes.size());
    Put(footer, std::uint64_t{bytes.size()});
    Put(footer, former.value_or(0));
    Put(footer, id);
    Put(footer, Language);
    footer += Padded_Type();
    Put(footer, Sum(bytes));
    Put(footer, Sum(footer));
    return std::string(bytes) + footer;
}

Place Place_For(std::string_view file, std::uint32_t id)
{
    const std::vector<Footer> chain = Footers(file);
    if (chain.empty())
        return {file.size(), std::nullopt};
    const Footer &last = chain.back();
    if (last.id != id)
        return {file.size(), last.at};
    return {last.at - last.size, last.former == 0 ? std::nullopt : std::optional(last.former)};
}

std::vector<Item> Items(std::string_view file)
{
    std::vector<Item> items;
    for (const Footer &footer : Footers(file)) {
        const std::string_view bytes = file.substr(footer.at - footer.size, footer.size);
        if (Sum(bytes) != footer.sum)
            continue;
        std::erase_if(items, [&](const Item &item) { return item.id == footer.id; });
        items.push_back({footer.id, bytes});
    }
    return items;
}

std::optional<std::string_view> Find(const std::vector<Item> &items, std::uint32_t id)
{
    const auto found = std::find_if(items.begin(), items.end(), [&](const Item &item) { return item.id == id; });
    return found == items.end() ? std::nullopt : std::optional(found->bytes);
}

std::string_view Program(std::string_view file)
{
    const std::vector<Footer> chain = Footers(file);
    return chain.empty() ? file : file.substr(0, chain.front().at - chain.front().size);
}
} // namespace Book
