// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "editor/command_table.h"
#include "editor/pictures.h"
#include "editor/printing.h"
#include "editor/table_commands.h"
#include "editor/text_editor.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "ui/writing/editor_bar.h"
#include "ui/writing/find_bar.h"
#include "ui/writing/frm_goto.h"
#include "ui/writing/frm_insert_table.h"
#include "ui/writing/frm_picture_size.h"
#include "ui/writing/frm_print.h"
#include "ui/writing/frm_spec_char.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTextBlock>
#include <QTextTable>
#include <QToolButton>
#include <QVBoxLayout>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
/// A pane with its bar above it and the find bar below it, as in a document.
struct Desk {
    explicit Desk(const QString &text = {})
    {
        for (QWidget *part : std::initializer_list<QWidget *>{&bar, &editor, &find})
            layout.addWidget(part);
        bar.Serve({&editor}, &find);
        editor.setPlainText(text);
        window.resize(700, 400);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("no active window");
        editor.setFocus();
    }

    void Put_Picture(int width, int height)
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        QTextCursor cursor = editor.textCursor();
        if (!Pictures::Insert(cursor, Pictures::As_File(image)))
            qFatal("no picture");
    }
    void Pull(const QPoint &from, const QPoint &by, Qt::KeyboardModifiers keys)
    {
        QWidget *pane = editor.viewport();
        QTest::mousePress(pane, Qt::LeftButton, keys, from);
        QMouseEvent move(QEvent::MouseMove, from + by, pane->mapToGlobal(from + by), Qt::NoButton, Qt::LeftButton,
                         keys);
        QCoreApplication::sendEvent(pane, &move);
        QTest::mouseRelease(pane, Qt::LeftButton, keys, from + by);
    }

    QWidget window;
    QVBoxLayout layout{&window};
    Editor_Bar bar{&window};
    Text_Editor editor;
    Find_Bar find;
};

/// The path of an action through menus inside menus, as "Format/Color"; "" when it stands in none of them.
QString Menu_Path(const QMenu &menu, const QAction *wanted)
{
    for (const QAction *action : menu.actions()) {
        if (action == wanted)
            return menu.objectName();
        const QString inside = action->menu() == nullptr ? QString() : Menu_Path(*action->menu(), wanted);
        if (!inside.isEmpty())
            return menu.objectName() + u'/' + inside;
    }
    return {};
}
} // namespace

class Test_Editor_Forms : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init() { m_program.emplace(); }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void Every_Command_Is_Reached_data()
    {
        QTest::addColumn<int>("row");
        for (size_t i = 0; i < Command_Table().size(); ++i)
            QTest::newRow(Command_Table()[i].name) << static_cast<int>(i);
    }
    /// Through exactly one of the window's menus, by its keys wherever they are meant to work, and with a caption in
    /// the language in force.
    void Every_Command_Is_Reached()
    {
        QFETCH(int, row);
        const Command_Row &command = Command_Table()[static_cast<size_t>(row)];
        Desk desk(u"text"_s);
        Editor_Commands &commands = desk.bar.Commands();
        QAction *action = commands.Action(QLatin1String(command.name));
        QStringList paths;
        for (const Command_Menu menu : {Command_Menu::Edit, Command_Menu::Insert, Command_Menu::Format}) {
            if (const QString path = Menu_Path(*commands.Menu(menu), action); !path.isEmpty())
                paths << path;
        }
        QCOMPARE(paths.size(), 1);
        QVERIFY(!action->text().isEmpty() && (action->toolTip().size() > 1 || command.menu == Command_Menu::Spacing));
        // The keys are heard, and nothing else answers to them; what the command does is tested elsewhere.
        for (const Command_Row &other : Command_Table())
            commands.Action(QLatin1String(other.name))->disconnect(&commands);
        action->setEnabled(true);
        const QSignalSpy heard(action, &QAction::triggered);
        int presses = 0;
        for (const QKeySequence &keys : action->shortcuts()) {
            if (keys.isEmpty())
                continue;
            desk.editor.setFocus();
            QTest::keyClick(&desk.editor, keys[0].key(), keys[0].keyboardModifiers());
            QCOMPARE(heard.count(), ++presses);
            if ((command.traits & Anywhere) == 0)
                continue;
            auto &elsewhere = Get<QComboBox>(desk.bar, "Comb_FontSize");
            elsewhere.setFocus();
            QTest::keySequence(&elsewhere, keys);
            QCOMPARE(heard.count(), ++presses);
        }
        QCOMPARE(desk.editor.toPlainText(), u"text"_s);
    }

    void Finds_And_Replaces_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("needle");
        QTest::addColumn<QString>("options"); ///< c case, w whole words, p pattern
        QTest::addColumn<QString>("steps");   ///< n next, p previous, r replace, a replace all; 8 starts at place 8
        QTest::addColumn<QString>("with");
        QTest::addColumn<QString>("result"); ///< with the selection in brackets
        QTest::addColumn<QString>("count");

        const auto add = [](const char *name, const char16_t *text, const char16_t *needle, const char16_t *options,
                            const char16_t *steps, const char16_t *with, const char16_t *result,
                            const char16_t *count) {
            const auto string = [](const char16_t *one) {
                return QString::fromUtf16(one);
            };
            QTest::newRow(name) << string(text) << string(needle) << string(options) << string(steps) << string(with)
                                << string(result) << string(count);
        };
        add("the first", u"a cat, a Cat", u"cat", u"", u"n", u"", u"a [cat], a Cat", u"1 / 2");
        add("round about", u"a cat, a Cat", u"cat", u"", u"nnn", u"", u"a [cat], a Cat", u"1 / 2");
        add("backwards", u"a cat, a Cat", u"cat", u"", u"p", u"", u"a cat, a [Cat]", u"2 / 2");
        add("backwards from a place", u"cat cat cat", u"cat", u"", u"8p", u"", u"cat [cat] cat", u"2 / 3");
        add("case", u"a cat, a Cat", u"Cat", u"c", u"n", u"", u"a cat, a [Cat]", u"1 / 1");
        add("whole word", u"category cat", u"cat", u"w", u"n", u"", u"category [cat]", u"1 / 1");
        add("Chinese", u"中国人在中国", u"中国", u"", u"nn", u"", u"中国人在[中国]", u"2 / 2");
        add("Chinese has no whole words", u"中国人在中国", u"国", u"w", u"n", u"", u"中[国]人在中国", u"1 / 2");
        add("nothing", u"a cat", u"dog", u"", u"nra", u"x", u"a cat", u"0");
        add("a bad pattern", u"a (cat", u"(", u"p", u"na", u"x", u"a (cat", u"bad");
        add("signs are no pattern", u"a (cat", u"(", u"", u"n", u"", u"a [(]cat", u"1 / 1");
        add("replace goes on", u"cat cat", u"cat", u"", u"nr", u"dog", u"dog [cat]", u"1 / 1");
        add("replace only what is found", u"cat cat", u"cat", u"", u"r", u"dog", u"[cat] cat", u"1 / 2");
        add("replace all", u"cat, Cat\ncat", u"cat", u"", u"a", u"catcat", u"catcat, catcat\ncatcat", u"3");
        add("replace all by a pattern", u"a1 b2", u"([a-z])(\\d)", u"p", u"a", u"\\2\\1", u"1a 2b", u"2");
        add("take all away", u"中文,中文", u"中", u"", u"a", u"", u"文,文", u"2");
    }
    void Finds_And_Replaces()
    {
        QFETCH(QString, text);
        QFETCH(QString, needle);
        QFETCH(QString, options);
        QFETCH(QString, steps);
        QFETCH(QString, with);
        QFETCH(QString, result);
        QFETCH(QString, count);
        Desk desk(text);
        desk.bar.Commands().Action(u"Cmd_Replace"_s)->trigger();
        QVERIFY(desk.find.isVisible() && Get<QLineEdit>(desk.find, "Inp_Find").hasFocus());
        Get<QAbstractButton>(desk.find, "Chk_Case").setChecked(options.contains(u'c'));
        Get<QAbstractButton>(desk.find, "Chk_Whole").setChecked(options.contains(u'w'));
        Get<QAbstractButton>(desk.find, "Chk_Pattern").setChecked(options.contains(u'p'));
        auto &inp = Get<QLineEdit>(desk.find, "Inp_Find");
        inp.setText(needle);
        Get<QLineEdit>(desk.find, "Inp_Replace").setText(with);
        for (const QChar step : steps) {
            QTextCursor cursor = desk.editor.textCursor();
            if (step.isDigit()) {
                cursor.setPosition(step.digitValue());
                desk.editor.setTextCursor(cursor);
            } else if (step == u'r' || step == u'a') {
                Get<QAbstractButton>(desk.find, step == u'r' ? "Cmd_Replace_One" : "Cmd_Replace_All").click();
            } else {
                QTest::keyClick(&inp, Qt::Key_Return, step == u'n' ? Qt::NoModifier : Qt::ShiftModifier);
            }
        }
        const QTextCursor cursor = desk.editor.textCursor();
        QString shown = desk.editor.toPlainText();
        if (cursor.hasSelection())
            shown.insert(cursor.selectionEnd(), u']').insert(cursor.selectionStart(), u'[');
        QCOMPARE(shown, result);
        const QStringList numbers = count.split(u" / "_s);
        const QString expected = count == u"bad"_s     ? Pack_Text("Find_Bar", "_Bad_Pattern")
                                 : count == u"0"_s     ? Pack_Text("Find_Bar", "_None")
                                 : numbers.size() == 2 ? Pack_Text("Find_Bar", "_Count_At").arg(numbers[0], numbers[1])
                                                       : Pack_Text("Find_Bar", "_Replaced").arg(count);
        if (!steps.endsWith(u'a') || numbers.size() == 1)
            QCOMPARE(Get<QLabel>(desk.find, "Lab_Count").text(), expected);
        if (steps == u"a"_s) { // one step back undoes all of it
            desk.editor.undo();
            QCOMPARE(desk.editor.toPlainText(), text);
        }
        QTest::keyClick(&inp, Qt::Key_Escape);
        QVERIFY(!desk.find.isVisible() && desk.editor.hasFocus() && desk.editor.extraSelections().isEmpty());
    }

    void Goes_To_A_Line_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("line"); ///< 0 for a refusal
        QTest::addRow("a line") << u"2"_s << 2;
        QTest::addRow("blanks") << u" 3 "_s << 3;
        QTest::addRow("none") << u"0"_s << 0;
        QTest::addRow("behind the end") << u"4"_s << 0;
        QTest::addRow("no number") << u"x"_s << 0;
    }
    void Goes_To_A_Line()
    {
        QFETCH(QString, typed);
        QFETCH(int, line);
        Desk desk(u"one\ntwo\nthree"_s);
        frm_GoTo form(desk.editor, &desk.window);
        form.show();
        QVERIFY(Get<QLabel>(form, "Lab_Total").text().contains(u'3'));
        Get<QLineEdit>(form, "Txt_Line").setText(typed);
        if (line == 0)
            m_program->prompts.Expect(Pack_Text("Frm_Main", "_LineNo"), u"ok"_s);
        Get<QAbstractButton>(form, "cmdOK").click();
        QCOMPARE(form.isVisible(), line == 0);
        QCOMPARE(desk.editor.Line_Number(), std::max(1, line));
    }

    void A_Table_Looks_Like_The_Text_Around_It()
    {
        Desk desk;
        desk.editor.Start_In(u"Serif"_s, 17, 100);
        Frm_Insert_Table form(desk.editor, &desk.window);
        Get<QSpinBox>(form, "Spn_Rows").setValue(2);
        Get<QSpinBox>(form, "Spn_Columns").setValue(4);
        Get<QAbstractButton>(form, "cmdOK").click();
        const QTextTable *table = desk.editor.textCursor().currentTable();
        QVERIFY(table != nullptr && table->rows() == 2 && table->columns() == 4);
        QTest::keyClicks(&desk.editor, u"head"_s);
        QCOMPARE(desk.editor.textCursor().charFormat().fontPointSize(), 17);
        QVERIFY(desk.editor.textCursor().charFormat().fontWeight() >= QFont::Bold);
        desk.editor.setTextCursor(table->cellAt(1, 3).firstCursorPosition());
        QTest::keyClicks(&desk.editor, u"body"_s);
        QVERIFY(desk.editor.textCursor().charFormat().fontWeight() == QFont::Normal);
    }

    void A_Picture_Takes_A_Size()
    {
        Desk desk;
        desk.Put_Picture(200, 100);
        desk.editor.selectAll();
        QVERIFY(desk.editor.Has_Picture() && desk.bar.Commands().Action(u"Cmd_Picture_Size"_s)->isEnabled());
        Frm_Picture_Size form(desk.editor, &desk.window);
        QCOMPARE(Get<QSpinBox>(form, "Spn_Height").value(), 100);
        Get<QSpinBox>(form, "Spn_Width").setValue(80);
        QCOMPARE(Get<QSpinBox>(form, "Spn_Height").value(), 40);
        Get<QAbstractButton>(form, "Chk_Keep").click();
        Get<QSpinBox>(form, "Spn_Height").setValue(60);
        Get<QAbstractButton>(form, "cmdOK").click();
        QCOMPARE(Pictures::Size_Of(desk.editor.textCursor()), QSizeF(80, 60));
        desk.editor.undo();
        QCOMPARE(Pictures::Size_Of(desk.editor.textCursor()), QSizeF(200, 100));
    }

    void A_Picture_Is_Pulled_By_Its_Corner_data()
    {
        QTest::addColumn<bool>("free");
        QTest::addColumn<QSizeF>("size");
        QTest::addRow("in its proportions") << false << QSizeF(300, 150);
        QTest::addRow("freely") << true << QSizeF(300, 110);
    }
    void A_Picture_Is_Pulled_By_Its_Corner()
    {
        QFETCH(bool, free);
        QFETCH(QSizeF, size);
        Desk desk;
        desk.Put_Picture(200, 100);
        const QTextCursor begin(desk.editor.document());
        const QPoint corner =
            desk.editor.cursorRect(begin).topLeft() + QPoint(200, desk.editor.cursorRect(begin).height());
        QTest::mouseClick(desk.editor.viewport(), Qt::LeftButton, {}, corner - QPoint(50, 50));
        QVERIFY(desk.editor.Has_Picture());
        desk.Pull(corner, QPoint(100, 10), free ? Qt::ShiftModifier : Qt::NoModifier);
        QCOMPARE(Pictures::Size_Of(desk.editor.textCursor()), size);
    }

    void A_Column_Is_Pulled_By_Its_Line()
    {
        Desk desk;
        Table_Commands::Insert(desk.editor, {2, 2, true});
        const QTextTable *table = desk.editor.textCursor().currentTable();
        const auto left = [&](int column) {
            return desk.editor.cursorRect(table->cellAt(0, column).firstCursorPosition()).left();
        };
        const int before = left(1);
        desk.Pull(QPoint(before - 4, desk.editor.cursorRect().center().y()), QPoint(-100, 0), Qt::NoModifier);
        QVERIFY2(std::abs(left(1) - (before - 100)) <= 4, qPrintable(QString::number(left(1) - before)));
        desk.editor.undo();
        QCOMPARE(left(1), before);
    }

    void Paper_Shows_Where_Pages_Begin()
    {
        Desk desk(u"line\n"_s.repeated(200));
        const QList<int> starts = Printing::Page_Starts(*desk.editor.document());
        QVERIFY(starts.size() >= 2 && std::is_sorted(starts.begin(), starts.end()));
        QVERIFY(starts.first() > 5 * 30 && starts.first() < 5 * 90 && starts.first() % 5 == 0);
    }

    void Special_Characters_Go_Into_The_Text()
    {
        Desk desk;
        {
            Frm_SpecChar form(desk.editor, &desk.window);
            form.show();
            auto &groups = Get<QComboBox>(form, "Comb_Group");
            auto &characters = Get<QListWidget>(form, "Lst_Chars");
            for (int group = 0; group < groups.count(); ++group) {
                groups.setCurrentIndex(group);
                QVERIFY2(characters.count() > 10 && !groups.itemText(group).isEmpty(),
                         qPrintable(groups.itemText(group)));
            }
            groups.setCurrentIndex(1);
            characters.setCurrentRow(1);
            QCOMPARE(Get<QLabel>(form, "Lab_Code").text(), u"U+00D7"_s);
            Get<QAbstractButton>(form, "cmdOK").click();
            QVERIFY(form.isVisible()); // several go in one after another
        }
        QCOMPARE(desk.editor.toPlainText(), u"×"_s);
        QCOMPARE(Get<QComboBox>(Frm_SpecChar(desk.editor, &desk.window), "Comb_Group").currentIndex(), 1);
    }

    void Prints_To_A_File()
    {
        Desk desk(u"line\n"_s.repeated(200));
        Frm_Print form(*desk.editor.document(), u"a/b: c"_s, &desk.window);
        form.show();
        QTRY_VERIFY(Get<QLabel>(form, "Lab_Page").text().startsWith(u"1 / "_s));
        const int pages = Get<QLabel>(form, "Lab_Page").text().section(u' ', -1).toInt();
        QVERIFY(pages > 2 && !Get<QToolButton>(form, "Cmd_Previous").isEnabled());
        Get<QToolButton>(form, "Cmd_Next").click();
        QVERIFY(Get<QLabel>(form, "Lab_Page").text().startsWith(u"2 / "_s));
        const QString path = m_program->Path(u"out"_s);
        m_program->prompts.Expect(Pack_Text("Frm_Print", "_Save_Pdf"), path);
        Get<QAbstractButton>(form, "Cmd_Pdf").click();
        QFile pdf(path + u".pdf"_s);
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        QCOMPARE(pdf.readAll().count("/Type /Page\n"), pages);
    }
};

QTEST_MAIN(Test_Editor_Forms)
#include "test_editor_forms.moc"
