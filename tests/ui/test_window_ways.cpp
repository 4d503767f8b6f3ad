// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/settings.h"
#include "documents/document_store.h"
#include "support/controls.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/folders/tree_commands.h"
#include "ui/folders/tree_pane.h"
#include "ui/lists/document_list_view.h"
#include "ui/lists/search_pane.h"
#include "ui/window/frm_main.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <optional>

using namespace Qt::StringLiterals;

/// The ways through the main window, and back.
class Test_Window_Ways : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::unique_ptr<Frm_Main> m_window;

    [[nodiscard]] Tree_Pane &Tree() const { return Get<Tree_Pane>(*m_window, "Trv_Code_Class"); }
    [[nodiscard]] Document_List_View &List() const { return Get<Document_List_View>(*m_window, "Lsv_Code_Info"); }
    void Open_Window()
    {
        Load_Root_Facts();
        m_window = std::make_unique<Frm_Main>();
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void Take_Back() const
    {
        auto &undo = Get<QPushButton>(*m_window, "Cmd_Undo_Last");
        QVERIFY(undo.isVisible());
        undo.click();
        QVERIFY(!undo.isVisible() || !undo.text().isEmpty());
    }

private slots:
    void init()
    {
        m_program.emplace();
        Config().CH_Tree_Comfirm = u"0"_s;
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Folder(u"002"_s, u"Home"_s);
        Add_Document(u"{1}"_s, u"001"_s, u"apple"_s);
        Add_Document(u"{2}"_s, u"002"_s, u"apricot"_s);
    }
    void cleanup()
    {
        m_window.reset();
        QCOMPARE(m_program->prompts.Problems().join(u'\n'), QString());
        m_program.reset();
    }

    /// From each area F6 leads to the next one that there is, and Shift+F6 back.
    void F6_Goes_Round()
    {
        Open_Window();
        QVERIFY(Tree().Select_Folder(u"001"_s));
        const auto area = [this]() -> QString {
            const QWidget *focus = QApplication::focusWidget();
            for (const char *name : {"Pic_On_Left", "Txt_Search", "TabS_Header", "Tab_Right"}) {
                const auto *root = m_window->findChild<QWidget *>(QLatin1String(name));
                if (root != nullptr && (root == focus || root->isAncestorOf(focus)))
                    return QLatin1String(name);
            }
            return {};
        };
        const auto round = [&](Qt::KeyboardModifiers modifiers, int steps) {
            QStringList areas;
            for (int i = 0; i < steps; ++i) {
                QTest::keyClick(m_window.get(), Qt::Key_F6, modifiers);
                areas << area();
            }
            return areas.join(u' ');
        };
        QTest::keyClick(m_window.get(), Qt::Key_1, Qt::AltModifier);
        QCOMPARE(round({}, 3), u"Tab_Right Txt_Search Pic_On_Left"_s);
        QCOMPARE(round(Qt::ShiftModifier, 3), u"Txt_Search Tab_Right Pic_On_Left"_s);
    }

    /// A key that is being typed is searched after a moment; leaving the search brings back what was listed.
    void Typing_Searches()
    {
        Open_Window();
        QVERIFY(Tree().Select_Folder(u"001"_s));
        auto &box = Get<QLineEdit>(*m_window, "Txt_Search");
        QSignalSpy ended(m_window->findChild<Search_Pane *>(), &Search_Pane::Search_Ended);
        box.setFocus();
        QTest::keyClick(&box, Qt::Key_A);
        QVERIFY(!ended.wait(2 * Search_Pane::Typing_Pause)); // one Latin letter finds everything
        QTest::keyClick(&box, Qt::Key_P);
        QVERIFY(ended.wait());
        QCOMPARE(List().model()->rowCount(), 2);
        QVERIFY(Get<QLabel>(*m_window, "Lab_Heading").text().contains(u"ap"_s));
        QVERIFY(box.hasFocus());
        QTest::keyClick(&box, Qt::Key_Escape);
        QCOMPARE(List().model()->rowCount(), 1);
        QVERIFY(!Get<QWidget>(*m_window, "Pic_Heading").isVisible());
        QCOMPARE(Get<QTabWidget>(*m_window, "Pic_On_Left").currentWidget()->objectName(), u"Left_Tree"_s);
    }

    void What_Was_Done_Is_Taken_Back_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QString>("done");
        const QString folders = u"select Cate_ID from Code_Info where Code_ID='{1}'"_s;
        QTest::addRow("a move") << u"move"_s << folders << u"002"_s;
        QTest::addRow("a deletion") << u"delete"_s << folders << u"000"_s;
        QTest::addRow("a new name") << u"rename"_s << u"select Cate_Name from Cate_Info where Cate_ID='001'"_s
                                    << u"Play"_s;
    }
    void What_Was_Done_Is_Taken_Back()
    {
        QFETCH(QString, what);
        QFETCH(QString, statement);
        Open_Window();
        QVERIFY(Tree().Select_Folder(u"001"_s));
        const QString before = Sql_Cell(statement);
        if (what == u"move") {
            Drop drop;
            drop.target = u"C_002"_s;
            drop.onNode = true;
            drop.documents = QStringList(u"{1}"_s);
            Tree().Commands().Take_Drop(drop);
        } else if (what == u"delete") {
            m_program->prompts.Expect(u"apple"_s, u"yes"_s);
            m_window->Delete_Documents({u"{1}"_s}, Asked_In::List);
        } else {
            Tree().model()->setData(Tree().currentIndex(), u"Play"_s, Qt::EditRole);
        }
        QTEST(Sql_Cell(statement), "done");
        Take_Back();
        QCOMPARE(Sql_Cell(statement), before);
        QCOMPARE(List().model()->rowCount(), 1);
    }

    void An_Empty_Library_Begins_With_A_Choice()
    {
        Sql_Run(u"delete from Code_Info"_s);
        Sql_Run(u"delete from Cate_Info where Cate_ID <> '000'"_s);
        Open_Window();
        QVERIFY(Get<QWidget>(*m_window, "First_Steps").isVisible());
        Get<QToolButton>(*m_window, "Cmd_First_Note").click();
        QCOMPARE(Sql_Cell(u"select count(*) from Cate_Info"_s), u"2"_s);
        QCOMPARE(Get<QTabWidget>(*m_window, "Tab_Right").count(), 2);
        QVERIFY(!m_window->Selected_Folder().isEmpty());
        Get<QTabWidget>(*m_window, "Tab_Right").setCurrentIndex(0);
        QVERIFY(!Get<QWidget>(*m_window, "First_Steps").isVisible());
    }

    void Tabs_Come_Back_Where_They_Are_Wanted()
    {
        for (const bool wanted : {false, true}) {
            Open_Window();
            Get<QAction>(*m_window, "Mnu_Tabs_Back").setChecked(wanted);
            m_window->Open_Document(u"{1}"_s);
            m_window->Open_Document(u"{2}"_s);
            Sql_Run(u"delete from Code_Info where Code_ID='{2}'"_s);
            m_window->Save_Left_Side();
            Open_Window();
            m_window->Show_As_Kept();
            auto &tabs = Get<QTabWidget>(*m_window, "Tab_Right");
            QTest::qWait(10);
            QCOMPARE(tabs.count(), wanted ? 2 : 1);
            QCOMPARE(tabs.currentIndex(), 0);
            Add_Document(u"{2}"_s, u"002"_s, u"apricot"_s);
        }
    }

    /// Wherever it was, a window comes back wholly on the screen.
    void The_Window_Comes_Back_On_The_Screen_data()
    {
        QTest::addColumn<QRect>("kept"); // pixels
        QTest::addRow("off to the right") << QRect(700, 300, 600, 400);
        QTest::addRow("above") << QRect(10, -300, 600, 400);
        QTest::addRow("larger than the screen") << QRect(-50, -50, 5000, 3000);
        QTest::addRow("on a screen that is gone") << QRect(9000, 9000, 600, 400);
    }
    void The_Window_Comes_Back_On_The_Screen()
    {
        QFETCH(QRect, kept);
        const auto keep = [](const char *key, int pixels) {
            WriteIni(u"Settings"_s, QLatin1String(key), QString::number(pixels * 15));
        };
        keep("MainLeft", kept.x());
        keep("MainTop", kept.y());
        keep("MainWidth", kept.width());
        keep("MainHeight", kept.height());
        WriteIni(u"Settings"_s, u"WindowState"_s, u"3"_s);
        Load_Root_Facts();
        m_window = std::make_unique<Frm_Main>();
        QVERIFY(m_window->screen()->availableGeometry().contains(m_window->geometry()));
    }

    void A_Place_Is_Found_By_What_Is_Remembered_Of_It_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("found");
        QTest::addColumn<QString>("title"); // of the window then
        QTest::addRow("a document") << u"pric"_s << u"apricot"_s << u"apricot"_s;
        QTest::addRow("a folder") << u"wor"_s << u"Work"_s << u"Work"_s;
        QTest::addRow("a command that does not apply") << u"close tab"_s << u"关闭标签页"_s << u"Zelqor"_s;
    }
    void A_Place_Is_Found_By_What_Is_Remembered_Of_It()
    {
        QFETCH(QString, typed);
        QFETCH(QString, found);
        QFETCH(QString, title);
        Open_Window();
        QTimer::singleShot(0, m_window.get(), [&] {
            auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            auto &places = Get<QTreeWidget>(*box, "LV_Places");
            Get<QLineEdit>(*box, "Txt_Place").setText(typed.startsWith(u"close"_s) ? found : typed);
            QTRY_VERIFY(places.topLevelItemCount() > 0 && places.topLevelItem(0)->text(0) == found);
            QTest::keyClick(&Get<QLineEdit>(*box, "Txt_Place"), Qt::Key_Return);
            QCOMPARE(box->isVisible(), title == u"Zelqor"_s);
            if (box->isVisible())
                box->reject();
        });
        m_window->findChild<QAction *>(u"Mnu_Anywhere"_s)->trigger();
        QVERIFY2(m_window->windowTitle().startsWith(title), qPrintable(m_window->windowTitle()));
    }

    /// Each score brings the next document, and what was only read goes.
    void What_Is_Due_Comes_One_After_The_Other()
    {
        Sql_Run(u"insert into tab_Gene (Gene_Id,Gene_Name,Gene_Num,Gene_Per,Gene_Default) "
                "values (7,'days',1.5,'D','X')"_s);
        QStringList due;
        for (const QString &text : {u"one"_s, u"two"_s}) {
            Test_Form form(text);
            QVERIFY(AddCodeContent_Ex_Standard(form, u"0"_s));
            due << form.code_id;
        }
        due.sort();
        Sql_Run(
            u"update Code_Info set Code_ReadDateNext='2020-01-01', Code_ReadDate_Gene_Id=7 where Code_Type='RTF'"_s);
        Open_Window();
        const auto &tabs = Get<QTabWidget>(*m_window, "Tab_Right");
        QStringList seen;
        m_window->findChild<QAction *>(u"Mnu_Review"_s)->trigger();
        while (tabs.count() > 1 && seen.size() < 5) {
            seen << m_window->Document_On_Screen();
            QTest::keyClick(tabs.currentWidget(), Qt::Key_F5, Qt::ControlModifier);
            QTRY_VERIFY(m_window->Document_On_Screen() != seen.last());
        }
        seen.sort();
        QCOMPARE(seen, due);
    }
};

QTEST_MAIN(Test_Window_Ways)
#include "test_window_ways.moc"
