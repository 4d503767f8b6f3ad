// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/links.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/folders/tree_pane.h"
#include "ui/window/frm_main.h"

#include <QAction>
#include <QMenu>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QUrl>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Main_Window : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::unique_ptr<Frm_Main> m_window;

    /// Triggers an entry or a button and closes what it opens. @returns the name of the form that it opened
    QString Opened_By(const QString &action)
    {
        QString opened;
        QTimer::singleShot(0, this, [&] {
            QWidget *form = QApplication::activeModalWidget();
            if (form == nullptr)
                return;
            opened = QLatin1String(form->metaObject()->className());
            form->close();
        });
        Get<QAction>(*m_window, action.toLatin1()).trigger();
        QApplication::processEvents();
        return opened;
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
        Load_Root_Facts();
        m_window = std::make_unique<Frm_Main>();
        QVERIFY(Get<Tree_Pane>(*m_window, "Trv_Code_Class").Select_Folder(u"001"_s));
    }
    void cleanup()
    {
        m_window.reset();
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    /// The bar's key and the menu's entry delete what is chosen in the list, or the document on screen.
    void What_Is_Chosen_Is_Deleted()
    {
        for (const QString &id : {u"{1}"_s, u"{2}"_s, u"{3}"_s})
            Add_Document(id, u"001"_s, u"title of "_s + id);
        m_window->Reload_All();
        auto &list = Get<QTreeView>(*m_window, "Lsv_Code_Info");
        auto &form = *m_window->centralWidget();
        const auto left = [] {
            return Sql_Cell(u"select count(*) from Code_Info where Cate_ID='001'"_s);
        };
        Get<QAction>(*m_window, "DelCode").trigger();
        QVERIFY(m_window->statusBar()->currentMessage().contains(u"选择"_s));
        list.setCurrentIndex(list.model()->index(0, 0));
        m_program->prompts.Expect(u"放入回收站"_s, u"yes"_s);
        Get<QAction>(*m_window, "DelCode").trigger();
        QCOMPARE(left(), u"2"_s);
        list.selectAll();
        m_program->prompts.Expect(u"这 2 项"_s, u"no"_s);
        Get<QAction>(*m_window, "Mnu_Delete").trigger();
        m_window->Open_Document(u"{1}"_s);
        m_program->prompts.Expect(u"title of {1}"_s, u"yes"_s);
        Get<QToolButton>(form, "Cmd_Del").click();
        QCOMPARE(left(), u"1"_s);
    }

    void Buttons_Do_What_Their_Entries_Do_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addRow("AddClass") << u"Frm_AddClass_Ex"_s;
        QTest::addRow("AddSmallClass") << u"Frm_AddClass_Ex"_s;
        QTest::addRow("RenConf") << u"Frm_Config"_s;
        QTest::addRow("RenHelp") << u"Frm_About"_s;
    }
    void Buttons_Do_What_Their_Entries_Do()
    {
        QFETCH(QString, form);
        QCOMPARE(Opened_By(QLatin1String(QTest::currentDataTag())), form);
    }

    void An_Import_Is_Told_And_Logged()
    {
        m_program->Write(u"note.txt"_s, "a note");
        m_program->prompts.Expect(u"导入"_s, m_program->Path(u"note.txt"_s));
        Get<QAction>(*m_window, "Mnu_Import_File").trigger();
        const QString told = u"Work文件已成功导入"_s;
        QCOMPARE(Get<QStatusBar>(*m_window, "Sta_Bar").currentMessage(), told);
        QCOMPARE(Sql_Cell(u"select log_text from tab_log where type_id='5'"_s), told);
        Get<Tree_Pane>(*m_window, "Trv_Code_Class").Select_Folder({});
        m_program->prompts.Expect(u"请选择相应的文件夹"_s, u"ok"_s); // before a file is asked for
        Get<QAction>(*m_window, "ImportFile").trigger();
    }

    void Editing_Needs_A_Document()
    {
        for (const char *menu : {"Mnu_Edit", "Mnu_Insert", "Mnu_Format"}) {
            for (const QAction *action : Get<QMenu>(*m_window, menu).actions())
                QVERIFY2(!action->isEnabled() || action->isSeparator() || action->menu() != nullptr,
                         qPrintable(action->text()));
        }
    }

    void Find_Shows_The_Search()
    {
        Get<QAction>(*m_window, "Find").trigger();
        QCOMPARE(Get<QTabWidget>(*m_window, "Pic_On_Left").currentWidget()->objectName(), u"Left_Find"_s);
    }

    void Help_Opens_Its_File()
    {
        m_program->Write(u"help.chm"_s, "x");
        App().Help_File = App().App_Path + u"Help.chm"_s;
        QString opened;
        Links::Set_Opener([&](const QUrl &address) {
            opened = address.toLocalFile();
            return true;
        });
        QCOMPARE(Opened_By(u"RenHelp"_s), QString());
        QCOMPARE(opened, m_program->Path(u"help.chm"_s));
    }

    void No_Command_Takes_A_Key_Of_Typing()
    {
        for (const QAction *action : m_window->findChildren<QAction *>()) {
            if (action->shortcutContext() != Qt::WindowShortcut)
                continue;
            for (const QKeySequence::StandardKey key :
                 {QKeySequence::DeleteEndOfWord, QKeySequence::DeleteStartOfWord, QKeySequence::MoveToNextWord,
                  QKeySequence::MoveToPreviousWord, QKeySequence::SelectNextWord, QKeySequence::SelectPreviousWord,
                  QKeySequence::Delete, QKeySequence::Backspace}) {
                for (const QKeySequence &typed : QKeySequence::keyBindings(key))
                    QVERIFY2(!action->shortcuts().contains(typed), qPrintable(action->text()));
            }
        }
    }

    void A_Missing_Pack_Is_Recorded_Once_For_Each_Form()
    {
        m_window.reset();
        QVERIFY_EXCEPTION_THROWN(Language().Load(m_program->Path(u"Lang"_s), u"none"_s), Run_Time_Error);
        m_window = std::make_unique<Frm_Main>();
        QCOMPARE(m_program->Logged().count(u"Frm_Main\\Load_Lang"_s), 1);
        QCOMPARE(m_program->Logged().count(u"Frm_ListView\\Load_Lang"_s), 1);
    }
};

QTEST_MAIN(Test_Main_Window)
#include "test_main_window.moc"
