// SPDX-License-Identifier: GPL-3.0-or-later
// Actions of control words on structure: lists, tables, borders.
#include "platform/richtext/rtf_reader.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr std::size_t mostLevels = 9;
constexpr std::size_t mostCells = 512; // of one row; word processors stop at 63
constexpr int thinLine = 10;           // twips: what a border without a width is drawn with
constexpr int widestLine = 255;
} // namespace

void Reader::Begin_List(int)
{
    m_model.lists.push_back({});
}

void Reader::Begin_Level(int)
{
    if (m_model.lists.empty() || m_model.lists.back().levels.size() == mostLevels)
        return;
    m_model.lists.back().levels.push_back({});
    m_state.para.left = Not_Set;
    m_state.para.first = Not_Set;
    m_state.closer = Closer::Level;
}

void Reader::End_Level(const State &inner)
{
    if (m_model.lists.empty() || m_model.lists.back().levels.empty())
        return;
    List_Level &level = m_model.lists.back().levels.back();
    level.left = inner.para.left;
    level.first = inner.para.first;
    level.text.truncate(64);
}

void Reader::Level_Kind(int)
{
    if (!m_model.lists.empty() && !m_model.lists.back().levels.empty())
        m_model.lists.back().levels.back().kind = m_parameter;
}

void Reader::List_Id(int)
{
    if (m_inOverride) {
        m_overrideId = m_parameter;
    } else if (!m_model.lists.empty()) {
        m_model.lists.back().id = m_parameter;
        m_listOfId.insert(m_parameter, static_cast<int>(m_model.lists.size()) - 1);
    }
}

void Reader::Begin_Override(int)
{
    m_inOverride = true;
    m_overrideId = 0;
    m_overrideNumber = 0;
    m_state.closer = Closer::Override;
}

void Reader::List_Number(int)
{
    if (m_inOverride)
        m_overrideNumber = m_parameter;
    else
        m_state.para.list = m_parameter;
}

void Reader::List_Depth(int)
{
    m_state.para.level = std::clamp(m_parameter, 0, 8);
}

void Reader::Begin_Old_List(int)
{
    m_oldList = {};
    m_oldListContinues = true;
    m_state.destination = Destination::Nothing;
    m_state.closer = Closer::Old_List;
}

void Reader::Old_List_Kind(int kind)
{
    m_oldList.kind = kind;
    m_oldListContinues = kind >= 0;
}

void Reader::End_Old_List()
{
    if (!m_oldListContinues) {
        m_state.para.oldList = -1;
        return;
    }
    std::vector<Old_List> &known = m_model.oldLists;
    if (known.empty() || !(known.back() == m_oldList))
        known.push_back(m_oldList);
    m_state.para.oldList = static_cast<int>(known.size()) - 1;
}

void Reader::Row_Begin(int)
{
    m_row = {};
    m_cell = {};
    m_rowBorder = {};
    m_borderTarget = Border_Target::None;
}

void Reader::Cell_Edge(int)
{
    m_cell.right = Length();
    if (m_cell.borderWidth == 0) {
        m_cell.borderWidth = m_rowBorder.borderWidth;
        m_cell.borderColor = m_rowBorder.borderColor;
    }
    if (m_row.cells.size() < mostCells)
        m_row.cells.push_back(m_cell);
    m_cell = {};
    m_borderTarget = Border_Target::None;
}

void Reader::Cell_Mark(int nested)
{
    if (m_state.destination != Destination::Body)
        return;
    const int nesting = nested ? std::max(2, m_state.para.nesting) : 1;
    End_Paragraph(nesting);
    m_tables.End_Cell(nesting);
}

void Reader::Row_Mark(int nested)
{
    const int nesting = nested ? std::max(2, m_state.para.nesting) : 1;
    if (Has_Pending())
        End_Paragraph(nesting);
    m_tables.End_Row(nesting, m_row);
}

void Reader::Nested_Properties(int)
{
    if (m_state.closer != Closer::None)
        return;
    m_outerRows.push_back(m_row);
    m_state.closer = Closer::Nested_Row;
}

void Reader::Cell_Vertical(int place)
{
    m_cell.vertical = static_cast<quint8>(place);
}

void Reader::Cell_Back(int)
{
    m_cell.back = m_parameter;
}

void Reader::Cell_Width(int)
{
    m_cell.width = Length();
}

void Reader::Cell_Width_Kind(int)
{
    m_cell.widthKind = static_cast<Width_Kind>(std::clamp(m_parameter, 0, 3));
}

void Reader::Row_Width_Kind(int)
{
    m_row.widthKind = static_cast<Width_Kind>(std::clamp(m_parameter, 0, 3));
}

void Reader::Row_Align(int align)
{
    m_row.align = static_cast<Align>(align);
}

void Reader::Row_Header(int)
{
    m_row.header = true;
}

void Reader::Border_Of(int target)
{
    m_borderTarget = static_cast<Border_Target>(target);
}

void Reader::Border_Line(int width)
{
    if (m_borderTarget == Border_Target::None)
        return;
    Cell_Definition &border = m_borderTarget == Border_Target::Cell ? m_cell : m_rowBorder;
    border.borderWidth = std::max(border.borderWidth, width ? thinLine : 0);
}

void Reader::Border_Width(int)
{
    if (m_borderTarget == Border_Target::None)
        return;
    Cell_Definition &border = m_borderTarget == Border_Target::Cell ? m_cell : m_rowBorder;
    if (border.borderWidth > 0)
        border.borderWidth = std::clamp(m_parameter, 1, widestLine);
}

void Reader::Border_Color(int)
{
    if (m_borderTarget == Border_Target::None)
        return;
    (m_borderTarget == Border_Target::Cell ? m_cell : m_rowBorder).borderColor = m_parameter;
}
} // namespace Rtf
