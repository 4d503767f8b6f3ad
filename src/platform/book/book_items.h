// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The named binary items at the end of an executable. Nothing here opens a file: the program that writes books and the
/// viewer each have their own way to files.
///
/// An item is a record of its bytes and, behind them, a footer of 56 bytes, all numbers little-endian:
///
///     0  "ZLQBOOK1"
///     8  where this footer stands in the file
///    16  size of the item's bytes, which end where the footer begins
///    24  where the former record's footer stands, 0 for none
///    32  id                  36  language, 1033
///    40  type, "CUSTOM", filled with zero bytes
///    48  CRC-32 of the item's bytes
///    52  CRC-32 of the 52 bytes above
///
/// Records are only added. The last whole footer leads to all others, so a record that was cut off by a kill leaves
/// the book as it was before; what is left of it is passed over for ever. A book inside an item is none of the book's
/// own: its footers tell another place than they stand at. A later record of an id takes the place of an earlier one.
namespace Book
{
inline constexpr std::uint32_t Language = 1033;
inline constexpr std::string_view Type = "CUSTOM";
inline constexpr std::size_t Footer_Size = 56;

/// Of a file, the place of the last whole footer; none where there is none.
/// @param end   the bytes at the file's end, at least a footer's; only there is it looked for
/// @param from  where these bytes begin in the file
std::optional<std::uint64_t> Last_Footer(std::string_view end, std::uint64_t from);

/// The bytes to be added at a file's end for one item.
/// @param size    of the file so far
/// @param former  the last footer, if there is one
std::string Record(std::uint64_t size, std::optional<std::uint64_t> former, std::uint32_t id, std::string_view bytes);

/// Where a record can be added so that it takes the place of the last one, if that has this id, and follows it
/// otherwise.
struct Place {
    std::uint64_t size = 0; ///< of the file up to there
    std::optional<std::uint64_t> former;
};
Place Place_For(std::string_view file, std::uint32_t id);

struct Item {
    std::uint32_t id = 0;
    std::string_view bytes; ///< within the file's
};
/// All items of a book, the first written first. Those whose bytes were changed are left out, as is all that stands
/// before a place where the chain of footers is broken.
std::vector<Item> Items(std::string_view file);
/// The bytes of one item; none when it is not there.
std::optional<std::string_view> Find(const std::vector<Item> &items, std::uint32_t id);
/// The program that stands before the items.
/// It ends where the first record begins, or with the file.
std::string_view Program(std::string_view file);
} // namespace Book
