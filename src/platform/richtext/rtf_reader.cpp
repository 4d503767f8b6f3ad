// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_reader.h"

#include "platform/richtext/rtf_words.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr std::size_t deepestGroup = 2000; // deeper groups share the state of this one
constexpr int tokensBetweenAsking = 4096;

bool Is_Ascii(QByteArrayView bytes)
{
    return std::none_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}
/// The words whose groups say how a part of a formula looks, as \mradPr.
bool Is_Math_Property(std::string_view word)
{
    return word.size() > 3 && word.starts_with('m') && word.ends_with("Pr");
}
/// Tokens that give bytes of text, which may be parts of one character.
bool Is_Text(const Token &token)
{
    return token.kind == Token_Kind::Text || token.kind == Token_Kind::Hex ||
           (token.kind == Token_Kind::Symbol && (token.byte == '\\' || token.byte == '{' || token.byte == '}'));
}
} // namespace

Reader::Reader(std::string_view bytes, Model &model)
    : m_tokens(bytes), m_reading{.model = model}, m_tables(model), m_paragraph(model)
{
}

void Reader::Read(const Rich_Text::Stop &stop)
{
    for (int count = 1;; ++count) {
        if (count % tokensBetweenAsking == 0)
            Rich_Text::Ask(stop);
        const Token token = m_tokens.Next();
        if (!Is_Text(token))
            Flush();
        switch (token.kind) {
        case Token_Kind::Open:
            Open_Group();
            break;
        case Token_Kind::Close:
            Close_Group();
            if (m_stack.empty())
                return Finish(); // what follows is no part of the document
            break;
        case Token_Kind::Word:
            Do_Word(token);
            break;
        case Token_Kind::Symbol:
            Do_Symbol(token.byte);
            break;
        case Token_Kind::Hex:
            Do_Byte(token.byte);
            break;
        case Token_Kind::Text:
            Do_Text(token.text);
            break;
        case Token_Kind::Binary:
            if (m_state.destination == Destination::Picture)
                m_picture.bytes.append(token.text.data(), static_cast<qsizetype>(token.text.size()));
            break;
        case Token_Kind::End:
            return Finish();
        }
    }
}

void Reader::Finish()
{
    m_depthBeyond = 0;
    while (!m_stack.empty())
        Close_Group();
    if (m_paragraph.Has_Content())
        End_Paragraph(Nesting());
    m_tables.Close_All();
}

void Reader::Open_Group()
{
    m_ignorable = false;
    m_toSkip = 0;
    if (m_stack.size() == deepestGroup) {
        ++m_depthBeyond;
        return;
    }
    m_stack.push_back(m_state);
    m_state.closer = Closer::None;
}

void Reader::Close_Group()
{
    m_ignorable = false;
    m_toSkip = 0;
    if (m_depthBeyond > 0) {
        --m_depthBeyond;
        return;
    }
    if (m_stack.empty())
        return;
    const bool isLast = m_stack.size() == 1 || m_state.closer == Closer::Text_Box;
    if (isLast && m_paragraph.Has_Content()) // a last paragraph without a mark
        End_Paragraph(Nesting());
    const State inner = std::exchange(m_state, std::move(m_stack.back()));
    m_stack.pop_back();
    if (inner.closer != Closer::None)
        Run_Closer(inner);
}

void Reader::Run_Closer(const State &inner)
{
    switch (inner.closer) {
    case Closer::Fonts:
        return m_looks.End_Fonts();
    case Closer::Field:
        return m_fields.End_Field(inner);
    case Closer::Picture:
        return End_Picture();
    case Closer::Note:
        return m_notes.End_Note(inner);
    case Closer::Style:
        return m_styles.End_Style();
    case Closer::Level:
        return m_lists.End_Level(inner);
    case Closer::Override:
        return m_lists.End_Override();
    case Closer::Old_List:
        return m_lists.End_Old_List();
    case Closer::Text_Box:
        m_paragraph.End_Inner();
        [[fallthrough]];
    case Closer::Nested_Row:
        return m_rows.End_Inner();
    case Closer::None:
        return;
    }
}

void Reader::Do_Word(const Token &token)
{
    const int toSkip = std::exchange(m_toSkip, 0);
    const bool ignorable = std::exchange(m_ignorable, false);
    const Word_Row *row = Find_Word(token.text);
    if (!row) {
        if (ignorable || Is_Math_Property(token.text))
            Skip();
        return;
    }
    if (toSkip > 0 && Is_Sign(*row)) { // any other word follows where the stand-in was left out
        m_toSkip = toSkip - 1;
        return;
    }
    m_reading.parameter = {token.parameter, token.hasParameter};
    if (m_state.destination == Destination::Style_Sheet && Is_Formatting(*row))
        m_styles.Add_Word(*row);
    Run(*row);
}

void Reader::Run(const Word_Row &row)
{
    row.action(*this, row.value);
}

void Reader::Do_Symbol(unsigned char symbol)
{
    if (m_toSkip > 0 && (symbol == '~' || symbol == '-' || symbol == '_')) {
        --m_toSkip;
        return;
    }
    switch (symbol) {
    case '*':
        m_ignorable = true;
        return;
    case '\r':
    case '\n':
        return Paragraph_Mark();
    case '~':
        return Emit_Unit(u'\u00A0');
    case '-':
        return Emit_Unit(u'\u00AD');
    case '_':
        return Emit_Unit(u'\u2011');
    case '\t':
        return Emit_Unit(u'\t');
    case '\\':
    case '{':
    case '}':
    case '\'':
        return Do_Byte(symbol);
    default:
        return;
    }
}

void Reader::Do_Byte(unsigned char byte)
{
    if (m_toSkip > 0) {
        --m_toSkip;
        return;
    }
    m_pending.append(static_cast<char>(byte));
}

void Reader::Do_Text(std::string_view bytes)
{
    if (m_state.destination == Destination::Picture)
        return Append_Hex(m_picture, bytes);
    if (m_toSkip > 0) {
        const std::size_t skipped = std::min(static_cast<std::size_t>(m_toSkip), bytes.size());
        bytes.remove_prefix(skipped);
        m_toSkip -= static_cast<int>(skipped);
    }
    m_pending.append(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

void Reader::Flush()
{
    if (m_pending.isEmpty())
        return;
    m_decoded.resize(0);
    if (m_state.destination != Destination::Nothing && m_state.destination != Destination::Alternative)
        Decode_Pending(m_decoded);
    m_pending.resize(0);
    Emit(m_decoded);
}

void Reader::Decode_Pending(QString &text)
{
    if (m_state.codePage == Symbol_Code_Page &&
        (m_state.destination == Destination::Body || m_state.destination == Destination::Old_List_Before)) {
        const QString name = m_looks.Font_Name();
        for (const char byte : std::as_const(m_pending))
            text += QChar(Symbol_Glyph(static_cast<unsigned char>(byte), name));
    } else if (Is_Ascii(m_pending)) {
        text += QLatin1StringView(m_pending);
    } else if (m_state.plainAnsi && Is_Double_Byte(m_looks.Document_Page())) {
        m_codePages.Append_Mixed(text, m_pending, m_looks.Document_Page());
    } else {
        m_codePages.Append(text, m_pending, m_looks.Page());
    }
}

void Reader::Emit(QStringView text)
{
    switch (m_state.destination) {
    case Destination::Body:
        return Emit_Body(text);
    case Destination::Font_Table:
        return m_looks.Add_Font_Name(text);
    case Destination::Color_Table:
        return m_looks.Add_Colors(text);
    case Destination::Style_Sheet:
        return m_styles.Add_Name(text);
    case Destination::Level_Text:
        return m_lists.Add_Level_Text(text);
    case Destination::Field_Instruction:
        return m_fields.Add_Instruction(text);
    case Destination::Page_Text:
        return m_page.Add_Page_Text(text);
    case Destination::Bookmark:
        return m_paragraph.Name_Bookmark(text);
    case Destination::Info_Text:
        return m_page.Add_Info(text);
    case Destination::Note_Origin:
        return m_notes.Add_Origin(text);
    case Destination::Old_List_Before:
        return m_lists.Add_Text_Before(text);
    case Destination::Old_List_After:
        return m_lists.Add_Text_After(text);
    default:
        return;
    }
}

void Reader::Emit_Unit(char16_t unit)
{
    const QChar c(unit);
    Emit(QStringView(&c, 1));
}

void Reader::Emit_Body(QStringView text)
{
    m_notes.Leave_Out_First_Blanks(text);
    if (text.isEmpty())
        return;
    for (text = m_paragraph.Add_Text(text, m_looks.Effective()); !text.isEmpty();
         text = m_paragraph.Add_Text(text, m_looks.Effective()))
        Cut_Paragraph();
}

int Reader::Nesting() const
{
    const int own = m_state.inTable ? std::max(1, m_state.para.nesting) : m_state.para.nesting;
    return m_state.nestingAround + own;
}

/// The paragraph's style here; a break before it is told once.
Para_Style Reader::Paragraph_Style(int nesting)
{
    Para_Style style = m_state.para;
    style.nesting = nesting;
    m_sectionBreak = false;
    if (nesting == 0)
        style.pageBreakBefore |= std::exchange(m_pageBreak, false);
    return style;
}

void Reader::End_Paragraph(int nesting)
{
    Place_Paragraph(m_paragraph.End(Paragraph_Style(nesting), m_looks.Effective()), nesting);
}

void Reader::Cut_Paragraph()
{
    const int nesting = Nesting();
    Place_Paragraph(m_paragraph.Cut(Paragraph_Style(nesting), m_looks.Effective()), nesting);
}

void Reader::Place_Paragraph(int index, int nesting)
{
    const bool beginsTable = nesting > 0 && !m_tables.Is_Open();
    m_tables.Add_Paragraph(index, nesting);
    if (beginsTable && std::exchange(m_pageBreak, false))
        m_tables.Begin_Page();
}

void Reader::End_Picture()
{
    const bool shown = m_state.destination == Destination::Body || m_state.destination == Destination::Nothing;
    Picture picture = Finish_Picture(std::exchange(m_picture, {}));
    if (!shown || (picture.bytes.isEmpty() && picture.width == 0))
        return;
    if (m_paragraph.Is_Full())
        Cut_Paragraph();
    m_paragraph.Add_Picture(std::move(picture), m_looks.Effective());
    m_shapePictureTaken = true;
}
} // namespace Rtf
