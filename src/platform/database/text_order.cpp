// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/text_order.h"

#include "platform/database/text_fold.h"

#include <QCollator>
#include <algorithm>
#include <bit>
#include <thread>

namespace Text_Order
{
namespace
{
const QCollator &Dictionary()
{
    static const QCollator collator = [] {
        QCollator chinese(QLocale(QLocale::Chinese, QLocale::China));
        chinese.setCaseSensitivity(Qt::CaseInsensitive);
        chinese.compare(QStringLiteral("a"), QStringLiteral("b")); // makes it ready, so that threads may share it
        return chinese;
    }();
    return collator;
}

constexpr char32_t First_Ascii = 0x20;
constexpr char32_t Last_Ascii = 0x7E;
constexpr char32_t First_Han = 0x4E00;
constexpr char32_t Last_Han = 0x9FFF;

/// The places in the dictionary of characters that are ordered one by one, so that texts of them alone are compared
/// without it: printable ASCII and the common Chinese ones. All others have the place 0.
class Places
{
public:
    Places()
    {
        std::vector<std::pair<QCollatorSortKey, char32_t>> keys;
        const auto add = [&keys](char32_t first, char32_t last) {
            for (char32_t c = first; c <= last; ++c) {
                keys.emplace_back(Dictionary().sortKey(QString(QChar(static_cast<char16_t>(c)))), c);
            }
        };
        add(First_Ascii, Last_Ascii);
        add(First_Han, Last_Han);
        std::sort(keys.begin(), keys.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
        quint16 place = 1;
        for (size_t i = 0; i < keys.size(); ++i) {
            if (i > 0 && keys[i - 1].first.compare(keys[i].first) != 0) {
                ++place;
            }
            m_places[keys[i].second] = place;
        }
    }
    [[nodiscard]] quint16 Of(char32_t c) const { return c <= Last_Han ? m_places[c] : quint16(0); }

private:
    std::array<quint16, Last_Han + 1> m_places{};
};

const Places &All_Places()
{
    static const Places places;
    return places;
}

int Compare_By_Dictionary(std::string_view a, std::string_view b)
{
    const int order = Dictionary().compare(QString::fromUtf8(a.data(), static_cast<qsizetype>(a.size())),
                                           QString::fromUtf8(b.data(), static_cast<qsizetype>(b.size())));
    return order != 0 ? order : Text_Fold::Compare(a, b);
}

constexpr size_t Block_Bytes = size_t(1) << 20U; // far above the length for which a string keeps its text in itself

// The front of a text in slots, the first one in the highest bits.
constexpr int Slot_Bits = 16;
constexpr int Slots_In_A_Word = 4;
constexpr quint64 Open_Slot = 0xFFFF; ///< from here on only the dictionary knows
} // namespace

int Compare(std::string_view a, std::string_view b)
{
    const Places &places = All_Places();
    size_t i = 0;
    size_t j = 0;
    while (i < a.size() && j < b.size()) {
        const quint16 x = places.Of(Text_Fold::Next_Code_Point(a, i));
        const quint16 y = places.Of(Text_Fold::Next_Code_Point(b, j));
        if (x == 0 || y == 0) {
            return Compare_By_Dictionary(a, b);
        }
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    if (i == a.size() && j == b.size()) {
        return Text_Fold::Compare(a, b);
    }
    const bool longer = i < a.size();
    size_t next = longer ? i : j;
    const bool known = places.Of(Text_Fold::Next_Code_Point(longer ? a : b, next)) != 0;
    return !known ? Compare_By_Dictionary(a, b) : longer ? 1 : -1;
}

void Sorter::Add(qint64 row, std::string_view text)
{
    if (m_texts.empty() || m_texts.back().capacity() - m_texts.back().size() < text.size()) {
        m_texts.emplace_back().reserve(std::max(Block_Bytes, text.size()));
    }
    std::string &block = m_texts.back();
    const size_t at = block.size();
    block += text;
    const std::string_view kept = std::string_view(block).substr(at);
    m_entries.push_back({Front_Of(kept), row, kept});
}

Sorter::Front Sorter::Front_Of(std::string_view text)
{
    Front front{};
    bool open = false;
    size_t at = 0;
    for (quint64 &word : front) {
        for (int i = 0; i < Slots_In_A_Word; ++i) {
            quint64 place = open ? Open_Slot : 0;
            if (!open && at < text.size()) {
                place = All_Places().Of(Text_Fold::Next_Code_Point(text, at));
                open = place == 0;
            }
            word = (word << Slot_Bits) | (open ? Open_Slot : place);
        }
    }
    return front;
}

bool Sorter::Less(const Entry &a, const Entry &b)
{
    for (size_t i = 0; i < a.front.size(); ++i) {
        const quint64 difference = a.front[i] ^ b.front[i];
        if (difference == 0) {
            continue;
        }
        const int shift = (63 - std::countl_zero(difference)) / Slot_Bits * Slot_Bits;
        const quint64 x = (a.front[i] >> shift) & Open_Slot;
        const quint64 y = (b.front[i] >> shift) & Open_Slot;
        if (x != Open_Slot && y != Open_Slot) {
            return x < y;
        }
        break;
    }
    const int order = a.text == b.text ? 0 : Compare(a.text, b.text);
    return order != 0 ? order < 0 : a.row < b.row;
}

size_t Threads_For(size_t texts)
{
    constexpr size_t mostThreads = 8;
    constexpr size_t textsForAThread = 5000;
    const size_t processors = std::clamp<size_t>(std::thread::hardware_concurrency(), 1, mostThreads);
    return std::clamp<size_t>(texts / textsForAThread, 1, processors);
}

/// By halves, one of them in a thread of its own.
void Sorter::Sort_Entries(size_t from, size_t to, size_t threads)
{
    const auto at = [this](size_t place) {
        return m_entries.begin() + static_cast<std::ptrdiff_t>(place);
    };
    if (threads < 2) {
        std::sort(at(from), at(to), Less);
        return;
    }
    const size_t middle = from + (to - from) / 2;
    {
        const std::jthread other([&] { Sort_Entries(from, middle, threads / 2); });
        Sort_Entries(middle, to, threads - threads / 2);
    }
    std::inplace_merge(at(from), at(middle), at(to), Less);
}

void Sorter::Sort(size_t threads)
{
    Sort_Entries(0, m_entries.size(), threads);
    std::sort(m_nulls.begin(), m_nulls.end());
}

void Sorter::Take(Sorter &&other)
{
    const auto entries = static_cast<std::ptrdiff_t>(m_entries.size());
    m_entries.insert(m_entries.end(), other.m_entries.begin(), other.m_entries.end());
    std::inplace_merge(m_entries.begin(), m_entries.begin() + entries, m_entries.end(), Less);
    const auto nulls = static_cast<std::ptrdiff_t>(m_nulls.size());
    m_nulls.insert(m_nulls.end(), other.m_nulls.begin(), other.m_nulls.end());
    std::inplace_merge(m_nulls.begin(), m_nulls.begin() + nulls, m_nulls.end());
    std::move(other.m_texts.begin(), other.m_texts.end(), std::back_inserter(m_texts));
    other = {};
}

std::vector<qint64> Sorter::Rows(bool descending)
{
    std::vector<qint64> rows = std::move(m_nulls);
    rows.reserve(rows.size() + m_entries.size());
    for (const Entry &entry : m_entries) {
        rows.push_back(entry.row);
    }
    if (descending) {
        std::reverse(rows.begin(), rows.end());
    }
    return rows;
}
} // namespace Text_Order
