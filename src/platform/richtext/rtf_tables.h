// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_model.h"

#include <optional>

namespace Rtf
{
/// Sorts finished paragraphs into the body, or into the cells of the tables that are open at the moment. RTF never
/// says where a table begins or ends: it lasts as long as paragraphs of its nesting follow. One in which no cell ever
/// ended is none; its paragraphs stand where it would.
class Table_Stack
{
public:
    explicit Table_Stack(Model &model) : m_model(model) {}

    [[nodiscard]] bool Is_Open() const { return !m_open.empty(); }
    /// Puts the table that is open on a new page.
    void Begin_Page() { m_open.front().table.pageBreakBefore = true; }
    /// Adds a paragraph that stands in `nesting` tables.
    void Add_Paragraph(int paragraph, int nesting);
    /// Ends a cell, or a row, of the table at `nesting` (1 is the outermost).
    void End_Cell(int nesting);
    void End_Row(int nesting, const Row_Definition &definition);
    /// Ends whatever is open; a row that was begun is kept.
    void Close_All() { Set_Depth(0); }

private:
    struct Open_Table {
        Table table;
        Row row;
        Flow cell;
    };
    void Set_Depth(int nesting);
    void Close_Innermost();
    void Cut_Table();
    Row_Definition Definition_For(std::size_t cells, const Row_Definition &definition);
    Flow &Current() { return m_open.empty() ? m_model.body : m_open.back().cell; }

    Model &m_model;
    std::vector<Open_Table> m_open;
    std::size_t m_absentCells = 0; ///< defined, but never told of, in all rows
};

/// A cell's place in the regular grid that a QTextTable is.
struct Placement {
    int row = 0;
    int column = 0;
    int rowSpan = 1;
    int columnSpan = 1;
    Flow content = {};
    Cell_Definition definition = {};
};
struct Grid {
    int rows = 0;
    int columns = 0;
    std::vector<int> edges; ///< columns + 1 positions, or empty where the rows have no common columns
    /// What each column's width was said to be, by a cell that stands in this column only.
    std::vector<Cell_Definition> columnCells;
    std::vector<Placement> cells;
};

/// Lays the rows, each with edges of its own, over one grid. The grid stays in proportion to the cells that the rows
/// have: what is beyond comes out of the allowance, and rows that would make a huge and nearly empty grid get one
/// column in which their cells follow each other.
/// @param allowance places of grids that a document may leave empty; what this table takes is taken off
Grid Lay_Out(const Model &model, const Table &table, qint64 &allowance);
inline constexpr qint64 Grid_Allowance = 65'536;

/// The border that every edge of the grid has, or nothing where edges differ. Neighbours share the edge between them,
/// so it is enough that one of the two has it.
std::optional<Border> Common_Border(const Grid &grid);
} // namespace Rtf
