// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/folders/tree_pane.h"
#include "ui/lists/by_date_pane.h"
#include "ui/lists/document_list_view.h"
#include "ui/lists/search_pane.h"
#include "ui/window/frm_main.h"
#include "ui/window/left_tabs.h"
#include "users/scrambling.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

/// What the tabs beside the tree show in the list, and how it follows what is done elsewhere.
class Test_Left_Tabs : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::unique_ptr<Frm_Main> m_window;

    [[nodiscard]] QStringList Listed() const
    {
        const QAbstractItemModel &rows = *Get<Document_List_View>(*m_window, "Lsv_Code_Info").model();
        QStringList titles;
        for (int i = 0; i < rows.rowCount(); ++i)
            titles << rows.index(i, 3).data().toString();
        return titles;
    }
    void Show_Tab(const char *name) const
    {
        auto &tabs = Get<QTabWidget>(*m_window, "Pic_On_Left");
        tabs.setCurrentWidget(&Get<QWidget>(tabs, name));
    }
    void Search(const QString &key) const
    {
        auto &pane = *m_window->findChild<Search_Pane *>();
        QSignalSpy ended(&pane, &Search_Pane::Search_Ended);
        Get<QComboBox>(pane, "Cob_FindKey").setEditText(key);
        pane.Cmd_FindTxt();
        QVERIFY(ended.wait());
    }

private slots:
    void init()
    {
        m_program.emplace();
        Config().CH_Find = Config().CH_ByDate = u"1"_s;
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Folder(u"002"_s, u"Home"_s, -1, Scramble_Text(u"secret"_s));
        Add_Document(u"{1}"_s, u"001"_s, u"apple"_s, u"Code_Date=#2026-03-05#"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"apricot"_s, u"Code_Date=#2026-03-05#"_s);
        Add_Document(u"{3}"_s, u"002"_s, u"hidden"_s, u"Code_Date=#2026-03-05#"_s);
        Load_Root_Facts();
        m_window = std::make_unique<Frm_Main>();
    }
    void cleanup()
    {
        m_window.reset();
        QCOMPARE(m_program->prompts.Problems().join(u'\n'), QString());
        m_program.reset();
    }

    void Results_Stay_True()
    {
        Show_Tab("Left_Find");
        Search(u"ap"_s);
        QCOMPARE(Listed(), QStringList({u"apple"_s, u"apricot"_s}));
        Sql_Run(u"delete from Code_Info where Code_ID='{2}'"_s);
        Sql_Run(u"update Code_Info set Code_Title='grape' where Code_ID='{1}'"_s);
        for (int i = 0; i < 2; ++i) {
            Show_Tab("Left_Tree");
            Show_Tab("Left_Find");
            QCOMPARE(Listed(), QStringList(u"grape"_s));
        }
        m_window->Reload_All();
        m_window->Documents_Moved({u"{1}"_s}, u"002"_s); // found in any folder
        QCOMPARE(Listed(), QStringList(u"grape"_s));
        QCOMPARE(Get<QLabel>(*m_window, "Lab_Page_Infor_0").text(), u"1"_s);
        auto &tabs = *m_window->findChild<Left_Tabs *>();
        tabs.Stop_Search(); // none is running
        QCOMPARE(Listed(), QStringList(u"grape"_s));
        tabs.Forget_Search();
        QCOMPARE(Listed(), QStringList());
    }

    /// Rows come while a search runs, and what is chosen stays; the end has the numbers.
    void Results_Grow()
    {
        Show_Tab("Left_Find");
        Search(u"ap"_s);
        auto &pane = *m_window->findChild<Search_Pane *>();
        auto &list = Get<Document_List_View>(*m_window, "Lsv_Code_Info");
        const auto result = std::make_shared<Search_Result>();
        const auto row = [](int number) {
            List_Row made;
            made.tag = u"{%1}"_s.arg(number);
            made.texts = QStringList(QString::number(number));
            return made;
        };
        for (int rows = 2; rows <= 4; ++rows) {
            while (static_cast<int>(result->found.rows.size()) < rows)
                result->found.rows.push_back(row(static_cast<int>(result->found.rows.size())));
            if (rows == 4)
                result->found.info.unlisted = 3;
            emit pane.Search_Goes_On(result);
            QCOMPARE(list.model()->rowCount(), rows);
            if (rows == 2)
                list.selectAll();
            QCOMPARE(list.Selected_Ids(), QStringList({u"{0}"_s, u"{1}"_s}));
            QCOMPARE(Get<QWidget>(*m_window, "Pic_More").isVisibleTo(m_window.get()), rows == 4);
        }
        result->found.rows.insert(result->found.rows.begin(), row(9));
        list.setCurrentIndex(list.model()->index(1, 0));
        emit pane.Search_Goes_On(result);
        QCOMPARE(list.currentIndex().row(), 2);
        QSignalSpy ended(&pane, &Search_Pane::Search_Ended);
        Get<QPushButton>(*m_window, "Cmd_More").click();
        QVERIFY(ended.wait());
        QCOMPARE(Listed(), QStringList({u"apple"_s, u"apricot"_s}));
    }

    void A_Password_Is_Asked_When_Its_Folder_Is_Chosen()
    {
        auto &tree = *m_window->findChild<Tree_Pane *>();
        m_program->prompts.Expect(u"密码"_s, u""_s);
        QVERIFY(tree.Select_Folder(u"002"_s));
        QCOMPARE(Listed(), QStringList());
        const auto hint = [this] {
            return Get<Document_List_View>(*m_window, "Lsv_Code_Info").Empty_Text();
        };
        const QString locked = hint();
        QVERIFY(locked.contains(u"密码"_s));
        QVERIFY(tree.Select_Folder(u"000"_s));
        QVERIFY(hint() != locked);
        Config().Tree_LastKey = u"002"_s;
        m_window->Select_Last_Folder();
        QCOMPARE(hint(), locked);
        m_window->Document_Changed(u"{1}"_s); // a save elsewhere
        QCOMPARE(Listed(), QStringList());
        m_program->prompts.Expect(u"密码"_s, u"secret"_s);
        m_window->Reload_All();
        QCOMPARE(Listed(), QStringList(u"hidden"_s));
        // Another folder is marked while the list is filled anew.
        QVERIFY(tree.Mark_Folder(u"001"_s));
        m_window->Document_Changed(u"{1}"_s);
        QCOMPARE(Listed(), QStringList(u"hidden"_s));
        QCOMPARE(tree.Accepted_Password(u"001"_s) + tree.Accepted_Password(u"002"_s), u"secret"_s);
    }

    /// Why a list is empty is told in words of its own.
    void Empty_Lists_Differ()
    {
        auto &tree = *m_window->findChild<Tree_Pane *>();
        QSet<QString> texts;
        const auto note = [&] {
            QCOMPARE(Listed(), QStringList());
            texts << Get<Document_List_View>(*m_window, "Lsv_Code_Info").Empty_Text();
        };
        for (const QString &last : {u""_s, u"999"_s, u"002"_s}) { // nothing, a folder that is gone, a locked one
            Config().Tree_LastKey = last;
            m_window->Select_Last_Folder();
            QCOMPARE(tree.Has_Selection(), last == u"002");
            note();
        }
        QVERIFY(tree.Select_Folder(u"000"_s));
        note();
        Config().Cob_OrderBy = u"99"_s;
        QVERIFY(tree.Select_Folder(u"001"_s));
        note();
        QCOMPARE(texts.size(), 4);
        QVERIFY(!texts.contains(QString()));
    }

    /// Whatever tab is on screen, the list has no row of a document that went, and a folder that went gives way.
    void The_List_Follows_Folders_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("tab");
        QTest::addColumn<QStringList>("listed");
        for (const QString &tab : {u"Left_Tree"_s, u"Left_ByDate"_s, u"Left_Find"_s}) {
            const bool tree = tab == u"Left_Tree";
            QTest::addRow("delete, %s", qPrintable(tab))
                << u"Mnu_Node_Del"_s << tab << (tree ? QStringList(u"outer"_s) : QStringList({u"outer"_s, u"inner"_s}));
            QTest::addRow("empty the bin, %s", qPrintable(tab))
                << u"Mnu_Node_Clean"_s << tab << QStringList(u"outer"_s);
        }
    }
    void The_List_Follows_Folders()
    {
        QFETCH(QString, command);
        QFETCH(QString, tab);
        QFETCH(QStringList, listed);
        const bool clean = command == u"Mnu_Node_Clean";
        const QString outer = clean ? u"000"_s : u"001"_s;
        Sql_Run(u"delete from Code_Info"_s);
        Add_Folder(outer + u"001"_s, u"inner"_s);
        Add_Document(u"{4}"_s, clean ? u"001"_s : outer, u"outer"_s, u"Code_Date=#2026-03-05#"_s);
        Add_Document(u"{5}"_s, outer + u"001"_s, u"inner"_s, u"Code_Date=#2026-03-05#"_s);
        Config().Cob_OrderBy = u"4"_s;
        Config().ShowLow = u"TRUE"_s;
        m_window->Reload_All();
        auto &tree = *m_window->findChild<Tree_Pane *>();
        QVERIFY(tree.Select_Folder(outer + u"001"_s));
        Show_Tab(qPrintable(tab));
        auto &dates = *m_window->findChild<By_Date_Pane *>();
        if (tab == u"Left_ByDate") // the only year
            dates.setCurrentIndex(dates.model()->index(0, 0, dates.model()->index(0, 0)));
        else if (tab == u"Left_Find")
            Search(u"er"_s);
        const QStringList before = Listed();
        QVERIFY(before.contains(u"inner"_s));
        m_program->prompts.Expect({}, u"yes"_s);
        Get<QAction>(*m_window, qPrintable(command)).trigger();
        if (clean && tab == u"Left_Tree")
            listed.clear(); // the bin
        QCOMPARE(Listed(), listed);
        QVERIFY(Listed() != before || !clean);
    }

    void Dates_Follow_Documents()
    {
        Show_Tab("Left_ByDate");
        const auto year = [this](int at) {
            const QAbstractItemModel &years = *m_window->findChild<By_Date_Pane *>()->model();
            return years.index(at, 0, years.index(0, 0)).data().toString();
        };
        const QString before = year(0) + year(1);
        Add_Document(u"{4}"_s, u"001"_s, u"old"_s, u"Code_Date=#2024-01-02#"_s);
        m_window->Document_Changed(u"{4}"_s);
        m_window->Folder_Changed(u"001"_s);
        QTRY_VERIFY((year(0) + year(1)).contains(u"2024"_s));
        QVERIFY(!before.contains(u"2024"_s));
        Show_Tab("Left_Tree");
        Sql_Run(u"delete from Code_Info where Code_ID='{4}'"_s);
        m_window->Folder_Changed(u"001"_s);
        Show_Tab("Left_ByDate");
        QCOMPARE(year(0) + year(1), before);
    }
};

QTEST_MAIN(Test_Left_Tabs)
#include "test_left_tabs.moc"
