// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_tokens.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Rtf
{
namespace
{
constexpr bool Is_Letter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool Is_Digit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr std::array<signed char, 256> Make_Hex_Values()
{
    std::array<signed char, 256> values{};
    values.fill(-1);
    signed char value = 0;
    for (std::size_t digit = '0'; digit <= '9'; ++digit)
        values[digit] = value++;
    for (std::size_t letter = 'a'; letter <= 'f'; ++letter) {
        values[letter] = value;
        values[letter - ('a' - 'A')] = value++;
    }
    return values;
}
constexpr auto hexValues = Make_Hex_Values();

constexpr std::array<bool, 256> Make_Text_Ends()
{
    std::array<bool, 256> ends{};
    for (const char c : {'\\', '{', '}', '\r', '\n', '\0'})
        ends[static_cast<unsigned char>(c)] = true;
    return ends;
}
constexpr auto endsText = Make_Text_Ends();
} // namespace

int Hex_Value(char digit)
{
    return hexValues[static_cast<unsigned char>(digit)];
}

Token Tokenizer::Next()
{
    while (m_at < m_bytes.size()) {
        const char c = m_bytes[m_at];
        switch (c) {
        case '{':
            ++m_at;
            return {.kind = Token_Kind::Open};
        case '}':
            ++m_at;
            return {.kind = Token_Kind::Close};
        case '\\':
            return Control();
        case '\r':
        case '\n':
        case '\0':
            ++m_at; // line ends have no meaning between tokens
            break;
        default:
            return Text();
        }
    }
    return {};
}

Token Tokenizer::Text()
{
    const std::size_t begin = m_at;
    while (m_at < m_bytes.size() && !endsText[static_cast<unsigned char>(m_bytes[m_at])])
        ++m_at;
    return {.kind = Token_Kind::Text, .text = m_bytes.substr(begin, m_at - begin)};
}

Token Tokenizer::Control()
{
    ++m_at; // the backslash
    if (m_at == m_bytes.size())
        return {};
    const char c = m_bytes[m_at];
    if (Is_Letter(c))
        return Word();
    ++m_at;
    if (c == '\'')
        return Hex_Byte();
    return {.kind = Token_Kind::Symbol, .byte = static_cast<unsigned char>(c)};
}

Token Tokenizer::Hex_Byte()
{
    if (m_at + 2 > m_bytes.size()) {
        m_at = m_bytes.size();
        return {};
    }
    const int high = Hex_Value(m_bytes[m_at]);
    const int low = Hex_Value(m_bytes[m_at + 1]);
    if (high < 0 || low < 0)
        return {.kind = Token_Kind::Symbol, .byte = '\''};
    m_at += 2;
    return {.kind = Token_Kind::Hex, .byte = static_cast<unsigned char>(high * 16 + low)};
}

Token Tokenizer::Word()
{
    Token token{.kind = Token_Kind::Word};
    const std::size_t begin = m_at;
    while (m_at < m_bytes.size() && Is_Letter(m_bytes[m_at]))
        ++m_at;
    token.text = m_bytes.substr(begin, m_at - begin);

    const bool negative = m_at + 1 < m_bytes.size() && m_bytes[m_at] == '-' && Is_Digit(m_bytes[m_at + 1]);
    if (negative)
        ++m_at;
    long long value = 0;
    for (; m_at < m_bytes.size() && Is_Digit(m_bytes[m_at]); ++m_at) {
        value = std::min<long long>(value * 10 + (m_bytes[m_at] - '0'), std::numeric_limits<int>::max());
        token.hasParameter = true;
    }
    token.parameter = static_cast<int>(negative ? -value : value);
    if (m_at < m_bytes.size() && m_bytes[m_at] == ' ')
        ++m_at;
    if (token.text == "bin")
        return Binary(token.parameter);
    return token;
}

Token Tokenizer::Binary(int length)
{
    const std::size_t wanted = length > 0 ? static_cast<std::size_t>(length) : 0;
    const std::size_t begin = m_at;
    m_at = std::min(m_bytes.size(), begin + wanted);
    return {.kind = Token_Kind::Binary, .text = m_bytes.substr(begin, m_at - begin)};
}

bool Tokenizer::Group_Has(std::string_view word) const
{
    constexpr std::size_t farthest = 4096;
    Tokenizer ahead(m_bytes.substr(m_at, farthest));
    for (int depth = 0; depth >= 0;) {
        const Token token = ahead.Next();
        if (token.kind == Token_Kind::End)
            return false;
        if (token.kind == Token_Kind::Word && token.text == word)
            return true;
        depth += token.kind == Token_Kind::Open ? 1 : token.kind == Token_Kind::Close ? -1 : 0;
    }
    return false;
}

void Tokenizer::Skip_Group()
{
    for (std::size_t depth = 0;;) {
        m_at = std::min(m_bytes.find_first_of("\\{}", m_at), m_bytes.size());
        if (m_at == m_bytes.size())
            return;
        const char c = m_bytes[m_at];
        if (c == '\\') {
            Control();
        } else if (c == '{') {
            ++depth;
            ++m_at;
        } else if (depth-- == 0) {
            return;
        } else {
            ++m_at;
        }
    }
}
} // namespace Rtf
