// SPDX-License-Identifier: GPL-3.0-or-later
#include "users/scrambling.h"

#include "platform/book/number_stream.h"
#include "users/scrambling_tables.h"

#include <algorithm>
#include <array>
#include <vector>

namespace
{
using Scrambling_Tables::First_Character;
using Scrambling_Tables::Length;

constexpr char16_t Quote = u'"';

bool Stays_As_It_Is(QChar character)
{
    return character == u'\r' || character == u'\n' || character == Quote;
}

/// A substitution table as a ring: places are counted from where its rotations have brought the start.
class Ring
{
public:
    Ring(std::string_view table, bool odd) : m_table(table), m_step(odd ? 1 : -1)
    {
        for (int place = 0; place < Length; ++place)
            m_places[Index_Of(table[static_cast<size_t>(place)])] = place;
    }

    /// Forward: an odd table to the left, an even one to the right. A negative number goes back.
    void Rotate(qsizetype times)
    {
        m_start = static_cast<int>((m_start + m_step * (times % Length) + Length) % Length);
    }

    /// The place of a character; `otherwise` for one that is in no table.
    [[nodiscard]] int Place_Of(QChar character, int otherwise) const
    {
        const char16_t code = character.unicode();
        if (code < First_Character || code >= First_Character + Length)
            return otherwise;
        return (m_places[Index_Of(static_cast<char>(code))] - m_start + Length) % Length;
    }
    [[nodiscard]] QChar At(int place) const
    {
        return QLatin1Char(m_table[static_cast<size_t>((place + m_start) % Length)]);
    }

private:
    static size_t Index_Of(char character) { return static_cast<size_t>(character - First_Character); }

    std::string_view m_table;
    std::array<int, Length> m_places{};
    int m_start = 0;
    int m_step;
};

/// The tables of one run, the turn of the next to rotate and the places last found.
class Scrambler
{
public:
    explicit Scrambler(int level)
    {
        for (int k = 0; k < level; ++k)
            m_rings.emplace_back(Scrambling_Tables::All[static_cast<size_t>(k)], k % 2 == 0);
        m_found.resize(m_rings.size() / 2, 0);
    }

    void Rotate_Forward()
    {
        m_rings[m_turn].Rotate(1);
        m_turn = (m_turn + 1) % m_rings.size();
    }
    void Rotate_Back()
    {
        m_turn = (m_turn + m_rings.size() - 1) % m_rings.size();
        m_rings[m_turn].Rotate(-1);
    }
    /// As many single rotations as a text of this length makes.
    void Rotate_As_After(qsizetype length)
    {
        const auto level = static_cast<qsizetype>(m_rings.size());
        for (Ring &ring : m_rings)
            ring.Rotate(length / level);
        for (qsizetype rest = length % level; rest > 0; --rest)
            Rotate_Forward();
    }

    // A quote must come out of a quote only, or Decode could not tell it from one that was passed through. A
    // character that would become one therefore goes the way that is free, the quote's own.
    QChar Forth(QChar character)
    {
        const QChar result = Through_Pairs_Up(character);
        return result == Quote ? Through_Pairs_Up(result) : result;
    }
    QChar Back(QChar character)
    {
        const QChar result = Through_Pairs_Down(character);
        return result == Quote ? Through_Pairs_Down(result) : result;
    }

private:
    QChar Through_Pairs_Up(QChar character)
    {
        for (size_t pair = 0; pair < m_found.size(); ++pair) {
            m_found[pair] = m_rings[2 * pair].Place_Of(character, m_found[pair]);
            character = m_rings[2 * pair + 1].At(m_found[pair]);
        }
        return character;
    }
    QChar Through_Pairs_Down(QChar character)
    {
        for (size_t pair = m_found.size(); pair-- > 0;) {
            m_found[pair] = m_rings[2 * pair + 1].Place_Of(character, m_found[pair]);
            character = m_rings[2 * pair].At(m_found[pair]);
        }
        return character;
    }

    std::vector<Ring> m_rings;
    std::vector<int> m_found;
    size_t m_turn = 0;
};

QString Joined_With_Stream(QString text)
{
    Number_Stream stream;
    for (QChar &character : text)
        character = QChar(static_cast<char16_t>(character.unicode() ^ stream.Next()));
    return text;
}
} // namespace

QString Encode(const QString &text, int level)
{
    Scrambler scrambler(level);
    QString scrambled = text;
    for (QChar &character : scrambled) {
        if (!Stays_As_It_Is(character))
            character = scrambler.Forth(character);
        scrambler.Rotate_Forward();
    }
    return scrambled;
}

QString Decode(const QString &scrambled, int level)
{
    Scrambler scrambler(level);
    scrambler.Rotate_As_After(scrambled.size());
    QString text = scrambled;
    for (qsizetype i = text.size() - 1; i >= 0; --i) {
        scrambler.Rotate_Back();
        const QChar character = text.at(i);
        if (!Stays_As_It_Is(character))
            text[i] = scrambler.Back(character);
    }
    return text;
}

QString Scramble_Text(const QString &text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text.at(begin) == u' ')
        ++begin;
    while (end > begin && text.at(end - 1) == u' ')
        --end;
    return Joined_With_Stream(text.sliced(begin, end - begin));
}

QString Unscramble_Text(const QString &scrambled)
{
    return Joined_With_Stream(scrambled);
}

bool Has_Special_Characters(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar character) { return character.unicode() > 0x7F; });
}
