// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/by_date_pane.h"
#include "ui/document_list_view.h"
#include "ui/frm_main.h"
#include "ui/left_tabs.h"
#include "ui/search_pane.h"
#include "ui/tree_pane.h"
#include "users/scrambling.h"

#include <QComboBox>
#include <QLabel>
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
