// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/table_commands.h"

#include "editor/paragraph_commands.h"
#include "editor/text_editor.h"

#include <QPointer>
#include <QTextTable>

#include <algorithm>

namespace
{
/// The rows and columns that the selection covers.
struct Area {
    int row = 0;
    int rows = 1;
    int column = 0;
    int columns = 1;
};

Area Area_Of(const QTextCursor &cursor, const QTextTable &table)
{
    Area area;
    if (cursor.hasComplexSelection()) {
        cursor.selectedTableCells(&area.row, &area.rows, &area.column, &area.columns);
        return area;
    }
    const QTextTableCell cell = table.cellAt(cursor);
    return {cell.row(), cell.rowSpan(), cell.column(), cell.columnSpan()};
}

/// Runs a change on the cursor's table as one undo step.
template <class Change>
void Change_Table(Text_Editor &editor, Change &&change)
{
    QTextCursor cursor = editor.textCursor();
    QTextTable *table = cursor.currentTable();
    if (table == nullptr)
        return;
    cursor.beginEditBlock();
    change(*table, Area_Of(cursor, *table));
    cursor.endEditBlock();
}

/// Removes rows or columns and leaves the cursor in what remains of the table.
template <class Remove>
void Remove_From(Text_Editor &editor, Remove &&remove)
{
    const QPointer<QTextTable> table = editor.textCursor().currentTable();
    Area area;
    Change_Table(editor, [&](QTextTable &changed, const Area &selected) {
        area = selected;
        remove(changed, selected);
    });
    if (table == nullptr || table->rows() == 0)
        return;
    const int row = std::min(area.row, table->rows() - 1), column = std::min(area.column, table->columns() - 1);
    editor.setTextCursor(table->cellAt(row, column).firstCursorPosition());
}

QTextTableFormat New_Format(int columns)
{
    constexpr double Padding = 4;
    QTextTableFormat format;
    format.setBorderCollapse(true);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorder(1);
    format.setBorderBrush(QColor(Qt::gray));
    format.setCellPadding(Padding);
    format.setCellSpacing(0);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    format.setColumnWidthConstraints(
        QList<QTextLength>(columns, QTextLength(QTextLength::PercentageLength, 100.0 / columns)));
    return format;
}

void Even_Out(QTextTable &table)
{
    QTextTableFormat format = table.format();
    format.setColumnWidthConstraints(
        QList<QTextLength>(table.columns(), QTextLength(QTextLength::PercentageLength, 100.0 / table.columns())));
    table.setFormat(format);
}

/// What is typed into a cell looks like the text around the table, and bold in the header.
void Set_Up_Cells(QTextTable &table, const QTextCharFormat &around, bool header)
{
    for (int row = 0; row < table.rows(); ++row) {
        QTextCharFormat format;
        format.setFontFamilies(around.fontFamilies().toStringList());
        if (around.fontPointSize() > 0)
            format.setFontPointSize(around.fontPointSize());
        format.setFontWeight(header && row == 0 ? QFont::Bold : QFont::Normal);
        for (int column = 0; column < table.columns(); ++column)
            table.cellAt(row, column).firstCursorPosition().setBlockCharFormat(format);
    }
}
} // namespace

void Table_Commands::Insert(Text_Editor &editor, const Shape &shape)
{
    const int rows = std::clamp(shape.rows, 1, Most_Rows);
    const int columns = std::clamp(shape.columns, 1, Most_Columns);
    QTextCursor cursor = editor.textCursor();
    cursor.beginEditBlock();
    cursor.clearSelection();
    const QTextCharFormat around = Paragraph_Commands::Body_Format(editor, cursor.charFormat());
    QTextTableFormat format = New_Format(columns);
    format.setHeaderRowCount(shape.header ? 1 : 0);
    QTextTable *table = cursor.insertTable(rows, columns, format);
    Set_Up_Cells(*table, around, shape.header);
    QTextCursor behind = table->lastCursorPosition();
    if (behind.movePosition(QTextCursor::NextBlock) && behind.block().length() == 1)
        behind.setBlockCharFormat(around);
    cursor.endEditBlock();
    editor.setTextCursor(table->cellAt(0, 0).firstCursorPosition());
    editor.ensureCursorVisible();
}

void Table_Commands::Row_Above(Text_Editor &editor, bool /*on*/)
{
    Change_Table(editor, [](QTextTable &table, const Area &area) { table.insertRows(area.row, area.rows); });
}

void Table_Commands::Row_Below(Text_Editor &editor, bool /*on*/)
{
    Change_Table(editor,
                 [](QTextTable &table, const Area &area) { table.insertRows(area.row + area.rows, area.rows); });
}

void Table_Commands::Column_Left(Text_Editor &editor, bool /*on*/)
{
    Change_Table(editor, [](QTextTable &table, const Area &area) {
        table.insertColumns(area.column, area.columns);
        Even_Out(table);
    });
}

void Table_Commands::Column_Right(Text_Editor &editor, bool /*on*/)
{
    Change_Table(editor, [](QTextTable &table, const Area &area) {
        table.insertColumns(area.column + area.columns, area.columns);
        Even_Out(table);
    });
}

void Table_Commands::Delete_Rows(Text_Editor &editor, bool /*on*/)
{
    Remove_From(editor, [](QTextTable &table, const Area &area) { table.removeRows(area.row, area.rows); });
}

void Table_Commands::Delete_Columns(Text_Editor &editor, bool /*on*/)
{
    Remove_From(editor, [](QTextTable &table, const Area &area) {
        const bool all = area.columns == table.columns();
        table.removeColumns(area.column, area.columns);
        if (!all)
            Even_Out(table);
    });
}

void Table_Commands::Delete_Table(Text_Editor &editor, bool /*on*/)
{
    Change_Table(editor, [](QTextTable &table, const Area & /*area*/) { table.removeRows(0, table.rows()); });
}

void Table_Commands::Merge_Cells(Text_Editor &editor, bool /*on*/)
{
    Change_Table(editor, [](QTextTable &table, const Area &area) {
        table.mergeCells(area.row, area.column, area.rows, area.columns);
    });
}

void Table_Commands::Split_Cell(Text_Editor &editor, bool /*on*/)
{
    Change_Table(editor, [](QTextTable &table, const Area &area) { table.splitCell(area.row, area.column, 1, 1); });
}

void Table_Commands::Even_Columns(Text_Editor &editor, bool /*on*/)
{
    Change_Table(editor, [](QTextTable &table, const Area & /*area*/) { Even_Out(table); });
}

bool Table_Commands::Step(Text_Editor &editor, bool back)
{
    QTextCursor cursor = editor.textCursor();
    QTextTable *table = cursor.currentTable();
    if (table == nullptr)
        return false;
    const QTextTableCell cell = table->cellAt(cursor);
    if (back) {
        cursor.setPosition(std::max(0, cell.firstPosition() - 1));
        if (cursor.currentTable() == table)
            cursor = table->cellAt(cursor).firstCursorPosition();
    } else {
        const bool last =
            cell.row() + cell.rowSpan() == table->rows() && cell.column() + cell.columnSpan() == table->columns();
        const int row = cell.row();
        if (last)
            table->appendRows(1);
        cursor.setPosition(table->cellAt(row, cell.column()).lastPosition() + 1);
    }
    editor.setTextCursor(cursor);
    editor.ensureCursorVisible();
    return true;
}

bool Table_Commands::Is_In_Table(const Text_Editor &editor)
{
    return editor.textCursor().currentTable() != nullptr;
}
