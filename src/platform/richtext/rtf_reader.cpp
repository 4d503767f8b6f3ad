// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_reader.h"

#include "platform/richtext/rtf_page_texts.h"

#include <QHashFunctions>

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr std::size_t deepestGroup = 2000; // deeper groups share the state of this one
constexpr qsizetype mostTabsOfStyles = 1 << 18;
constexpr qsizetype longestStyleName = 32; // of interest

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

size_t qHash(const Char_Style &style, size_t seed)
{
    return qHashMulti(seed, style.font, style.halfPoints, style.color, style.back, style.underlineColor, style.link,
                      style.anchor, style.spacing, style.stretchPercent, style.flags, static_cast<int>(style.underline),
                      static_cast<int>(style.script));
}

size_t qHash(const Tab_Stop &tab, size_t seed)
{
    return qHashMulti(seed, tab.position, static_cast<int>(tab.kind), static_cast<int>(tab.leader));
}

Reader::Reader(std::string_view bytes, Model &model) : m_tokens(bytes), m_model(model), m_tables(model) {}

void Reader::Read()
{
    for (;;) {
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
    if (Has_Pending())
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
    if (isLast && Has_Pending()) // a last paragraph without a mark
        End_Paragraph(Nesting());
    const State inner = std::exchange(m_state, std::move(m_stack.back()));
    m_stack.pop_back();
    if (inner.closer != Closer::None)
        Run_Closer(inner.closer, inner);
}

void Reader::Run_Closer(Closer closer, const State &inner)
{
    switch (closer) {
    case Closer::Fonts:
        m_parameter = m_defaultFont;
        return Select_Font(0);
    case Closer::Field:
        return End_Field(inner);
    case Closer::Picture:
        return End_Picture();
    case Closer::Note:
        --m_noteDepth;
        m_noteBegins = false;
        return End_Note(inner);
    case Closer::Style:
        return End_Style();
    case Closer::Level:
        return End_Level(inner);
    case Closer::Override:
        return End_Override();
    case Closer::Old_List:
        return End_Old_List();
    case Closer::Text_Box:
        m_runs = std::move(m_outerRuns.back());
        m_outerRuns.pop_back();
        [[fallthrough]];
    case Closer::Nested_Row:
        m_row = std::move(m_outerRows.back());
        m_outerRows.pop_back();
        return;
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
    m_parameter = token.parameter;
    m_hasParameter = token.hasParameter;
    if (m_state.destination == Destination::Style_Sheet && Is_Formatting(*row))
        m_style.words.push_back({row, m_parameter, m_hasParameter});
    (this->*row->action)(row->value);
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
        return Paragraph_Mark(0);
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

void Reader::Skip()
{
    m_tokens.Skip_Group();
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

int Reader::Effective_Code_Page() const
{
    if (m_state.codePage == Document_Code_Page)
        return m_documentCodePage;
    return m_state.codePage;
}

void Reader::Decode_Pending(QString &text)
{
    if (m_state.codePage == Symbol_Code_Page &&
        (m_state.destination == Destination::Body || m_state.destination == Destination::Old_List_Before)) {
        const QString name = Font_Name();
        for (const char byte : std::as_const(m_pending))
            text += QChar(Symbol_Glyph(static_cast<unsigned char>(byte), name));
    } else if (Is_Ascii(m_pending)) {
        text += QLatin1StringView(m_pending);
    } else if (m_state.plainAnsi && Is_Double_Byte(m_documentCodePage)) {
        m_codePages.Append_Mixed(text, m_pending, m_documentCodePage);
    } else {
        m_codePages.Append(text, m_pending, Effective_Code_Page());
    }
}

void Reader::Emit(QStringView text)
{
    switch (m_state.destination) {
    case Destination::Body:
        return Emit_Body(text);
    case Destination::Font_Table:
        return Emit_Font_Name(text);
    case Destination::Color_Table:
        return Emit_Colors(text);
    case Destination::Style_Sheet:
        if (m_style.name.size() < longestStyleName)
            m_style.name += text;
        return;
    case Destination::Level_Text:
        if (List_Level *level = Open_Level())
            level->text += text;
        return;
    case Destination::Field_Instruction:
        if (m_state.field >= 0)
            m_fields[static_cast<std::size_t>(m_state.field)].instruction += text;
        return;
    case Destination::Page_Text:
        m_model.pageTexts[m_pageText] += Page_Text(text, Is_Hidden());
        return;
    case Destination::Bookmark:
        m_anchors.last() += text;
        return;
    case Destination::Info_Text:
        m_model.info[m_info] += text;
        return;
    case Destination::Old_List_Before:
        m_oldList.before += text;
        return;
    case Destination::Old_List_After:
        m_oldList.after += text;
        return;
    default:
        return;
    }
}

void Reader::Emit_Font_Name(QStringView text)
{
    if (m_model.fonts.empty())
        return;
    const qsizetype end = text.indexOf(u';');
    QString &name = m_model.fonts.back().name;
    name += end < 0 ? text : text.first(end);
    if (end >= 0) // pieces of the name may begin or end with blanks of its own
        name = name.trimmed();
}

void Reader::Emit_Colors(QStringView text)
{
    for (const QChar c : text) {
        if (c == u';')
            m_model.colors.push_back(std::exchange(m_color, 0));
    }
}

void Reader::Emit_Unit(char16_t unit)
{
    const QChar c(unit);
    Emit(QStringView(&c, 1));
}

void Reader::Emit_Body(QStringView text)
{
    while (m_noteBegins && !text.isEmpty() && text.front().isSpace())
        text = text.sliced(1);
    if (text.isEmpty())
        return;
    m_noteBegins = false;
    Open_Run();
    const bool plain = !m_highSurrogate && std::none_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() < 0x20 || c.unicode() >= 0xD800 || c.unicode() == 0x2029;
    });
    if (plain) {
        m_model.text.append(text);
        return;
    }
    for (const QChar c : text)
        Append_Body(c.unicode());
}

void Reader::Append_Body(char16_t unit)
{
    QString &text = m_model.text;
    if (const char16_t high = std::exchange(m_highSurrogate, u'\0')) {
        text += QChar(QChar::isLowSurrogate(unit) ? high : u'\uFFFD');
        if (QChar::isLowSurrogate(unit)) {
            text += QChar(unit);
            return;
        }
    }
    if (unit < 0x20) {
        if (unit == u'\t' || (unit == u'\n' && m_runStyle.flags & Out_Of_Sight))
            text += QChar(unit);
    } else if (QChar::isHighSurrogate(unit)) {
        m_highSurrogate = unit;
    } else if (unit == 0x2029) {
        text += QChar(0x2028);
    } else { // QTextDocument gives U+FFFC, U+FDD0 and U+FDD1 a meaning of their own
        const bool unusable = QChar::isLowSurrogate(unit) || unit == 0xFFFC || unit == 0xFDD0 || unit == 0xFDD1;
        text += QChar(unusable ? u'\uFFFD' : unit);
    }
}

/// The first text behind a bookmark is its place.
Char_Style Reader::Anchored(Char_Style style)
{
    if (m_anchors.isEmpty())
        return style;
    style.anchor = static_cast<int>(m_model.anchors.size());
    m_model.anchors.push_back(std::exchange(m_anchors, {}));
    return style;
}

void Reader::Open_Run()
{
    Char_Style style = Effective_Style();
    if (m_runOpen && m_anchors.isEmpty()) {
        style.anchor = m_runStyle.anchor; // it is the whole run's
        if (m_runStyle == style)
            return;
        style.anchor = -1;
    }
    Close_Run();
    m_runOpen = true;
    m_runStyle = Anchored(style);
    m_runBegin = m_model.text.size();
}

void Reader::Close_Run()
{
    if (!m_runOpen)
        return;
    m_runOpen = false;
    if (std::exchange(m_highSurrogate, u'\0'))
        m_model.text += u'\uFFFD';
    const qsizetype length = m_model.text.size() - m_runBegin;
    if (length > 0)
        m_runs.push_back({.begin = m_runBegin, .length = length, .style = Interned(m_runStyle)});
}

bool Reader::Has_Pending() const
{
    return (m_runOpen && m_model.text.size() > m_runBegin) || !m_runs.empty();
}

int Reader::Nesting() const
{
    const int own = m_state.inTable ? std::max(1, m_state.para.nesting) : m_state.para.nesting;
    return m_state.nestingAround + own;
}

void Reader::End_Paragraph(int nesting)
{
    Close_Run();
    Para_Style style = m_state.para;
    style.nesting = nesting;
    m_sectionBreak = false;
    if (nesting == 0)
        style.pageBreakBefore |= std::exchange(m_pageBreak, false);
    const int index = static_cast<int>(m_model.paragraphs.size());
    m_model.paragraphs.push_back({.firstRun = static_cast<int>(m_model.runs.size()),
                                  .runCount = static_cast<int>(m_runs.size()),
                                  .style = Interned(style),
                                  .markStyle = Interned(Anchored(Effective_Style()))});
    m_model.runs.insert(m_model.runs.end(), m_runs.begin(), m_runs.end());
    m_runs.clear();
    const bool beginsTable = nesting > 0 && !m_tables.Is_Open();
    m_tables.Add_Paragraph(index, nesting);
    if (beginsTable && std::exchange(m_pageBreak, false))
        m_tables.Begin_Page();
}

int Reader::Interned(const Char_Style &style)
{
    if (!m_model.charStyles.empty() && m_model.charStyles.back() == style)
        return static_cast<int>(m_model.charStyles.size()) - 1;
    const auto known = m_charStyles.constFind(style);
    if (known != m_charStyles.constEnd())
        return *known;
    const int index = static_cast<int>(m_model.charStyles.size());
    m_model.charStyles.push_back(style);
    m_charStyles.insert(style, index);
    return index;
}

int Reader::Interned(Para_Style style)
{
    if (m_paraStyle >= 0 && m_model.paraStyles[static_cast<std::size_t>(m_paraStyle)] == style)
        return m_paraStyle;
    const size_t key =
        qHashMulti(qHashRange(style.tabs.begin(), style.tabs.end()), style.left, style.right, style.first, style.before,
                   style.after, style.line, style.back, style.list, style.level, style.oldList, style.outline,
                   style.nesting, static_cast<int>(style.align), style.pageBreakBefore);
    QList<int> &same = m_paraStyles[key];
    for (const int index : std::as_const(same)) {
        if (m_model.paraStyles[static_cast<std::size_t>(index)] == style)
            return m_paraStyle = index;
    }
    m_tabCount += style.tabs.size();
    if (m_tabCount > mostTabsOfStyles)
        style.tabs.clear();
    m_paraStyle = static_cast<int>(m_model.paraStyles.size());
    m_model.paraStyles.push_back(std::move(style));
    if (same.size() < 16) // what differs in the rest only is not worth a longer search
        same.append(m_paraStyle);
    return m_paraStyle;
}

void Reader::End_Picture()
{
    const bool shown = m_state.destination == Destination::Body || m_state.destination == Destination::Nothing;
    Picture picture = Finish_Picture(std::exchange(m_picture, {}));
    if (!shown || (picture.bytes.isEmpty() && picture.width == 0))
        return;
    Close_Run();
    m_runs.push_back({.begin = m_model.text.size(),
                      .length = 0,
                      .style = Interned(Effective_Style()),
                      .picture = static_cast<int>(m_model.pictures.size())});
    m_model.pictures.push_back(std::move(picture));
    m_shapePictureTaken = true;
}
} // namespace Rtf
