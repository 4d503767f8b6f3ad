// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_state.h"

#include <array>

namespace Rtf
{
/// Footnotes, endnotes and comments, which are read where they stand.
class Note_Reader : public Reader_Part
{
public:
    Note_Reader(Reading &reading, Text_Flow &flow) : Reader_Part(reading), m_flow(flow) {}

    void Begin_Note(int kind);
    /// @param inner  the state of the note's group
    void End_Note(const State &inner);
    void End_Notes();
    void Note_Source(int field);
    void Add_Origin(QStringView text) { m_origin[m_field] += text; }

    [[nodiscard]] bool Is_In_Note() const { return m_depth > 0; }
    /// Blanks before a note's text are no part of it.
    void Leave_Out_First_Blanks(QStringView &text);

private:
    void Emit_Bracket(QStringView bracket);

    Text_Flow &m_flow;
    int m_depth = 0;
    bool m_begins = false;
    std::array<QString, 3> m_origin; ///< of the comment that is to come, or is read
    std::size_t m_field = 0;
};
} // namespace Rtf
