// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <string_view>
#include <vector>

/// Text without regard to case, straight on the UTF-8 bytes of the file.
///
/// The fold is the simple lower case of each code point, except that a character outside ASCII never folds to one
/// inside. So where one of two operands is pure ASCII the built-in NOCASE collation gives the same answers, and its
/// indexes serve.
namespace Text_Fold
{
char32_t Fold(char32_t c);
QString Folded(const QString &text);
/// Zeros count as beyond ASCII, since NOCASE looks no further than to the first one.
bool Is_Ascii(QStringView text);
/// The code point at `at`, which moves behind it; bytes that are no UTF-8 count one by one.
char32_t Next_Code_Point(std::string_view text, size_t &at);
/// Order of the folded code points: below, at or above 0.
int Compare(std::string_view a, std::string_view b);
/// Number of UTF-16 units of a text.
qsizetype Utf16_Length(std::string_view text);

/// A text to look for, prepared once.
class Needle
{
public:
    Needle() = default;
    explicit Needle(const QString &text);
    /// Byte offset of the first match at or behind `from`, or npos.
    [[nodiscard]] size_t Find(std::string_view hay, size_t from = 0) const;

private:
    [[nodiscard]] size_t Find_Bytes(std::string_view hay, size_t from) const;
    [[nodiscard]] bool Bytes_At(const char *place) const;
    [[nodiscard]] bool Matches_At(std::string_view hay, size_t at) const;
    void Choose_Rare_Bytes();
    QByteArray m_bytes; // folded
    QByteArray m_masks; // what makes a byte of a text its lower case: 0x20 for an ASCII letter, else 0
    std::vector<char32_t> m_points;
    bool m_bytewise = false; // all characters have the same bytes in both cases, but for that one bit
    size_t m_rarest = 0;     // places of two bytes that few texts have
    size_t m_rare = 0;
};

/// A pattern of the like operator: %, _, [a-z], [!x], [^x].
class Pattern
{
public:
    Pattern() = default;
    explicit Pattern(const QString &text);
    [[nodiscard]] bool Matches(std::string_view text) const;

private:
    struct Element {
        enum class Kind { Any_Run, Any_One, Set, One } kind = Kind::One;
        char32_t point = 0;
        bool negated = false;
        std::vector<std::pair<char32_t, char32_t>> ranges;
    };
    static bool Accepts(const Element &element, char32_t point);
    size_t Read_Set(const std::vector<char32_t> &points, size_t at);
    std::vector<Element> m_elements;
    Needle m_middle; // of a pattern "%text%"
    bool m_contains = false;
};
} // namespace Text_Fold
