// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_state.h"

namespace Rtf
{
/// The looks of paragraphs and their tab stops.
class Paragraph_Words : public Reader_Part
{
public:
    using Reader_Part::Reader_Part;

    void Pard();
    void In_Table() { m_state.inTable = true; }
    void Nest() { m_state.para.nesting = std::clamp(m_parameter.number, 0, 64); }
    template <auto Field>
    void Length()
    {
        m_state.para.*Field = m_parameter.Length();
    }
    template <auto Field>
    void Flag()
    {
        m_state.para.*Field = m_parameter.Is_On();
    }
    void Back() { m_state.para.back = m_parameter.number; }
    void Outline();
    void Set_Align(int align) { m_state.para.align = static_cast<Align>(align); }
    void Set_Direction(int direction) { m_state.para.direction = static_cast<Direction>(direction); }
    void Line_Height() { m_state.para.line = m_parameter.Length(); }
    void Line_Multiple() { m_state.para.lineMultiple = m_parameter.number != 0; }
    void Tab_Next(int kind) { m_tab.kind = static_cast<Tab_Kind>(kind); }
    void Tab_Leader(int leader) { m_tab.leader = static_cast<quint8>(leader); }
    void Tab_Stop_At();

private:
    Tab_Stop m_tab; ///< what is said of the next one
};
} // namespace Rtf
