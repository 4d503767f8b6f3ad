// SPDX-License-Identifier: GPL-3.0-or-later
#include "rich_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace
{
constexpr std::size_t Deepest = 500;
constexpr std::size_t Longest = 32U << 20;

struct State {
    bool bold = false;
    bool italic = false;
    bool skipped = false;
    int size = 24;  ///< in half points
    int behind = 1; ///< signs that stand for a Unicode character in older readers
};

struct Sign {
    std::string_view word;
    std::string_view text;
};
constexpr Sign Signs[] = {{"par", "\n"},     {"line", "\n"},  {"row", "\n"},      {"sect", "\n"},
                          {"page", "\n"},    {"tab", "\t"},   {"cell", "\t"},     {"nestcell", "\t"},
                          {"nestrow", "\n"}, {"bullet", "•"}, {"emdash", "—"},    {"endash", "–"},
                          {"lquote", "‘"},   {"rquote", "’"}, {"ldblquote", "“"}, {"rdblquote", "”"}};
constexpr std::string_view Skipped[] = {
    "fonttbl", "colortbl",  "stylesheet",        "info",      "pict",     "header",  "footer",
    "headerr", "headerl",   "headerf",           "footerr",   "footerl",  "footerf", "object",
    "fldinst", "listtable", "listoverridetable", "generator", "themedata"};

class Reader
{
public:
    explicit Reader(std::string_view rtf) : m_rest(rtf) {}
    Shown_Text Read();

private:
    void Control();
    void Word(std::string_view word, bool hasNumber, int number);
    void Unit(std::uint32_t unit);
    void Sign_Of(char character);
    void Add(std::string_view text);

    std::string_view m_rest;
    State m_now;
    std::vector<State> m_outer;
    std::size_t m_tooDeep = 0;
    std::uint32_t m_high = 0;
    int m_left = 0; ///< signs still to be passed over
    Shown_Text m_shown;
};

void Reader::Add(std::string_view text)
{
    if (m_now.skipped || m_tooDeep > 0)
        return;
    const int size = m_now.size >= 40 ? 2 : m_now.size >= 30 ? 1 : 0;
    const int style = (m_now.bold ? 1 : 0) + (m_now.italic ? 2 : 0) + 4 * size;
    m_shown.text += text;
    m_shown.styles.append(text.size(), static_cast<char>('A' + style));
}

void Reader::Unit(std::uint32_t unit)
{
    if (unit >= 0xD800 && unit < 0xDC00) {
        m_high = unit;
        return;
    }
    std::uint32_t code = unit;
    if (unit >= 0xDC00 && unit < 0xE000)
        code = m_high != 0 ? 0x10000 + ((m_high - 0xD800) << 10) + (unit - 0xDC00) : 0xFFFD;
    m_high = 0;
    std::string text;
    const auto put = [&](std::uint32_t byte) {
        text += static_cast<char>(static_cast<unsigned char>(byte));
    };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
    }
    if (code >= 0x800)
        put(0x80 | ((code >> 6) & 0x3F));
    if (code >= 0x80)
        put(0x80 | (code & 0x3F));
    Add(text);
}

void Reader::Sign_Of(char character)
{
    if (m_left > 0)
        --m_left;
    else
        Unit(static_cast<unsigned char>(character));
}

void Reader::Word(std::string_view word, bool hasNumber, int number)
{
    const bool on = !hasNumber || number != 0;
    if (word == "b")
        m_now.bold = on;
    else if (word == "i")
        m_now.italic = on;
    else if (word == "fs")
        m_now.size = number;
    else if (word == "plain")
        m_now = {false, false, m_now.skipped, 24, m_now.behind};
    else if (word == "uc")
        m_now.behind = std::clamp(number, 0, 16);
    else if (word == "u") {
        Unit(static_cast<std::uint16_t>(number));
        m_left = m_now.behind;
    } else if (word == "bin")
        m_rest.remove_prefix(std::min(m_rest.size(), static_cast<std::size_t>(std::max(number, 0))));
    else if (std::find(std::begin(Skipped), std::end(Skipped), word) != std::end(Skipped))
        m_now.skipped = true;
    else
        for (const Sign &sign : Signs)
            if (word == sign.word)
                Add(sign.text);
}

/// What stands behind a backslash.
void Reader::Control()
{
    const auto letter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    };
    const auto digit = [](char c) {
        return c >= '0' && c <= '9';
    };
    if (m_rest.empty())
        return;
    const char first = m_rest.front();
    if (!letter(first)) {
        m_rest.remove_prefix(1);
        if (first == '\'') {
            const std::string code(m_rest.substr(0, 2));
            m_rest.remove_prefix(code.size());
            Sign_Of(static_cast<char>(std::strtol(code.c_str(), nullptr, 16)));
        } else if (first == '*') {
            m_now.skipped = true;
        } else if (first == '~') {
            Add(" ");
        } else if (first == '\n' || first == '\r') {
            Add("\n");
        } else if (first == '\\' || first == '{' || first == '}') {
            Sign_Of(first);
        }
        return;
    }
    std::size_t end = 0;
    while (end < m_rest.size() && end < 32 && letter(m_rest[end]))
        ++end;
    const std::string_view word = m_rest.substr(0, end);
    const std::size_t begin = end;
    if (end < m_rest.size() && m_rest[end] == '-')
        ++end;
    while (end < m_rest.size() && end - begin < 10 && digit(m_rest[end]))
        ++end;
    const int number = std::atoi(std::string(m_rest.substr(begin, end - begin)).c_str());
    const bool isEnded = end < m_rest.size() && m_rest[end] == ' ';
    m_rest.remove_prefix(end + (isEnded ? 1 : 0));
    Word(word, end > begin, number);
}

Shown_Text Reader::Read()
{
    while (!m_rest.empty() && m_shown.text.size() < Longest) {
        const char c = m_rest.front();
        m_rest.remove_prefix(1);
        if (c == '\\')
            Control();
        else if (c == '{' && m_outer.size() >= Deepest)
            ++m_tooDeep;
        else if (c == '{')
            m_outer.push_back(m_now);
        else if (c == '}' && m_tooDeep > 0)
            --m_tooDeep;
        else if (c == '}' && !m_outer.empty()) {
            m_now = m_outer.back();
            m_outer.pop_back();
        } else if (c != '\r' && c != '\n' && c != '}' && c != '\0')
            Sign_Of(c);
    }
    return m_shown;
}
} // namespace

Shown_Text Read_Rich(std::string_view rtf)
{
    return Reader(rtf).Read();
}
