// SPDX-License-Identifier: GPL-3.0-or-later
// Actions of control words on text: characters, paragraphs, pictures, text boxes.
#include "platform/richtext/rtf_reader.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr int longestLength = 31'680; // twips: 22 inches, the widest page of word processors
constexpr qsizetype mostTabs = 64;
} // namespace

int Reader::Length() const
{
    return std::clamp(m_parameter, -longestLength, longestLength);
}

void Reader::Ignore(int) {}

void Reader::To_Destination(int destination)
{
    m_state.destination = static_cast<Destination>(destination);
}

void Reader::Skip_Group(int)
{
    Skip();
}

/// Its text and pictures are shown, the shape is not.
void Reader::Drawing(int)
{
    m_model.losses |= Rich_Text::Drawings;
    m_state.destination = Destination::Nothing;
}

/// The result of an object is shown.
void Reader::Object_Data(int)
{
    m_model.losses |= Rich_Text::Objects;
    Skip();
}

/// The label is made anew. A group that ends a paragraph is none: some writers put the item's text there.
void Reader::Skip_Label(int)
{
    if (!m_tokens.Group_Has("par"))
        Skip();
}

void Reader::Character(int unit)
{
    Emit_Unit(static_cast<char16_t>(unit));
}

void Reader::Unicode(int)
{
    m_toSkip = m_state.unicodeSkip;
    const int code = m_parameter < 0 ? m_parameter + 0x10000 : m_parameter;
    if (code > 0x10FFFF || code < 0)
        return Emit_Unit(u'\uFFFD');
    if (code > 0xFFFF) {
        Emit_Unit(QChar::highSurrogate(static_cast<char32_t>(code)));
        return Emit_Unit(QChar::lowSurrogate(static_cast<char32_t>(code)));
    }
    const bool glyph = m_state.codePage == Symbol_Code_Page && code >= 0xF020 && code <= 0xF0FF;
    if (!glyph || m_state.destination != Destination::Body)
        return Emit_Unit(static_cast<char16_t>(code));
    Emit_Unit(Symbol_Glyph(static_cast<unsigned char>(code & 0xFF), Font_Name()));
}

void Reader::Unicode_Skip(int)
{
    m_state.unicodeSkip = std::clamp(m_parameter, 0, 64);
}

/// What belongs to hidden text is hidden too, whatever its own words say.
void Reader::Hide_With_Text()
{
    m_state.flagsAround = static_cast<quint16>((m_state.flagsAround | m_state.chr.flags) & Out_Of_Sight);
}

void Reader::Alternative(int)
{
    m_state.outside = m_state.destination;
    m_state.destination = Destination::Alternative;
}

void Reader::Alternative_Unicode(int)
{
    m_state.destination = m_state.outside;
}

void Reader::Color_Part(int shift)
{
    const auto part = static_cast<QRgb>(std::clamp(m_parameter, 0, 255)) << shift;
    m_color = (m_color & ~(0xFFU << shift)) | part | 0xFF000000U;
}

void Reader::Plain(int)
{
    m_state.chr = {.link = m_state.chr.link, .note = m_state.chr.note};
    m_state.eastAsian = {};
    m_state.rightToLeft = {};
    m_state.script = Script_Kind::Western;
    m_parameter = m_defaultFont;
    if (m_state.destination != Destination::Font_Table)
        Select_Font(0);
}

void Reader::Flag(int flag)
{
    const auto bit = static_cast<quint16>(flag);
    const bool on = !m_hasParameter || m_parameter != 0;
    m_state.chr.flags = static_cast<quint16>(on ? m_state.chr.flags | bit : m_state.chr.flags & ~bit);
}

void Reader::Set_Underline(int kind)
{
    const bool on = !m_hasParameter || m_parameter != 0;
    m_state.chr.underline = on ? static_cast<Underline>(kind) : Underline::None;
}

void Reader::Set_Script(int script)
{
    const bool on = !m_hasParameter || m_parameter != 0;
    m_state.chr.script = on ? static_cast<Script>(script) : Script::Normal;
}

void Reader::Font_Size(int)
{
    if (m_parameter > 0)
        m_state.chr.halfPoints = std::clamp(m_parameter, 2, 3276); // up to 1638 points
    if (Associated *associated = Current_Associated())
        associated->halfPoints = 0;
}

void Reader::Char_Spacing(int)
{
    m_state.chr.spacing = Length();
}

void Reader::Char_Stretch(int)
{
    m_state.chr.stretchPercent = std::clamp(m_parameter, 1, 600);
}

void Reader::Para_Back(int)
{
    m_state.para.back = m_parameter;
}

void Reader::Outline(int)
{
    m_state.para.outline = m_parameter >= 0 && m_parameter < 6 ? m_parameter : -1;
}

void Reader::In_Table(int)
{
    m_state.inTable = true;
}

void Reader::Pard(int)
{
    m_state.para = {};
    m_state.inTable = false;
}

void Reader::Set_Align(int align)
{
    m_state.para.align = static_cast<Align>(align);
}

void Reader::Set_Direction(int direction)
{
    m_state.para.direction = static_cast<Direction>(direction);
}

void Reader::Line_Height(int multiple)
{
    if (multiple)
        m_state.para.lineMultiple = m_parameter != 0;
    else
        m_state.para.line = Length();
}

void Reader::Tab_Next(int kind)
{
    m_tab.kind = static_cast<Tab_Kind>(kind);
}

void Reader::Tab_Leader(int leader)
{
    m_tab.leader = static_cast<quint8>(leader);
}

void Reader::Tab_Stop_At(int)
{
    Tab_Stop tab = std::exchange(m_tab, {});
    tab.position = Length();
    QList<Tab_Stop> &tabs = m_state.para.tabs;
    const auto place = std::lower_bound(tabs.begin(), tabs.end(), tab.position,
                                        [](const Tab_Stop &one, int position) { return one.position < position; });
    if (place != tabs.end() && place->position == tab.position)
        *place = tab;
    else if (tabs.size() < mostTabs)
        tabs.insert(place, tab);
}

void Reader::Paragraph_Mark(int)
{
    if (m_state.destination == Destination::Page_Text)
        return Emit_Unit(u'\n');
    if (m_state.destination != Destination::Body)
        return;
    if (m_noteDepth > 0)
        return Emit_Unit(u' ');
    if (Is_Hidden()) // the paragraph goes on in what follows
        return Emit_Unit(u'\n');
    End_Paragraph(Nesting());
}

void Reader::Page_Break(int)
{
    if (m_state.destination != Destination::Body)
        return;
    if (m_paragraph.Has_Content() && m_noteDepth == 0)
        End_Paragraph(Nesting());
    m_pageBreak = true;
}

void Reader::Section(int)
{
    if (m_state.destination != Destination::Body)
        return;
    if (m_paragraph.Has_Content() && m_noteDepth == 0)
        End_Paragraph(Nesting());
    m_pageBreak = m_sectionBreak = !m_model.paragraphs.empty();
    if (m_sectionBreak)
        m_model.losses |= Rich_Text::Section_Pages;
}

/// The section that has begun goes on where the last one ended.
void Reader::Same_Page(int)
{
    if (std::exchange(m_sectionBreak, false))
        m_pageBreak = false;
}

void Reader::Nest(int)
{
    m_state.para.nesting = std::clamp(m_parameter, 0, 64);
}

void Reader::Begin_Picture(int)
{
    m_picture = {};
    if (m_state.destination == Destination::Page_Text)
        m_model.losses |= Rich_Text::Header_Pictures;
    m_state.destination = Destination::Picture;
    m_state.closer = Closer::Picture;
}

void Reader::Picture_Format(int kind)
{
    if (m_state.destination == Destination::Picture)
        m_picture.kind = static_cast<Picture_Kind>(kind);
}

void Reader::Shape_Picture(int isFallback)
{
    if (!isFallback)
        m_shapePictureTaken = false;
    else if (std::exchange(m_shapePictureTaken, false))
        Skip();
}

/// The paragraphs of a text box stand before the one that it belongs to, in the same cell.
void Reader::Text_Box(int)
{
    m_state.destination = Destination::Body;
    if (m_state.closer != Closer::None)
        return;
    m_paragraph.Begin_Inner();
    m_state.closer = Closer::Text_Box;
    Hide_With_Text();
    m_state.nestingAround = Nesting();
    m_state.para.nesting = 0;
    m_state.inTable = false;
    m_outerRows.push_back(std::exchange(m_row, {}));
}
} // namespace Rtf
