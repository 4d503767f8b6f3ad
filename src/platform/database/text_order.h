// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>
#include <array>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// The order of a dictionary, Chinese by sound, without regard to case; texts that are equal in it are ordered by their
/// characters. Straight on the UTF-8 bytes of the file.
namespace Text_Order
{
int Compare(std::string_view a, std::string_view b);

/// How many threads are worth while for so many texts.
size_t Threads_For(size_t texts);

/// Texts with the row numbers that they belong to, to be put in order.
class Sorter
{
public:
    void Add(qint64 row, std::string_view text);
    /// A row without a text, which comes before all others.
    void Add_Null(qint64 row) { m_nulls.push_back(row); }
    /// Puts what was added in order.
    void Sort(size_t threads);
    /// Takes over what another one has in order.
    void Take(Sorter &&other);
    /// The row numbers in order; where texts are equal, by themselves. @param descending  all the other way round
    [[nodiscard]] std::vector<qint64> Rows(bool descending);

private:
    /// The places of the first characters in the dictionary; nearly all texts differ in them.
    using Front = std::array<quint64, 2>;
    struct Entry {
        Front front;
        qint64 row;
        std::string_view text;
    };
    static Front Front_Of(std::string_view text);
    static bool Less(const Entry &a, const Entry &b);

    void Sort_Entries(size_t from, size_t to, size_t threads);

    std::deque<std::string> m_texts; ///< blocks that don't move
    std::vector<Entry> m_entries;
    std::vector<qint64> m_nulls;
};
} // namespace Text_Order
