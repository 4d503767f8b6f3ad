// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/editor_commands.h"
#include "editor/text_editor.h"
#include "support/controls.h"
#include "support/no_shell.h"
#include "support/test_program.h"
#include "ui/document/bookmark_menu.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_bookmark_admin.h"
#include "ui/document/frm_doc_standard.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Bookmark_Form : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    const QString m_id = u"{1}"_s;

    static void Type(QWidget &form, const char *box, const QString &text) { Get<QLineEdit>(form, box).setText(text); }
    static void Press(QWidget &form, const char *button) { Get<QPushButton>(form, button).click(); }
    [[nodiscard]] QString Stored() const
    {
        QStringList all;
        for (const QStringList &row :
             Sql_Rows(u"select tag_name,tag_lineno from tab_tag where code_id='{1}' order by order_id"_s))
            all << row.join(QString());
        return all.join(u' ');
    }
    void Store(int count) const
    {
        Bookmark_List list;
        for (int i = 1; i <= count; ++i)
            list.Add({u"mark %1 &"_s.arg(i), QString::number(i), {}, {}});
        QVERIFY(list.Store(m_id));
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Folder"_s);
        Add_Document(m_id, u"001"_s, u"A title"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        QCOMPARE(m_program->Logged(), QStringList());
        m_program.reset();
    }

    void The_List_Is_Stored_On_Closing()
    {
        Frm_BookMark_Admin form({{}, u"7"_s, u"chosen"_s, u"A title"_s});
        QVERIFY(form.Load(m_id));
        m_program->prompts.Expect(u"请输入书签名称。"_s, u"ok"_s);
        Press(form, "Cmd_Add");
        Type(form, "Txt_Tag_Name", u"a"_s);
        Press(form, "Cmd_Add");
        Type(form, "Txt_Tag_Name", u"b"_s);
        Press(form, "Cmd_Add");
        m_program->prompts.Expect(u"书签名称：a 已经存在，是否替换？"_s, u"no"_s);
        Type(form, "Txt_Tag_Name", u"a"_s);
        Type(form, "Txt_LineNo", u"9"_s);
        Press(form, "Cmd_Add");
        Press(form, "Cmd_Tag_Up"); // the row of b is still the selected one
        QCOMPARE(Stored(), QString());

        m_program->prompts.Expect(u"请输入正确的行号"_s, u"ok"_s);
        QTest::keyClicks(&Get<QLineEdit>(form, "Txt_LineNo"), u"x"_s);
        QCOMPARE(Get<QLineEdit>(form, "Txt_LineNo").text(), u"7"_s);
        Type(form, "Txt_Tag_Name", u"typed"_s);
        m_program->prompts.Expect(u"typed"_s, u"yes"_s);
        Press(form, "Cmd_Exit");
        QCOMPARE(Stored(), u"b7 a7 typed7"_s);

        Frm_BookMark_Admin again({});
        QVERIFY(again.Load(m_id));
        auto &list = Get<QTreeView>(again, "LV_Tag");
        list.setCurrentIndex(list.model()->index(1, 0));
        QCOMPARE(Get<QLineEdit>(again, "Txt_Selected").text(), u"chosen"_s);
        Type(again, "Txt_LineNo", u"12"_s);
        Press(again, "Cmd_Tag_Update");
        list.setCurrentIndex(list.model()->index(0, 0));
        m_program->prompts.Expect(u"书签名称：b 是否删除？"_s, u"yes"_s);
        Press(again, "Cmd_Tag_Delete");
        Press(again, "Cmd_Exit");
        QCOMPARE(Stored(), u"a12 typed7"_s);
    }

    void What_Cannot_Be_Stored_Keeps_The_Form_Open()
    {
        Frm_BookMark_Admin form({u"a"_s, u"1"_s, {}, {}});
        QVERIFY(form.Load(m_id));
        Press(form, "Cmd_Add");
        form.show();
        Sql_Run(u"drop table tab_tag"_s);
        m_program->prompts.Expect(u"书签未能保存"_s, u"no"_s);
        form.close();
        QVERIFY(form.isVisible());
        m_program->prompts.Expect(u"书签未能保存"_s, u"yes"_s);
        form.close();
        QVERIFY(!form.isVisible());
        QCOMPARE(m_program->Logged().size(), 2);
        m_program.emplace();
    }

    void The_Menu_Goes_To_The_Lines_Of_The_Document_On_Screen()
    {
        Store(300);
        QWidget window;
        No_Shell shell;
        Document_Tabs tabs(shell, &window);
        tabs.Add_List(new QWidget, u"List"_s);
        QMenu menu;
        Bookmark_Menu bookmarks(menu, tabs, window);
        bookmarks.Add_To_Menu();
        QCOMPARE(bookmarks.findChildren<QAction *>(u"mnuTagGoto"_s).size(), 0);
        tabs.Open(m_id);
        emit menu.aboutToShow();
        QVERIFY(menu.actions().size() < 20);
        QCOMPARE(window.findChild<QMenu *>(u"mnuTag_More"_s)->actions().size(), 288);
        const QList<QAction *> entries = bookmarks.findChildren<QAction *>(u"mnuTagGoto"_s);
        QCOMPARE(entries.size(), 300);
        QCOMPARE(entries[1]->text(), u"mark 2 &&"_s);

        Text_Editor &body = *tabs.Current_Document()->Commands().Editors().first();
        body.setPlainText(u"one\ntwo\nthree"_s);
        entries[1]->trigger();
        QCOMPARE(body.Line_Number(), 2);
        QCOMPARE(body.extraSelections().size(), 1);
        QTRY_VERIFY(body.extraSelections().isEmpty());
        m_program->prompts.Expect(u"请输入正确的行号"_s, u"ok"_s);
        entries[3]->trigger();
        QCOMPARE(body.Line_Number(), 2);

        tabs.Open_New(u"ADDCODE"_s, u"001"_s);
        m_program->prompts.Expect(u"请保存后，再设置书签。"_s, u"ok"_s);
        bookmarks.mnuTag_Add_Call();
        emit menu.aboutToShow();
        QCOMPARE(bookmarks.findChildren<QAction *>(u"mnuTagGoto"_s).size(), 0);
    }
};

QTEST_MAIN(Test_Bookmark_Form)
#include "test_bookmark_form.moc"
