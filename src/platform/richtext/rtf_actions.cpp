// SPDX-License-Identifier: GPL-3.0-or-later
// Actions of control words on the flow: characters, the ends of paragraphs, cells and rows, pictures, text boxes.
#include "platform/richtext/rtf_reader.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
/// Its text and pictures are shown, the shape is not.
void Reader::Drawing()
{
    m_model.losses |= Rich_Text::Drawings;
    m_state.destination = Destination::Nothing;
}

/// The result of an object is shown.
void Reader::Object_Data()
{
    m_model.losses |= Rich_Text::Objects;
    Skip();
}

/// The label is made anew. A group that ends a paragraph is none: some writers put the item's text there.
void Reader::Skip_Label()
{
    if (!m_tokens.Group_Has("par"))
        Skip();
}

void Reader::Unicode()
{
    m_toSkip = m_state.unicodeSkip;
    const int code = m_reading.parameter.number < 0 ? m_reading.parameter.number + 0x10000 : m_reading.parameter.number;
    if (code > 0x10FFFF || code < 0)
        return Emit_Unit(u'\uFFFD');
    if (code > 0xFFFF) {
        Emit_Unit(QChar::highSurrogate(static_cast<char32_t>(code)));
        return Emit_Unit(QChar::lowSurrogate(static_cast<char32_t>(code)));
    }
    const bool glyph = m_state.codePage == Symbol_Code_Page && code >= 0xF020 && code <= 0xF0FF;
    if (!glyph || m_state.destination != Destination::Body)
        return Emit_Unit(static_cast<char16_t>(code));
    Emit_Unit(Symbol_Glyph(static_cast<unsigned char>(code & 0xFF), m_looks.Font_Name()));
}

void Reader::Unicode_Skip()
{
    m_state.unicodeSkip = std::clamp(m_reading.parameter.number, 0, 64);
}

void Reader::Alternative()
{
    m_state.outside = m_state.destination;
    m_state.destination = Destination::Alternative;
}

void Reader::Alternative_Unicode()
{
    m_state.destination = m_state.outside;
}

void Reader::Style_Number(int isCharacter)
{
    if (m_state.destination == Destination::Style_Sheet)
        return m_styles.Begin_Style(isCharacter != 0);
    if (m_state.destination != Destination::Body)
        return;
    m_styles.For_Words_Of(m_reading.parameter.number, isCharacter != 0, [this](const Style_Sheet::Style_Word &word) {
        m_reading.parameter = word.parameter;
        Run(*word.row);
    });
}

void Reader::Begin_Bookmark()
{
    if (m_state.destination != Destination::Body)
        return Skip();
    m_state.destination = Destination::Bookmark;
    m_paragraph.Begin_Bookmark();
}

void Reader::Paragraph_Mark()
{
    if (m_state.destination == Destination::Page_Text)
        return Emit_Unit(u'\n');
    if (m_state.destination != Destination::Body)
        return;
    if (m_notes.Is_In_Note())
        return Emit_Unit(u' ');
    if (m_state.Is_Hidden()) // the paragraph goes on in what follows
        return Emit_Unit(u'\n');
    End_Paragraph(Nesting());
}

void Reader::End_Paragraph_Before_Break()
{
    if (m_paragraph.Has_Content() && !m_notes.Is_In_Note())
        End_Paragraph(Nesting());
}

void Reader::Page_Break()
{
    if (m_state.destination != Destination::Body)
        return;
    End_Paragraph_Before_Break();
    m_pageBreak = true;
}

void Reader::Section()
{
    if (m_state.destination != Destination::Body)
        return;
    End_Paragraph_Before_Break();
    m_pageBreak = m_sectionBreak = !m_model.paragraphs.empty();
    if (m_sectionBreak)
        m_model.losses |= Rich_Text::Section_Pages;
}

/// The section that has begun goes on where the last one ended.
void Reader::Same_Page()
{
    if (std::exchange(m_sectionBreak, false))
        m_pageBreak = false;
}

void Reader::Cell_Mark(int isNested)
{
    if (m_state.destination == Destination::Page_Text)
        return Emit_Unit(u'\t');
    if (m_state.destination != Destination::Body)
        return;
    const int nesting = m_state.nestingAround + (isNested ? std::max(2, m_state.para.nesting) : 1);
    End_Paragraph(nesting);
    m_tables.End_Cell(nesting);
}

void Reader::Row_Mark(int isNested)
{
    if (m_state.destination == Destination::Page_Text)
        m_page.End_Row();
    if (m_state.destination != Destination::Body)
        return;
    const int nesting = m_state.nestingAround + (isNested ? std::max(2, m_state.para.nesting) : 1);
    if (m_paragraph.Has_Content())
        End_Paragraph(nesting);
    m_tables.End_Row(nesting, m_rows.Row());
}

/// The paragraphs of a text box stand before the one that it belongs to, in the same cell.
void Reader::Text_Box()
{
    m_state.destination = Destination::Body;
    if (m_state.closer != Closer::None)
        return;
    m_paragraph.Begin_Inner();
    m_state.closer = Closer::Text_Box;
    m_state.Hide_With_Text();
    m_state.nestingAround = Nesting();
    m_state.para.nesting = 0;
    m_state.inTable = false;
    m_rows.Begin_Inner();
}

void Reader::Begin_Picture()
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
} // namespace Rtf
