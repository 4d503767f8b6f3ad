// SPDX-License-Identifier: GPL-3.0-or-later
// Fonts with their code pages, and those of other scripts that go with them.
#include "platform/richtext/rtf_reader.h"

#include <algorithm>

namespace Rtf
{
void Reader::Document_Pages(int codePage)
{
    m_documentCodePage = codePage ? codePage : m_parameter;
}

void Reader::Default_Font(int)
{
    m_defaultFont = m_parameter;
}

void Reader::Begin_Fonts(int)
{
    if (m_state.destination == Destination::Body)
        m_state.closer = Closer::Fonts;
    m_state.destination = Destination::Font_Table;
}

void Reader::Select_Font(int)
{
    if (m_state.destination == Destination::Font_Table) {
        m_fontOfNumber.insert(m_parameter, static_cast<int>(m_model.fonts.size()));
        m_model.fonts.push_back({});
        m_state.codePage = Document_Code_Page;
        return;
    }
    m_state.chr.font = m_fontOfNumber.value(m_parameter, -1);
    if (Associated *associated = Current_Associated())
        associated->font = -1;
    Font_Changed();
}

Reader::Associated *Reader::Current_Associated()
{
    return m_state.script == Script_Kind::East_Asian      ? &m_state.eastAsian
           : m_state.script == Script_Kind::Right_To_Left ? &m_state.rightToLeft
                                                          : nullptr;
}

/// The style that text has here: the run's own, overlaid by what is associated with its script.
Char_Style Reader::Effective_Style() const
{
    Char_Style style = m_state.chr;
    style.flags |= m_state.flagsAround;
    if (m_state.script == Script_Kind::Western)
        return style;
    const Associated &own = m_state.script == Script_Kind::East_Asian ? m_state.eastAsian : m_state.rightToLeft;
    if (own.font >= 0)
        style.font = own.font;
    if (own.halfPoints > 0)
        style.halfPoints = own.halfPoints;
    style.flags |= own.flags;
    return style;
}

void Reader::Font_Changed()
{
    const int font = Effective_Style().font;
    const bool known = font >= 0;
    const auto index = static_cast<std::size_t>(font);
    m_state.codePage = known ? m_model.fonts[index].codePage : Document_Code_Page;
    m_state.plainAnsi = known && m_model.fonts[index].plainAnsi;
}

QString Reader::Font_Name() const
{
    const int font = Effective_Style().font;
    return font >= 0 ? m_model.fonts[static_cast<std::size_t>(font)].name : QString();
}

void Reader::Select_Script(int script)
{
    m_state.script = static_cast<Script_Kind>(script);
    if (m_state.destination != Destination::Font_Table)
        Font_Changed();
}

void Reader::Associated_Font(int)
{
    Associated *associated = Current_Associated();
    if (!associated || m_state.destination == Destination::Font_Table)
        return;
    associated->font = m_fontOfNumber.value(m_parameter, -1);
    Font_Changed();
}

void Reader::Associated_Size(int)
{
    if (Associated *associated = Current_Associated(); associated && m_parameter > 0)
        associated->halfPoints = std::min(m_parameter, 3276);
}

void Reader::Associated_Flag(int flag)
{
    Associated *associated = Current_Associated();
    if (!associated)
        return;
    const bool on = !m_hasParameter || m_parameter != 0;
    associated->flags = static_cast<quint16>(on ? associated->flags | flag : associated->flags & ~flag);
}

void Reader::Font_Charset(int)
{
    if (m_state.destination != Destination::Font_Table || m_model.fonts.empty())
        return;
    Font &font = m_model.fonts.back();
    font.codePage = Code_Page_Of_Charset(m_parameter);
    font.plainAnsi = m_parameter == 0;
    m_state.codePage = font.codePage == Symbol_Code_Page ? 1252 : font.codePage;
    m_state.plainAnsi = font.plainAnsi;
}

void Reader::Font_Code_Page(int)
{
    if (m_state.destination != Destination::Font_Table || m_model.fonts.empty())
        return;
    m_model.fonts.back().codePage = m_parameter;
    m_state.codePage = m_parameter;
}
} // namespace Rtf
