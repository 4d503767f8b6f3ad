// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_tables.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr int deepestNesting = 8;     // QTextDocument's layout takes twice the time for each more
constexpr std::size_t mostRows = 500; // of one table, whose layout is made and moved as a whole
constexpr int edgeTolerance = 20;     // edges nearer than this are one
constexpr int defaultWidth = 1440;    // of a cell that no \cellx was given for
constexpr int widestTable = 100'000;  // twips; Word's own limit is 31,680
constexpr qint64 gridPerCell = 4;
constexpr std::size_t mostCells = 512; // of one row; word processors stop at 63
constexpr std::size_t mostAbsentCells = 16'384;

bool Has_Text(const Model &model, const Flow &flow)
{
    return std::any_of(flow.begin(), flow.end(), [&](const Flow_Item &item) {
        return item.isTable || model.paragraphs[static_cast<std::size_t>(item.index)].runCount > 0;
    });
}

bool Belongs_To_Row_Above(const Row_Definition &row)
{
    return row.header || std::any_of(row.cells.begin(), row.cells.end(),
                                     [](const Cell_Definition &cell) { return cell.verticalMerged; });
}

/// The row's cell definitions with rising edges, one for each cell that has content.
std::vector<Cell_Definition> Settled_Cells(const Row &row)
{
    std::vector<Cell_Definition> cells = row.definition.cells;
    const std::size_t given = cells.size();
    cells.resize(std::max(given, row.cells.size()));
    int edge = std::clamp(row.definition.left, -widestTable, widestTable);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const int wanted = i < given ? cells[i].right : edge + defaultWidth;
        edge = std::max(std::min(wanted, widestTable), edge + edgeTolerance + 1);
        cells[i].right = edge;
    }
    return cells;
}

class Layout
{
public:
    Layout(const Model &model, const Table &table, qint64 &allowance)
        : m_model(model), m_table(table), m_allowance(allowance)
    {
    }

    Grid Make()
    {
        m_grid.rows = static_cast<int>(m_table.rows.size());
        qint64 cells = 0;
        for (const Row &row : m_table.rows) {
            m_settled.push_back(Settled_Cells(row));
            cells += static_cast<qint64>(row.cells.size());
        }
        Find_Edges();
        m_grid.columns = static_cast<int>(m_grid.edges.size()) - 1;
        const qint64 beyond = static_cast<qint64>(m_grid.columns) * m_grid.rows - gridPerCell * cells;
        if (beyond > m_allowance)
            return One_Column();
        m_allowance -= std::max<qint64>(0, beyond);
        m_grid.columnCells.resize(static_cast<std::size_t>(m_grid.columns));
        m_above.assign(static_cast<std::size_t>(m_grid.columns), -1);
        for (int row = 0; row < m_grid.rows; ++row)
            Place_Row(row);
        return std::move(m_grid);
    }

private:
    void Find_Edges()
    {
        std::vector<int> all;
        for (std::size_t i = 0; i < m_settled.size(); ++i) {
            all.push_back(std::clamp(m_table.rows[i].definition.left, -widestTable, widestTable));
            for (const Cell_Definition &cell : m_settled[i])
                all.push_back(cell.right);
        }
        std::sort(all.begin(), all.end());
        for (const int edge : all) {
            if (m_grid.edges.empty() || edge > m_grid.edges.back() + edgeTolerance)
                m_grid.edges.push_back(edge);
        }
        if (m_grid.edges.size() < 2)
            m_grid.edges.push_back(m_grid.edges.back() + defaultWidth);
    }

    int Column_Of(int edge) const
    {
        const auto above = std::upper_bound(m_grid.edges.begin(), m_grid.edges.end(), edge);
        return std::max(0, static_cast<int>(above - m_grid.edges.begin()) - 1);
    }

    void Place_Row(int rowIndex)
    {
        const Row &row = m_table.rows[static_cast<std::size_t>(rowIndex)];
        const std::vector<Cell_Definition> &cells = m_settled[static_cast<std::size_t>(rowIndex)];
        std::vector<int> below(m_above.size(), -1);
        int column = 0;
        for (std::size_t i = 0; i < cells.size() && column < m_grid.columns;) {
            Placement cell{.row = rowIndex, .column = column, .definition = cells[i]};
            std::size_t last = i;
            while (cells[i].mergeFirst && last + 1 < cells.size() && cells[last + 1].merged)
                ++last;
            cell.columnSpan = std::max(1, std::min(Column_Of(cells[last].right), m_grid.columns) - column);
            for (; i <= last; ++i) {
                Note_Width(cells[i], i == 0 ? 0 : Column_Of(cells[i - 1].right));
                Take_Content(row, i, cell);
            }
            column += cell.columnSpan;
            Place(std::move(cell), below);
        }
        m_above = std::move(below);
    }

    void Note_Width(const Cell_Definition &cell, int column)
    {
        if (cell.widthKind != Width_Kind::Not_Given && column < m_grid.columns && Column_Of(cell.right) == column + 1)
            m_grid.columnCells[static_cast<std::size_t>(column)] = cell;
    }

    void Take_Content(const Row &row, std::size_t index, Placement &cell) const
    {
        if (index >= row.cells.size())
            return;
        const Flow &flow = row.cells[index];
        if (cell.content.empty() || Has_Text(m_model, flow))
            cell.content.insert(cell.content.end(), flow.begin(), flow.end());
    }

    void Place(Placement cell, std::vector<int> &below)
    {
        const auto column = static_cast<std::size_t>(cell.column);
        const int above = m_above[column];
        if (cell.definition.verticalMerged && above >= 0) {
            Placement &first = m_grid.cells[static_cast<std::size_t>(above)];
            if (first.columnSpan == cell.columnSpan) {
                ++first.rowSpan;
                if (Has_Text(m_model, cell.content))
                    first.content.insert(first.content.end(), cell.content.begin(), cell.content.end());
                below[column] = above;
                return;
            }
        }
        if (cell.definition.verticalFirst)
            below[column] = static_cast<int>(m_grid.cells.size());
        m_grid.cells.push_back(std::move(cell));
    }

    Grid One_Column() const
    {
        Grid grid{.rows = m_grid.rows, .columns = 1, .edges = {}, .columnCells = {}, .cells = {}};
        for (int row = 0; row < grid.rows; ++row) {
            Placement cell{.row = row, .content = {}, .definition = {}};
            for (const Flow &flow : m_table.rows[static_cast<std::size_t>(row)].cells)
                cell.content.insert(cell.content.end(), flow.begin(), flow.end());
            grid.cells.push_back(std::move(cell));
        }
        return grid;
    }

    const Model &m_model;
    const Table &m_table;
    qint64 &m_allowance;
    Grid m_grid;
    std::vector<std::vector<Cell_Definition>> m_settled;
    std::vector<int> m_above; ///< per column, the vertically merged cell that the row above belongs to
};
} // namespace

void Table_Stack::Set_Depth(int nesting)
{
    const auto depth = static_cast<std::size_t>(std::clamp(nesting, 0, deepestNesting));
    while (m_open.size() > depth)
        Close_Innermost();
    m_open.resize(std::max(m_open.size(), depth));
}

void Table_Stack::Close_Innermost()
{
    Open_Table open = std::move(m_open.back());
    m_open.pop_back();
    Flow &around = Current();
    std::vector<Row> &rows = open.table.rows;
    if (rows.empty() && open.row.cells.empty()) {
        around.insert(around.end(), open.cell.begin(), open.cell.end());
        return;
    }
    if (!open.cell.empty())
        open.row.cells.push_back(std::move(open.cell));
    if (!open.row.cells.empty()) {
        if (!rows.empty())
            open.row.definition = rows.back().definition;
        rows.push_back(std::move(open.row));
    }
    around.push_back({.isTable = true, .index = static_cast<int>(m_model.tables.size())});
    m_model.tables.push_back(std::move(open.table));
}

/// A long table goes on as another one.
void Table_Stack::Cut_Table()
{
    Open_Table open = std::move(m_open.back());
    m_open.pop_back();
    Current().push_back({.isTable = true, .index = static_cast<int>(m_model.tables.size())});
    m_model.tables.push_back(std::exchange(open.table, {.rows = {}, .pageBreakBefore = false, .goesOn = true}));
    m_open.push_back(std::move(open));
}

/// A row that leaves cells out still has their places, but many such rows must not multiply their definitions.
Row_Definition Table_Stack::Definition_For(std::size_t cells, const Row_Definition &definition)
{
    Row_Definition own{.left = definition.left,
                       .gap = definition.gap,
                       .padding = definition.padding,
                       .spacing = definition.spacing,
                       .width = definition.width,
                       .widthKind = definition.widthKind,
                       .align = definition.align,
                       .header = definition.header,
                       .cells = {}};
    const std::size_t given = definition.cells.size();
    const std::size_t absent = std::min(given - std::min(given, cells), mostAbsentCells - m_absentCells);
    m_absentCells += absent;
    const auto end = definition.cells.begin() + static_cast<std::ptrdiff_t>(std::min(given, cells + absent));
    own.cells.assign(definition.cells.begin(), end);
    return own;
}

void Table_Stack::Add_Paragraph(int paragraph, int nesting)
{
    Set_Depth(nesting);
    Current().push_back({.isTable = false, .index = paragraph});
}

void Table_Stack::End_Cell(int nesting)
{
    Set_Depth(nesting);
    Open_Table &open = m_open.back();
    if (open.row.cells.size() < mostCells)
        open.row.cells.emplace_back();
    Flow &cell = open.row.cells.back();
    cell.insert(cell.end(), open.cell.begin(), open.cell.end());
    open.cell.clear();
}

void Table_Stack::End_Row(int nesting, const Row_Definition &definition)
{
    Set_Depth(nesting);
    Open_Table &open = m_open.back();
    if (!open.cell.empty())
        End_Cell(nesting);
    if (open.row.cells.empty())
        return;
    open.row.definition = Definition_For(open.row.cells.size(), definition);
    if (open.table.rows.size() >= mostRows && !Belongs_To_Row_Above(open.row.definition))
        Cut_Table();
    open.table.rows.push_back(std::move(open.row));
    open.row = {};
}

Grid Lay_Out(const Model &model, const Table &table, qint64 &allowance)
{
    return Layout(model, table, allowance).Make();
}

std::optional<Border> Common_Border(const Grid &grid)
{
    // Edges between rows by row and column, then those between columns.
    const auto columns = static_cast<std::size_t>(grid.columns), rows = static_cast<std::size_t>(grid.rows);
    std::vector<Border> across((rows + 1) * columns), down(rows * (columns + 1));
    std::vector<bool> hidden(across.size()), hiddenDown(down.size()); // inside merged cells
    const auto draw = [](Border &edge, const Border &border) {
        if (border.line != Line::None)
            edge = border;
    };
    for (const Placement &cell : grid.cells) {
        const auto top = static_cast<std::size_t>(cell.row), bottom = top + static_cast<std::size_t>(cell.rowSpan);
        const auto left = static_cast<std::size_t>(cell.column);
        const auto right = std::min(left + static_cast<std::size_t>(cell.columnSpan), columns);
        const Borders &borders = cell.definition.borders;
        for (std::size_t column = left; column < right; ++column) {
            draw(across[top * columns + column], borders[Top]);
            draw(across[bottom * columns + column], borders[Bottom]);
            for (std::size_t row = top + 1; row < bottom; ++row)
                hidden[row * columns + column] = true;
        }
        for (std::size_t row = top; row < bottom; ++row) {
            draw(down[row * (columns + 1) + left], borders[Left_Side]);
            draw(down[row * (columns + 1) + right], borders[Right_Side]);
            for (std::size_t column = left + 1; column < right; ++column)
                hiddenDown[row * (columns + 1) + column] = true;
        }
    }
    const Border &first = across.front();
    const auto differs = [&](const std::vector<Border> &edges, const std::vector<bool> &skipped) {
        for (std::size_t i = 0; i < edges.size(); ++i) {
            if (!skipped[i] && !(edges[i] == first))
                return true;
        }
        return false;
    };
    if (differs(across, hidden) || differs(down, hiddenDown))
        return {};
    return first;
}
} // namespace Rtf
