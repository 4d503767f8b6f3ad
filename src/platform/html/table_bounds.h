// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>

namespace Html
{
/// Counts the cells that the tables of a page take once every row is as wide as the widest one, as panes lay them out.
class Table_Bounds
{
public:
    /// Each answers whether a tag may stand; where it may not nothing is counted.
    bool Begin_Table();
    bool Begin_Row();
    bool Begin_Cell(int columns, int rows);
    void End_Table();

private:
    struct Table {
        int row = 0;
        int lastRow = 0; ///< that a cell reaches
        int column = 0;
        int width = 0;
        QList<int> spans; ///< rows that the cells of each column still take
        [[nodiscard]] int Cells() const { return lastRow * width; }
    };
    QList<Table> m_open;
    int m_finished = 0; ///< cells of tables that have ended
};
} // namespace Html
