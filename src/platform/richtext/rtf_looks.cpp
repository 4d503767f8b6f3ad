// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_looks.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
void Look_Reader::Document_Pages(int codePage)
{
    m_documentCodePage = codePage ? codePage : m_parameter.number;
}

void Look_Reader::Begin_Fonts()
{
    if (m_state.destination == Destination::Body)
        m_state.closer = Closer::Fonts;
    m_state.destination = Destination::Font_Table;
}

void Look_Reader::Font_Charset()
{
    if (m_state.destination != Destination::Font_Table || m_model.fonts.empty())
        return;
    Font &font = m_model.fonts.back();
    font.codePage = Code_Page_Of_Charset(m_parameter.number);
    font.plainAnsi = m_parameter.number == 0;
    m_state.codePage = font.codePage == Symbol_Code_Page ? 1252 : font.codePage;
    m_state.plainAnsi = font.plainAnsi;
}

void Look_Reader::Font_Code_Page()
{
    if (m_state.destination != Destination::Font_Table || m_model.fonts.empty())
        return;
    m_model.fonts.back().codePage = m_parameter.number;
    m_state.codePage = m_parameter.number;
}

void Look_Reader::Add_Font_Name(QStringView text)
{
    if (m_model.fonts.empty())
        return;
    const qsizetype end = text.indexOf(u';');
    QString &name = m_model.fonts.back().name;
    name += end < 0 ? text : text.first(end);
    if (end >= 0) // pieces of the name may begin or end with blanks of its own
        name = name.trimmed();
}

void Look_Reader::Color_Part(int shift)
{
    const auto part = static_cast<QRgb>(std::clamp(m_parameter.number, 0, 255)) << shift;
    m_color = (m_color & ~(0xFFU << shift)) | part | 0xFF000000U;
}

void Look_Reader::Add_Colors(QStringView text)
{
    for (const QChar c : text) {
        if (c == u';')
            m_model.colors.push_back(std::exchange(m_color, 0));
    }
}

void Look_Reader::Plain()
{
    m_state.chr = {.link = m_state.chr.link, .note = m_state.chr.note};
    m_state.eastAsian = {};
    m_state.rightToLeft = {};
    m_state.script = Script_Kind::Western;
    if (m_state.destination != Destination::Font_Table)
        Select(m_defaultFont);
}

void Look_Reader::Select(int number)
{
    if (m_state.destination == Destination::Font_Table) {
        m_fontOfNumber.insert(number, static_cast<int>(m_model.fonts.size()));
        m_model.fonts.push_back({});
        m_state.codePage = Document_Code_Page;
        return;
    }
    m_state.chr.font = m_fontOfNumber.value(number, -1);
    if (Associated *associated = Current_Associated())
        associated->font = -1;
    Font_Changed();
}

Associated *Look_Reader::Current_Associated()
{
    return m_state.script == Script_Kind::East_Asian      ? &m_state.eastAsian
           : m_state.script == Script_Kind::Right_To_Left ? &m_state.rightToLeft
                                                          : nullptr;
}

Char_Style Look_Reader::Effective() const
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

void Look_Reader::Font_Changed()
{
    const int font = Effective().font;
    const bool known = font >= 0;
    const auto index = static_cast<std::size_t>(font);
    m_state.codePage = known ? m_model.fonts[index].codePage : Document_Code_Page;
    m_state.plainAnsi = known && m_model.fonts[index].plainAnsi;
}

QString Look_Reader::Font_Name() const
{
    const int font = Effective().font;
    return font >= 0 ? m_model.fonts[static_cast<std::size_t>(font)].name : QString();
}

void Look_Reader::Select_Script(int script)
{
    m_state.script = static_cast<Script_Kind>(script);
    if (m_state.destination != Destination::Font_Table)
        Font_Changed();
}

void Look_Reader::Associated_Font()
{
    Associated *associated = Current_Associated();
    if (!associated || m_state.destination == Destination::Font_Table)
        return;
    associated->font = m_fontOfNumber.value(m_parameter.number, -1);
    Font_Changed();
}

void Look_Reader::Associated_Size()
{
    if (Associated *associated = Current_Associated(); associated && m_parameter.number > 0)
        associated->halfPoints = std::min(m_parameter.number, 3276);
}

void Look_Reader::Associated_Flag(int flag)
{
    if (Associated *associated = Current_Associated())
        associated->flags =
            static_cast<quint16>(m_parameter.Is_On() ? associated->flags | flag : associated->flags & ~flag);
}

void Look_Reader::Flag(int flag)
{
    const auto bit = static_cast<quint16>(flag);
    m_state.chr.flags = static_cast<quint16>(m_parameter.Is_On() ? m_state.chr.flags | bit : m_state.chr.flags & ~bit);
}

void Look_Reader::Set_Underline(int kind)
{
    m_state.chr.underline = m_parameter.Is_On() ? static_cast<Underline>(kind) : Underline::None;
}

void Look_Reader::Set_Script(int script)
{
    m_state.chr.script = m_parameter.Is_On() ? static_cast<Script>(script) : Script::Normal;
}

void Look_Reader::Font_Size()
{
    if (m_parameter.number > 0)
        m_state.chr.halfPoints = std::clamp(m_parameter.number, 2, 3276); // up to 1638 points
    if (Associated *associated = Current_Associated())
        associated->halfPoints = 0;
}
} // namespace Rtf
