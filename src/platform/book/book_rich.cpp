// SPDX-License-Identifier: GPL-3.0-or-later
//
// RTF as pages of a book: one pass over the bytes, a table of the words that change something. Facts are those of the
// format's published description, version 1.9.1.
#include "platform/book/book_page.h"

#include "platform/book/utf8.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace Book
{
namespace
{
constexpr std::size_t Deepest = 500;
constexpr std::size_t Most_Cells = 64;
constexpr std::size_t Most_Colors = 4096;
constexpr std::size_t Longest_Word = 32;
constexpr std::size_t Most_Digits = 9;
constexpr int Farthest = 1'000'000; ///< twips

enum class Into : std::uint8_t { Text, Nowhere, Colors, Picture };

struct State {
    Look look;
    Into into = Into::Text;
    bool is_hidden = false;
    bool is_note = false;
    int behind = 1; ///< signs that stand for a Unicode character in older readers
};

int Bounded(int number)
{
    return std::clamp(number, -Farthest, Farthest);
}

class Reader
{
public:
    explicit Reader(std::string_view rtf) : m_rest(rtf) {}
    Page Read();

private:
    struct Word_Row;
    static const Word_Row *Row_Of(std::string_view word);

    void Open();
    void Close();
    void Control();
    void Symbol();
    void Hex();
    void Unit(std::uint32_t unit);
    void Sign(char character);
    void Say(std::string_view text);
    void Byte_Of_Picture(char digit);
    void Binary(int size);
    void Finish_Picture();
    void Note();
    void Plain();
    void Unicode(int number);
    void Begin_Row();
    void Add_Cell(int edge);
    void Finish_Row();
    void Finish_Cell();
    void End_Paragraph(std::string_view sign);
    void Finish_Paragraph();
    void Finish_Inner_Row();
    [[nodiscard]] std::uint32_t Color(int number) const;
    [[nodiscard]] bool Is_Said() const { return m_now.into == Into::Text && !m_now.is_hidden && m_tooDeep == 0; }

    std::string_view m_rest;
    State m_now;
    std::vector<State> m_outer;
    std::size_t m_tooDeep = 0;
    std::uint32_t m_high = 0;
    int m_left = 0; ///< signs still to be passed over
    Page_Maker m_page;
    Paragraph m_paragraph;
    std::vector<std::uint32_t> m_colors;
    std::uint32_t m_color = 0;
    bool m_hasColor = false;
    Page_Picture m_picture;
    bool m_isShownKind = false;
    int m_digit = -1; ///< the first of two of a picture's byte
    Row m_definition; ///< of the rows that follow
    Cell m_cell;      ///< of the definition
    int m_row = -1;   ///< the one whose cells are read
    int m_cellNumber = 0;
    bool m_isInTable = false;
};

/// What a word does. @param number  1 where none stands behind it
struct Reader::Word_Row {
    std::string_view word;
    void (*act)(Reader &reader, int number);
};

#define WORD(name, statement)                                                                                          \
    {                                                                                                                  \
        name, [](Reader &r, [[maybe_unused]] int n) {                                                                  \
            statement;                                                                                                 \
        }                                                                                                              \
    }
#define PASSED_OVER(name) WORD(name, r.m_now.into = Into::Nowhere)

const Reader::Word_Row *Reader::Row_Of(std::string_view word)
{
    static constexpr Word_Row Words[] = {
        WORD("annotation", r.Note()),
        WORD("b", r.m_now.look.bold = n != 0),
        WORD("bin", r.Binary(n)),
        WORD("blue", r.m_color = (r.m_color & 0xFFFF00U) | (static_cast<unsigned>(n) & 0xFFU); r.m_hasColor = true),
        WORD("brdrdash", r.m_definition.has_lines = true),
        WORD("brdrdb", r.m_definition.has_lines = true),
        WORD("brdrdot", r.m_definition.has_lines = true),
        WORD("brdrs", r.m_definition.has_lines = true),
        WORD("brdrth", r.m_definition.has_lines = true),
        WORD("bullet", r.Say("•")),
        WORD("cell", r.Finish_Cell()),
        WORD("cellx", r.Add_Cell(n)),
        WORD("cf", r.m_now.look.color = r.Color(n)),
        WORD("chcbpat", r.m_now.look.back = r.Color(n)),
        WORD("clcbpat", r.m_cell.back = r.Color(n)),
        WORD("clmrg", r.m_cell.joins_left = true),
        WORD("clvmrg", r.m_cell.joins_above = true),
        WORD("colortbl", r.m_now.into = Into::Colors),
        WORD("deleted", r.m_now.is_hidden = n != 0),
        WORD("emdash", r.Say("—")),
        WORD("endash", r.Say("–")),
        WORD("fi", r.m_paragraph.first = Bounded(n)),
        PASSED_OVER("fldinst"),
        PASSED_OVER("fonttbl"),
        PASSED_OVER("footer"),
        PASSED_OVER("footerf"),
        PASSED_OVER("footerl"),
        PASSED_OVER("footerr"),
        WORD("footnote", r.Note()),
        WORD("fs", r.m_now.look.half_points = static_cast<std::uint16_t>(std::clamp(n, 2, 400))),
        PASSED_OVER("generator"),
        WORD("green", r.m_color = (r.m_color & 0xFF00FFU) | ((static_cast<unsigned>(n) & 0xFFU) << 8);
             r.m_hasColor = true),
        PASSED_OVER("header"),
        PASSED_OVER("headerf"),
        PASSED_OVER("headerl"),
        PASSED_OVER("headerr"),
        WORD("highlight", r.m_now.look.back = r.Color(n)),
        WORD("i", r.m_now.look.italic = n != 0),
        PASSED_OVER("info"),
        WORD("intbl", r.m_isInTable = true),
        WORD("jpegblip", r.m_isShownKind = true),
        WORD("ldblquote", r.Say("“")),
        WORD("li", r.m_paragraph.left = Bounded(n)),
        WORD("line", r.Finish_Paragraph()),
        PASSED_OVER("listoverridetable"),
        PASSED_OVER("listtable"),
        WORD("lquote", r.Say("‘")),
        WORD("nestcell", r.Say("\t")),
        WORD("nestrow", r.Finish_Inner_Row()),
        PASSED_OVER("nonesttables"),
        PASSED_OVER("nonshppict"),
        WORD("nosupersub", r.m_now.look.raised = 0),
        PASSED_OVER("object"),
        WORD("page", r.Finish_Paragraph()),
        WORD("par", r.Finish_Paragraph()),
        WORD("pard", r.m_paragraph = {}; r.m_isInTable = false),
        WORD("piccropb", r.m_picture.cut_bottom = Bounded(n)),
        WORD("piccropl", r.m_picture.cut_left = Bounded(n)),
        WORD("piccropr", r.m_picture.cut_right = Bounded(n)),
        WORD("piccropt", r.m_picture.cut_top = Bounded(n)),
        WORD("pichgoal", r.m_picture.height = Bounded(n)),
        WORD("pict", r.m_now.into = r.Is_Said() ? Into::Picture : Into::Nowhere; r.m_picture = {};
             r.m_isShownKind = false; r.m_digit = -1),
        WORD("picwgoal", r.m_picture.width = Bounded(n)),
        WORD("plain", r.Plain()),
        WORD("pngblip", r.m_isShownKind = true),
        WORD("qc", r.m_paragraph.align = Align::Center),
        WORD("qj", r.m_paragraph.align = Align::Left),
        WORD("ql", r.m_paragraph.align = Align::Left),
        WORD("qr", r.m_paragraph.align = Align::Right),
        WORD("rdblquote", r.Say("”")),
        WORD("red", r.m_color = (r.m_color & 0x00FFFFU) | ((static_cast<unsigned>(n) & 0xFFU) << 16);
             r.m_hasColor = true),
        WORD("ri", r.m_paragraph.right = Bounded(n)),
        WORD("row", r.Finish_Row()),
        WORD("rquote", r.Say("’")),
        WORD("sa", r.m_paragraph.after = std::clamp(n, 0, 4000)),
        WORD("sb", r.m_paragraph.before = std::clamp(n, 0, 4000)),
        WORD("sect", r.Finish_Paragraph()),
        WORD("shppict", r.m_now.into = r.m_outer.empty() ? Into::Text : r.m_outer.back().into),
        WORD("strike", r.m_now.look.struck = n != 0),
        PASSED_OVER("stylesheet"),
        WORD("sub", r.m_now.look.raised = -1),
        WORD("super", r.m_now.look.raised = 1),
        WORD("tab", r.Say("\t")),
        PASSED_OVER("themedata"),
        WORD("trleft", r.m_definition.left = Bounded(n)),
        WORD("trowd", r.Begin_Row()),
        WORD("u", r.Unicode(n)),
        WORD("uc", r.m_now.behind = std::clamp(n, 0, 16)),
        WORD("ul", r.m_now.look.underlined = n != 0),
        WORD("uldb", r.m_now.look.underlined = n != 0),
        WORD("ulnone", r.m_now.look.underlined = false),
        WORD("ulwave", r.m_now.look.underlined = n != 0),
        WORD("v", r.m_now.is_hidden = n != 0),
    };
    static_assert(std::is_sorted(std::begin(Words), std::end(Words),
                                 [](const Word_Row &a, const Word_Row &b) { return a.word < b.word; }));
    const Word_Row *row =
        std::lower_bound(std::begin(Words), std::end(Words), word,
                         [](const Word_Row &each, std::string_view sought) { return each.word < sought; });
    return row != std::end(Words) && row->word == word ? row : nullptr;
}
#undef PASSED_OVER
#undef WORD

void Reader::Say(std::string_view text)
{
    if (Is_Said())
        m_page.Add(text, m_now.look);
}

void Reader::Plain()
{
    m_now.look = {};
    m_now.is_hidden = false;
}

void Reader::Note()
{
    Say(" [");
    m_now.is_note = true;
}

std::uint32_t Reader::Color(int number) const
{
    return number >= 0 && static_cast<std::size_t>(number) < m_colors.size()
               ? m_colors[static_cast<std::size_t>(number)]
               : No_Color;
}

void Reader::End_Paragraph(std::string_view sign)
{
    Paragraph format = m_paragraph;
    if (m_isInTable) {
        if (m_row < 0)
            m_row = m_page.Add_Row();
        format.row = m_row;
        format.cell = m_cellNumber;
    }
    m_page.End_Paragraph(format, sign);
}

void Reader::Finish_Paragraph()
{
    if (Is_Said())
        End_Paragraph("\n");
}

/// The end of an inner table's row stands in a group that is passed over otherwise.
void Reader::Finish_Inner_Row()
{
    if (m_tooDeep == 0 && m_page.Has_Open_Paragraph())
        End_Paragraph("\n");
}

void Reader::Begin_Row()
{
    m_definition = {};
    m_cell = {};
}

void Reader::Add_Cell(int edge)
{
    std::vector<Cell> &cells = m_definition.cells;
    const int least = (cells.empty() ? m_definition.left : cells.back().edge) + 1;
    m_cell.edge = std::max(Bounded(edge), least);
    if (cells.size() < Most_Cells)
        cells.push_back(m_cell);
    m_cell = {};
}

void Reader::Finish_Cell()
{
    if (!Is_Said())
        return;
    m_isInTable = true;
    End_Paragraph("\t");
    ++m_cellNumber;
}

void Reader::Finish_Row()
{
    if (!Is_Said())
        return;
    if (m_page.Has_Open_Paragraph())
        Finish_Cell();
    if (m_row >= 0)
        m_page.Row_At(m_row) = m_definition;
    m_row = -1;
    m_cellNumber = 0;
}

void Reader::Finish_Picture()
{
    if (!m_isShownKind)
        m_picture.bytes.clear();
    m_page.Add_Picture(std::exchange(m_picture, {}), m_now.look);
}

void Reader::Byte_Of_Picture(char digit)
{
    const int value = digit >= '0' && digit <= '9'   ? digit - '0'
                      : digit >= 'a' && digit <= 'f' ? digit - 'a' + 10
                      : digit >= 'A' && digit <= 'F' ? digit - 'A' + 10
                                                     : -1;
    if (value < 0 || m_tooDeep > 0)
        return;
    if (m_digit >= 0)
        m_picture.bytes += static_cast<char>(static_cast<unsigned char>(m_digit * 16 + value));
    m_digit = m_digit >= 0 ? -1 : value;
}

void Reader::Binary(int size)
{
    const std::string_view bytes = m_rest.substr(0, static_cast<std::size_t>(std::max(size, 0)));
    if (m_now.into == Into::Picture)
        m_picture.bytes += bytes;
    m_rest.remove_prefix(bytes.size());
}

void Reader::Unicode(int number)
{
    Unit(static_cast<std::uint16_t>(number));
    m_left = m_now.behind;
}

/// A unit of UTF-16. A lone half becomes the sign for what cannot be read.
void Reader::Unit(std::uint32_t unit)
{
    if (unit >= 0xD800 && unit < 0xDC00) {
        m_high = unit;
        return;
    }
    char32_t code = unit;
    if (unit >= 0xDC00 && unit < 0xE000)
        code = m_high != 0 ? 0x10000 + ((m_high - 0xD800) << 10) + (unit - 0xDC00) : Utf8::Replacement;
    m_high = 0;
    std::string text;
    Utf8::Append(text, code);
    Say(text);
}

/// A sign of the text itself.
void Reader::Sign(char character)
{
    if (m_left > 0) {
        --m_left;
    } else if (m_now.into == Into::Picture) {
        Byte_Of_Picture(character);
    } else if (m_now.into == Into::Colors) {
        if (character == ';' && m_colors.size() < Most_Colors)
            m_colors.push_back(std::exchange(m_hasColor, false) ? std::exchange(m_color, 0) : No_Color);
    } else {
        Unit(static_cast<unsigned char>(character));
    }
}

void Reader::Hex()
{
    const std::string code(m_rest.substr(0, 2));
    m_rest.remove_prefix(code.size());
    Sign(static_cast<char>(std::strtol(code.c_str(), nullptr, 16)));
}

/// A backslash and a sign that is no letter.
void Reader::Symbol()
{
    const char sign = m_rest.front();
    m_rest.remove_prefix(1);
    if (sign == '\'')
        Hex();
    else if (sign == '*')
        m_now.into = Into::Nowhere;
    else if (sign == '~')
        Say("\u00A0");
    else if (sign == '_')
        Say("\u2011");
    else if (sign == '\n' || sign == '\r')
        Finish_Paragraph();
    else if (sign == '\\' || sign == '{' || sign == '}')
        Sign(sign);
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
    if (!letter(m_rest.front()))
        return Symbol();
    std::size_t end = 0;
    while (end < m_rest.size() && end < Longest_Word && letter(m_rest[end]))
        ++end;
    const std::string_view word = m_rest.substr(0, end);
    const std::size_t begin = end;
    if (end < m_rest.size() && m_rest[end] == '-')
        ++end;
    while (end < m_rest.size() && end - begin < Most_Digits && digit(m_rest[end]))
        ++end;
    const int number = end > begin ? std::atoi(std::string(m_rest.substr(begin, end - begin)).c_str()) : 1;
    const bool isEnded = end < m_rest.size() && m_rest[end] == ' ';
    m_rest.remove_prefix(end + (isEnded ? 1 : 0));
    m_left = 0;
    if (const Word_Row *row = Row_Of(word))
        row->act(*this, number);
}

void Reader::Open()
{
    if (m_outer.size() < Deepest)
        m_outer.push_back(m_now);
    else
        ++m_tooDeep;
}

void Reader::Close()
{
    m_left = 0;
    if (m_tooDeep > 0) {
        --m_tooDeep;
        return;
    }
    if (m_outer.empty())
        return;
    const State ended = std::exchange(m_now, m_outer.back());
    m_outer.pop_back();
    if (ended.into == Into::Picture && m_now.into != Into::Picture)
        Finish_Picture();
    if (ended.is_note && !m_now.is_note)
        Say("]");
}

Page Reader::Read()
{
    while (!m_rest.empty() && !m_page.Is_Full()) {
        const char c = m_rest.front();
        m_rest.remove_prefix(1);
        if (c == '\\')
            Control();
        else if (c == '{')
            Open();
        else if (c == '}')
            Close();
        else if (c != '\r' && c != '\n' && c != '\0')
            Sign(c);
    }
    m_now = {};
    m_tooDeep = 0;
    if (m_page.Has_Open_Paragraph())
        Finish_Paragraph();
    return m_page.Take();
}
} // namespace

Page Read_Rich(std::string_view rtf)
{
    return Reader(rtf).Read();
}
} // namespace Book
