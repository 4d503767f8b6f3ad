// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_rows.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr std::size_t mostCells = 512; // of one row; word processors stop at 63
}

void Row_Reader::Begin_Inner()
{
    m_outer.push_back(std::exchange(m_row, {}));
}

void Row_Reader::End_Inner()
{
    m_row = std::move(m_outer.back());
    m_outer.pop_back();
}

void Row_Reader::Begin_Row()
{
    m_row = {};
    m_cell = {};
    m_cellBordersSaid = 0;
    m_rowBorders = {};
    m_borderOwner = Border_Owner::Nothing;
}

void Row_Reader::Cell_Edge()
{
    m_cell.right = m_parameter.Length();
    for (std::size_t side = 0; side < m_rowBorders.size(); ++side) {
        if ((m_cellBordersSaid >> side & 1) == 0)
            m_cell.borders[side] = m_rowBorders[side];
    }
    if (m_row.cells.size() < mostCells)
        m_row.cells.push_back(m_cell);
    m_cell = {};
    m_cellBordersSaid = 0;
    m_borderOwner = Border_Owner::Nothing;
}

void Row_Reader::Nested_Properties()
{
    if (m_state.closer != Closer::None)
        return;
    Begin_Inner();
    m_state.closer = Closer::Nested_Row;
}

void Row_Reader::Border_Of(int target)
{
    m_borderOwner = static_cast<Border_Owner>(target >> 8);
    m_borderSides = target & 0xFF;
    if (m_borderOwner == Border_Owner::Cell)
        m_cellBordersSaid |= m_borderSides;
}

template <typename Change>
void Row_Reader::Change_Borders(Change &&change)
{
    if (m_borderOwner == Border_Owner::Nothing)
        return;
    Borders &borders = m_borderOwner == Border_Owner::Paragraph ? m_state.para.borders
                       : m_borderOwner == Border_Owner::Cell    ? m_cell.borders
                                                                : m_rowBorders;
    for (std::size_t side = 0; side < borders.size(); ++side) {
        if (m_borderSides >> side & 1)
            change(borders[side]);
    }
}

void Row_Reader::Border_Line(int line)
{
    Change_Borders([&](Border &border) { border.line = static_cast<Line>(line); });
}

void Row_Reader::Border_Width()
{
    Change_Borders([&](Border &border) { border.width = static_cast<quint8>(std::clamp(m_parameter.number, 0, 255)); });
}

void Row_Reader::Border_Space()
{
    Change_Borders([&](Border &border) { border.space = static_cast<qint16>(std::clamp(m_parameter.number, 0, 620)); });
}

void Row_Reader::Border_Color()
{
    Change_Borders([&](Border &border) { border.color = m_parameter.number; });
}
} // namespace Rtf
