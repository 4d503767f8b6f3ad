// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_note_reader.h"

#include "platform/richtext/rtf_notes.h"

#include <utility>

namespace Rtf
{
/// The brackets are no part of the raised sign that leads to a note.
void Note_Reader::Emit_Bracket(QStringView bracket)
{
    const Script script = std::exchange(m_state.chr.script, Script::Normal);
    m_flow.Emit(bracket);
    m_state.chr.script = script;
}

/// What is in hidden text or in another note is text.
void Note_Reader::Begin_Note(int kind)
{
    if (kind == static_cast<int>(Note_Kind::Comment) && m_state.destination != Destination::Body)
        return m_flow.Skip();
    if (m_depth == 0 && m_state.destination == Destination::Body && !m_state.Is_Hidden()) {
        m_state.chr.note = static_cast<int>(m_model.notes.size());
        m_model.notes.push_back({.kind = static_cast<Note_Kind>(kind), .origin = {}});
    }
    Emit_Bracket(Note_Opening);
    m_state.Hide_With_Text();
    m_state.closer = Closer::Note;
    ++m_depth;
    m_begins = true;
}

void Note_Reader::End_Note(const State &inner)
{
    --m_depth;
    m_begins = false;
    if (inner.chr.note >= 0 && inner.chr.note != m_state.chr.note)
        m_model.notes[static_cast<std::size_t>(inner.chr.note)].origin = std::exchange(m_origin, {});
    const quint16 around = std::exchange(m_state.flagsAround, inner.flagsAround);
    Emit_Bracket(u"]");
    m_state.flagsAround = around;
}

void Note_Reader::End_Notes()
{
    if (m_state.chr.note >= 0)
        m_model.notes[static_cast<std::size_t>(m_state.chr.note)].kind = Note_Kind::Endnote;
}

void Note_Reader::Note_Source(int field)
{
    m_field = static_cast<std::size_t>(field);
    m_origin[m_field].clear();
    m_state.destination = Destination::Note_Origin;
}

void Note_Reader::Leave_Out_First_Blanks(QStringView &text)
{
    while (m_begins && !text.isEmpty() && text.front().isSpace())
        text = text.sliced(1);
    if (!text.isEmpty())
        m_begins = false;
}
} // namespace Rtf
