// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "editor/desk.h"
#include "editor/table_commands.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QTextTable>

using namespace Qt::StringLiterals;

class Test_Editor_Tables : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Load_Built_In_Language(); }
    void Tables();
    void Tab_Goes_Through_A_Table();
    void Lines_Of_A_Table_Are_Pulled_data();
    void Lines_Of_A_Table_Are_Pulled();
};

void Test_Editor_Tables::Tables()
{
    Desk desk;
    Table_Commands::Insert(desk.editor, {2, 2, true});
    const QTextTable *table = desk.editor.textCursor().currentTable();
    QVERIFY(table != nullptr);
    const auto size = [&] {
        return std::pair(table->rows(), table->columns());
    };
    desk.Run(u"Cmd_Row_Below"_s);
    desk.Run(u"Cmd_Column_Right"_s);
    QCOMPARE(size(), std::pair(3, 3));
    QTextCursor cursor = table->cellAt(0, 0).firstCursorPosition();
    cursor.setPosition(table->cellAt(1, 1).lastPosition(), QTextCursor::KeepAnchor);
    desk.editor.setTextCursor(cursor);
    desk.Run(u"Cmd_Merge"_s);
    QCOMPARE(table->cellAt(0, 0).columnSpan(), 2);
    QCOMPARE(table->cellAt(0, 0).rowSpan(), 2);
    desk.editor.setTextCursor(table->cellAt(0, 0).firstCursorPosition());
    desk.Run(u"Cmd_Split"_s);
    QCOMPARE(table->cellAt(0, 0).columnSpan(), 1);
    desk.Run(u"Cmd_Delete_Rows"_s);
    desk.Run(u"Cmd_Delete_Columns"_s);
    QCOMPARE(size(), std::pair(2, 2));
    desk.Run(u"Cmd_Delete_Table"_s);
    QVERIFY(desk.editor.textCursor().currentTable() == nullptr);
    QVERIFY(!desk.commands.Action(u"Cmd_Delete_Table"_s)->isEnabled());
}

void Test_Editor_Tables::Tab_Goes_Through_A_Table()
{
    Desk desk;
    Table_Commands::Insert(desk.editor, {1, 2, false});
    QTest::keyClicks(&desk.editor, u"a"_s);
    QTest::keyClick(&desk.editor, Qt::Key_Tab);
    QTest::keyClicks(&desk.editor, u"b"_s);
    QTest::keyClick(&desk.editor, Qt::Key_Tab);
    QTest::keyClicks(&desk.editor, u"c"_s);
    QTest::keyClick(&desk.editor, Qt::Key_Backtab);
    QTest::keyClicks(&desk.editor, u"x"_s);
    const QTextTable *table = desk.editor.textCursor().currentTable();
    const auto cell = [&](int row, int column) {
        return table->cellAt(row, column).firstCursorPosition().block().text();
    };
    QCOMPARE(table->rows(), 2);
    QCOMPARE(cell(0, 0) + u'|' + cell(0, 1) + u'|' + cell(1, 0), u"a|xb|c"_s);
}

void Test_Editor_Tables::Lines_Of_A_Table_Are_Pulled_data()
{
    QTest::addColumn<bool>("merged"); ///< the second and the third column are one in all rows
    QTest::addColumn<int>("percent"); ///< width of the table, 0 for none
    QTest::addColumn<int>("line");    ///< x of the line in the table
    QTest::addColumn<int>("by");
    QTest::addColumn<QList<int>>("widths"); ///< as written, in pixels or percent

    QTest::newRow("inner line") << false << 0 << 100 << 30 << QList<int>{130, 70, 100};
    QTest::newRow("no further than the next one") << false << 0 << 100 << 300 << QList<int>{176, 24, 100};
    QTest::newRow("outer line") << false << 0 << 300 << 40 << QList<int>{100, 100, 140};
    QTest::newRow("outer line inwards") << false << 0 << 300 << -400 << QList<int>{100, 100, 24};
    QTest::newRow("beside merged columns") << true << 0 << 100 << 40 << QList<int>{140, 80, 80};
    QTest::newRow("outer line of merged columns") << true << 0 << 300 << -60 << QList<int>{100, 70, 70};
    QTest::newRow("shares of a width") << false << 50 << 100 << 50 << QList<int>{50, 17, 33};
    QTest::newRow("outer line of a width") << false << 50 << 300 << 100 << QList<int>{25, 25, 50};
}

void Test_Editor_Tables::Lines_Of_A_Table_Are_Pulled()
{
    QFETCH(bool, merged);
    QFETCH(int, percent);
    QFETCH(int, line);
    QFETCH(int, by);
    QFETCH(QList<int>, widths);
    Desk desk;
    desk.window.resize(800, 300);
    const int frame = desk.editor.width() - desk.editor.viewport()->width();
    const int margins = 2 * static_cast<int>(desk.editor.document()->documentMargin());
    desk.editor.setFixedWidth(600 + margins + frame);
    QTextTableFormat format;
    format.setCellSpacing(0);
    format.setBorder(0);
    if (percent > 0)
        format.setWidth(QTextLength(QTextLength::PercentageLength, percent));
    const QTextLength third = percent > 0 ? QTextLength(QTextLength::PercentageLength, 100.0 / 3)
                                          : QTextLength(QTextLength::FixedLength, 100);
    format.setColumnWidthConstraints({third, third, third});
    QTextTable *table = desk.editor.textCursor().insertTable(2, 3, format);
    for (int row = 0; merged && row < 2; ++row)
        table->mergeCells(row, 1, 1, 2);
    QApplication::processEvents();
    const QRectF place = desk.editor.document()->documentLayout()->frameBoundingRect(table);
    const QPoint from = (place.topLeft() + QPointF(line, 8)).toPoint();
    QTest::mousePress(desk.editor.viewport(), Qt::LeftButton, {}, from);
    QTest::mouseRelease(desk.editor.viewport(), Qt::LeftButton, {}, from + QPoint(by, 0));
    const QList<QTextLength> lengths = table->format().columnWidthConstraints();
    QCOMPARE(lengths.size(), widths.size());
    for (int column = 0; column < widths.size(); ++column)
        QVERIFY2(std::abs(lengths[column].rawValue() - widths[column]) <= 2,
                 qPrintable(QString::number(lengths[column].rawValue())));
    desk.editor.undo();
    QCOMPARE(table->format().columnWidthConstraints(), QList<QTextLength>({third, third, third}));
}

QTEST_MAIN(Test_Editor_Tables)
#include "test_editor_tables.moc"
