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
constexpr int Bullet_Kind = 23;        // of \levelnfc
constexpr std::size_t mostCells = 512; // of one row; word processors stop at 63
} // namespace

/// The level that is being told of: one of a list, or of an override, which changes a list's level for one \ls.
List_Level *Reader::Open_Level()
{
    if (m_inOverride)
        return m_overrideLevels.empty() ? nullptr : &m_overrideLevels.back();
    return m_model.lists.empty() || m_model.lists.back().levels.empty() ? nullptr : &m_model.lists.back().levels.back();
}

void Reader::Begin_List(int)
{
    m_model.lists.push_back({});
}

void Reader::Begin_Level(int)
{
    if (m_inOverride) {
        if (!m_overrideLevels.empty())
            m_overrideLevels.back() = {};
    } else if (m_model.lists.empty() || m_model.lists.back().levels.size() == mostLevels) {
        return;
    } else {
        m_model.lists.back().levels.push_back({});
    }
    m_state.para.left = Not_Set;
    m_state.para.first = Not_Set;
    m_state.closer = Closer::Level;
}

void Reader::End_Level(const State &inner)
{
    List_Level *level = Open_Level();
    if (!level)
        return;
    level->left = inner.para.left;
    level->first = inner.para.first;
    level->text.truncate(64);
    if (level->kind != Bullet_Kind || level->text.size() < 2 || inner.chr.font < 0)
        return;
    const Font &font = m_model.fonts[static_cast<std::size_t>(inner.chr.font)];
    const char16_t sign = level->text[1].unicode();
    if ((sign & 0xFF00) == 0xF000 || (sign < 0x100 && font.codePage == Symbol_Code_Page))
        level->text[1] = QChar(Symbol_Glyph(static_cast<unsigned char>(sign & 0xFF), font.name));
}

void Reader::Level_Kind(int)
{
    if (List_Level *level = Open_Level())
        level->kind = m_parameter;
}

void Reader::Level_Start(int)
{
    if (List_Level *level = Open_Level())
        level->start = std::clamp(m_parameter, 0, 32'767);
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
    m_overrideLevels.clear();
    m_state.closer = Closer::Override;
}

/// The levels that an override tells of come in order, each beginning as the list has it.
void Reader::Begin_Override_Level(int)
{
    const auto list = m_listOfId.constFind(m_overrideId);
    if (!m_inOverride || list == m_listOfId.constEnd())
        return;
    const auto &levels = m_model.lists[static_cast<std::size_t>(*list)].levels;
    if (m_overrideLevels.size() < levels.size())
        m_overrideLevels.push_back(levels[m_overrideLevels.size()]);
}

void Reader::End_Override()
{
    m_inOverride = false;
    const auto list = m_listOfId.constFind(m_overrideId);
    if (list == m_listOfId.constEnd())
        return;
    int index = *list;
    if (!m_overrideLevels.empty()) {
        List_Definition changed = m_model.lists[static_cast<std::size_t>(index)];
        std::copy(m_overrideLevels.begin(), m_overrideLevels.end(), changed.levels.begin());
        index = static_cast<int>(m_model.lists.size());
        m_model.lists.push_back(std::move(changed));
    }
    m_model.listOfNumber.insert(m_overrideNumber, index);
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

void Reader::Old_List_Start(int)
{
    m_oldList.start = std::clamp(m_parameter, 0, 32'767);
}

/// Beyond the nine levels stand lists without any and bullets.
void Reader::Old_List_Level(int)
{
    m_oldList.kind = m_parameter == 11 ? Bullet_Kind : 0;
    m_oldList.level = m_parameter >= 1 && m_parameter <= static_cast<int>(mostLevels) ? m_parameter - 1 : 0;
}

void Reader::End_Old_List()
{
    if (!m_oldListContinues) {
        m_state.para.oldList = Goes_On;
        return;
    }
    std::vector<Old_List> &known = m_model.oldLists;
    const auto near = known.rbegin() + std::min<std::ptrdiff_t>(std::ssize(known), mostLevels);
    const auto same = std::find(known.rbegin(), near, m_oldList); // of the levels around it
    m_state.para.oldList = static_cast<int>(same != near ? known.rend() - same : std::ssize(known) + 1) - 1;
    if (same == near)
        known.push_back(m_oldList);
}

void Reader::Row_Begin(int)
{
    m_row = {};
    m_cell = {};
    m_cellBordersSaid = 0;
    m_rowBorders = {};
    m_borderOwner = Border_Owner::Nothing;
}

void Reader::Cell_Edge(int)
{
    m_cell.right = Length();
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

void Reader::Cell_Mark(int nested)
{
    if (m_state.destination == Destination::Page_Text)
        return Emit_Unit(u'\t');
    if (m_state.destination != Destination::Body)
        return;
    const int nesting = m_state.nestingAround + (nested ? std::max(2, m_state.para.nesting) : 1);
    End_Paragraph(nesting);
    m_tables.End_Cell(nesting);
}

void Reader::Row_Mark(int nested)
{
    if (m_state.destination == Destination::Page_Text)
        End_Page_Line();
    if (m_state.destination != Destination::Body)
        return;
    const int nesting = m_state.nestingAround + (nested ? std::max(2, m_state.para.nesting) : 1);
    if (m_paragraph.Has_Content())
        End_Paragraph(nesting);
    m_tables.End_Row(nesting, m_row);
}

void Reader::Nested_Properties(int)
{
    if (m_state.closer != Closer::None)
        return;
    m_outerRows.push_back(std::exchange(m_row, {}));
    m_state.closer = Closer::Nested_Row;
}

void Reader::Cell_Vertical(int place)
{
    m_cell.vertical = static_cast<quint8>(place);
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

void Reader::Cell_Padding(int side)
{
    m_cell.padding[static_cast<std::size_t>(side)] = std::max(0, Length());
}

/// @param target the owner in the higher byte, the sides in the lower
void Reader::Border_Of(int target)
{
    m_borderOwner = static_cast<Border_Owner>(target >> 8);
    m_borderSides = target & 0xFF;
    if (m_borderOwner == Border_Owner::Cell)
        m_cellBordersSaid |= m_borderSides;
}

template <typename Change>
void Reader::Change_Borders(Change &&change)
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

void Reader::Border_Line(int line)
{
    Change_Borders([&](Border &border) { border.line = static_cast<Line>(line); });
}

void Reader::Border_Width(int)
{
    Change_Borders([&](Border &border) { border.width = static_cast<quint8>(std::clamp(m_parameter, 0, 255)); });
}

void Reader::Border_Space(int)
{
    Change_Borders([&](Border &border) { border.space = static_cast<qint16>(std::clamp(m_parameter, 0, 620)); });
}

void Reader::Border_Color(int)
{
    Change_Borders([&](Border &border) { border.color = m_parameter; });
}
} // namespace Rtf
