// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_state.h"

namespace Rtf
{
/// The looks of characters: the tables of fonts and colours, fonts with their code pages, and the properties of other
/// scripts that go with them.
class Look_Reader : public Reader_Part
{
public:
    using Reader_Part::Reader_Part;

    // the tables
    void Document_Pages(int codePage);
    void Default_Font() { m_defaultFont = m_parameter.number; }
    void Begin_Fonts();
    void End_Fonts() { Select(m_defaultFont); }
    void Font_Charset();
    void Font_Code_Page();
    void Add_Font_Name(QStringView text);
    void Color_Part(int shift);
    void Add_Colors(QStringView text);

    // the look of what follows
    void Plain();
    void Select_Font() { Select(m_parameter.number); }
    void Select_Script(int script);
    void Associated_Font();
    void Associated_Size();
    void Associated_Flag(int flag);
    void Flag(int flag);
    void Set_Underline(int kind);
    void Set_Script(int script);
    void Font_Size();
    void Spacing() { m_state.chr.spacing = m_parameter.Length(); }
    void Stretch() { m_state.chr.stretchPercent = std::clamp(m_parameter.number, 1, 600); }
    template <auto Field>
    void Number()
    {
        m_state.chr.*Field = std::clamp(m_parameter.number, -1, 1 << 20);
    }

    /// The style that text has here: the run's own, overlaid by what is associated with its script.
    [[nodiscard]] Char_Style Effective() const;
    [[nodiscard]] QString Font_Name() const;
    /// Of the document, and of the text here.
    [[nodiscard]] int Document_Page() const { return m_documentCodePage; }
    [[nodiscard]] int Page() const
    {
        return m_state.codePage == Document_Code_Page ? m_documentCodePage : m_state.codePage;
    }

private:
    void Select(int number);
    void Font_Changed();
    Associated *Current_Associated();

    int m_documentCodePage = 1252;
    int m_defaultFont = -1;
    QHash<int, int> m_fontOfNumber;
    QRgb m_color = 0;
};
} // namespace Rtf
