// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_state.h"

namespace Rtf
{
/// What is said of the row of a table that is read and of its cells, and the borders of rows, cells and paragraphs.
class Row_Reader : public Reader_Part
{
public:
    using Reader_Part::Reader_Part;
    enum class Border_Owner : quint8 { Nothing, Paragraph, Cell, Row };

    [[nodiscard]] const Row_Definition &Row() const { return m_row; }
    /// Puts the row aside for those of a table or text box in it, and takes it up again.
    void Begin_Inner();
    void End_Inner();

    void Begin_Row();
    void Cell_Edge();
    void Nested_Properties();
    template <auto Field>
    void Cell_Flag()
    {
        m_cell.*Field = true;
    }
    template <auto Field>
    void Cell_Number()
    {
        m_cell.*Field = m_parameter.Length();
    }
    void Cell_Vertical(int place) { m_cell.vertical = static_cast<quint8>(place); }
    void Cell_Padding(int side) { m_cell.padding[static_cast<std::size_t>(side)] = std::max(0, m_parameter.Length()); }
    void Cell_Width_Kind() { m_cell.widthKind = Width_Kind_Said(); }
    template <auto Field>
    void Row_Number()
    {
        m_row.*Field = m_parameter.Length();
    }
    void Row_Width_Kind() { m_row.widthKind = Width_Kind_Said(); }
    void Row_Header() { m_row.header = true; }
    void Row_Align(int align) { m_row.align = static_cast<Align>(align); }

    /// @param target  the owner in the higher byte, a bit for each side in the lower
    void Border_Of(int target);
    void Border_Line(int line);
    void Border_Width();
    void Border_Space();
    void Border_Color();

private:
    [[nodiscard]] Width_Kind Width_Kind_Said() const
    {
        return static_cast<Width_Kind>(std::clamp(m_parameter.number, 0, 3));
    }
    template <typename Change>
    void Change_Borders(Change &&change);

    Row_Definition m_row;
    std::vector<Row_Definition> m_outer;
    Cell_Definition m_cell;
    Borders m_rowBorders{}; ///< what a cell has that says nothing of its own
    Border_Owner m_borderOwner = Border_Owner::Nothing;
    int m_borderSides = 0;     ///< a bit for each Side that the next words are about
    int m_cellBordersSaid = 0; ///< likewise, those that the cell has told of
};
} // namespace Rtf
