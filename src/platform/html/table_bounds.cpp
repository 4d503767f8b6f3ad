// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/html/table_bounds.h"

#include <algorithm>

namespace Html
{
namespace
{
constexpr qsizetype Deepest_Table = 8; // the layout takes twice the time for each more
constexpr int Most_Columns = 256;
constexpr int Most_Cells = 100'000; // of a page
} // namespace

bool Table_Bounds::Begin_Table()
{
    if (m_open.size() >= Deepest_Table || m_finished >= Most_Cells)
        return false;
    m_open.append(Table());
    return true;
}

bool Table_Bounds::Begin_Row()
{
    if (m_open.isEmpty())
        return false;
    Table &table = m_open.last();
    if ((table.row + 1) * std::max(1, table.width) + m_finished > Most_Cells)
        return false;
    ++table.row;
    table.lastRow = std::max(table.lastRow, table.row);
    table.column = 0;
    for (int &span : table.spans)
        span = std::max(0, span - 1);
    return true;
}

bool Table_Bounds::Begin_Cell(int columns, int rows)
{
    if (m_open.isEmpty() || (m_open.last().row == 0 && !Begin_Row()))
        return false;
    Table &table = m_open.last();
    int column = table.column;
    while (column < table.spans.size() && table.spans[column] > 0)
        ++column;
    const int width = std::max(table.width, column + columns);
    const int lastRow = std::max(table.lastRow, table.row + rows - 1);
    if (width > Most_Columns || width * lastRow + m_finished > Most_Cells)
        return false;
    table.width = width;
    table.lastRow = lastRow;
    table.spans.resize(std::max<qsizetype>(table.spans.size(), column + columns));
    std::fill_n(table.spans.begin() + column, columns, rows);
    table.column = column + columns;
    return true;
}

void Table_Bounds::End_Table()
{
    m_finished += m_open.takeLast().Cells();
}
} // namespace Html
