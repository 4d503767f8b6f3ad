// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/folders/tree_commands.h"
#include "ui/folders/tree_pane.h"
#include "ui/window/frm_main.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <optional>

using namespace Qt::StringLiterals;

/// A document that is open while its folder moves, is renamed or deleted is saved into the folder as it is then.
class Test_Folder_Following : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::unique_ptr<Frm_Main> m_window;

    [[nodiscard]] Tree_Pane &Pane() const { return *m_window->findChild<Tree_Pane *>(); }
    [[nodiscard]] Frm_Doc_Standard &Document() const { return *m_window->findChild<Frm_Doc_Standard *>(); }
    void Run(const QString &id, const char *action) const
    {
        QVERIFY(Pane().Select_Folder(id));
        Pane().findChild<QAction *>(QLatin1String(action))->trigger();
    }

private slots:
    void init()
    {
        m_program.emplace();
        Config().CH_Tree_Comfirm = u"0"_s;
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Folder(u"001001"_s, u"Plans"_s);
        Add_Folder(u"002"_s, u"Home"_s);
        Add_Document(u"{1}"_s, u"001001"_s, u"one"_s);
        Load_Root_Facts();
        m_window = std::make_unique<Frm_Main>();
        m_window->Open_Document(u"{1}"_s);
        QCOMPARE(Document().findChild<QComboBox *>(u"Comb_Cate"_s)->currentData().toString(), u"001001"_s);
    }
    void cleanup()
    {
        m_window.reset();
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void A_Save_Goes_Where_The_Folder_Is_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("folder");
        QTest::addRow("folder moved") << u"C_001"_s << u"002001001"_s;
        QTest::addRow("document moved") << u"LIST{1}/"_s << u"002"_s;
        QTest::addRow("folder deleted") << u""_s << u"000001001"_s;
    }
    void A_Save_Goes_Where_The_Folder_Is()
    {
        QFETCH(QString, what);
        QFETCH(QString, folder);
        if (what.isEmpty()) {
            m_program->prompts.Expect(u"回收站"_s, u"yes"_s);
            Run(u"001"_s, "Mnu_Node_Del");
        } else {
            Pane().Commands().Take_Drop({u"C_002"_s, true, {}, {}, what});
        }
        auto &title = *Document().findChild<QLineEdit *>(u"Txt_Title"_s);
        title.setText(u"two"_s);
        QVERIFY(Document().Data_Update());
        QCOMPARE(Sql_Rows(u"select Code_Title,Cate_ID from Code_Info"_s), QList<QStringList>({{u"two"_s, folder}}));
    }

    /// A document that goes for good with its folder takes its tab along, but never text that is not stored.
    void A_Document_Goes_With_Its_Folder_data()
    {
        QTest::addColumn<bool>("typed");
        QTest::addRow("nothing typed") << false;
        QTest::addRow("unsaved text") << true;
    }
    void A_Document_Goes_With_Its_Folder()
    {
        QFETCH(bool, typed);
        if (typed)
            Document().findChild<QTextEdit *>(u"Txt_Content"_s)->insertPlainText(u"two"_s);
        for (int i = 0; i < 2; ++i)
            m_program->prompts.Expect(u"回收站"_s, u"yes"_s);
        Run(u"001"_s, "Mnu_Node_Del");
        Run(u"000"_s, "Mnu_Node_Clean");
        QCOMPARE(Sql_Cell(u"select count(*) from Code_Info"_s), u"0"_s);
        QCOMPARE(m_window->findChild<Document_Tabs *>()->count(), typed ? 2 : 1);
        if (typed)
            QVERIFY(Document().findChild<QTextEdit *>(u"Txt_Content"_s)->toPlainText().contains(u"two"_s));
    }

    void New_Names_Are_Offered()
    {
        QVERIFY(Pane().Select_Folder(u"001001"_s));
        emit Pane().Model().Label_Edited(Pane().Selected_Node(), u"Ideas"_s);
        QCOMPARE(Document().findChild<QComboBox *>(u"Comb_Cate"_s)->currentText().trimmed(), u"├ Ideas"_s);
    }

    /// A locked folder that was used last is marked at the start, and no password is asked behind the splash.
    void A_Locked_Last_Folder_Waits()
    {
        Sql_Run(u"update Cate_Info set Cate_pass='x' where Cate_ID='002'"_s);
        Pane().Update_Tree();
        Config().Tree_LastKey = u"002"_s;
        m_window->Select_Last_Folder();
        QCOMPARE(m_window->Selected_Folder(), u"002"_s);
    }
};

QTEST_MAIN(Test_Folder_Following)
#include "test_folder_following.moc"
