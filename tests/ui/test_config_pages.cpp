// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/settings.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/kit/command_keys.h"
#include "ui/kit/key_field.h"
#include "ui/program/frm_config.h"
#include "ui/program/frm_login.h"
#include "ui/program/frm_user_change_pwd.h"
#include "ui/program/frm_users.h"
#include "ui/window/frm_main.h"

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Review_Page = 6, Keys_Page = 7, Tools_Page = 8;

void Choose_Command(Frm_Config &form, const QString &name)
{
    Get<QLineEdit>(form, "Txt_Key_Find").setText(name);
}

void Press(QWidget &field, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(&field, key, modifiers);
}

/// Controls that a person uses, and what a screen reader is told of them.
void Walk(QAccessibleInterface *part, QStringList &nameless, int &seen)
{
    static const QList<QAccessible::Role> used{
        QAccessible::CheckBox,     QAccessible::RadioButton, QAccessible::Button,
        QAccessible::EditableText, QAccessible::ComboBox,    QAccessible::SpinBox,
        QAccessible::List,         QAccessible::Tree,        QAccessible::Table};
    for (int i = 0; i < part->childCount(); ++i) {
        QAccessibleInterface *child = part->child(i);
        if (child == nullptr || !child->isValid())
            continue;
        const QObject *object = child->object();
        const bool isPart = object == nullptr || object->objectName().startsWith(u"qt_");
        if (!isPart && child->role() == QAccessible::NoRole)
            nameless << object->objectName() + u" has no role"_s;
        if (!isPart && used.contains(child->role())) {
            ++seen;
            if (child->text(QAccessible::Name).trimmed().isEmpty())
                nameless << object->objectName();
            continue; // its own parts speak through it
        }
        Walk(child, nameless, seen);
    }
}
} // namespace

class Test_Config_Pages : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init()
    {
        m_program.emplace();
        Load_Root_Facts();
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void Prescribed_Keys_Do_Not_Meet()
    {
        Frm_Main window;
        window.New_Document(); // whose pages bring commands
        const QList<Command_Keys::Command> commands = Command_Keys::Of_Program().Commands();
        QVERIFY(commands.size() > 100);
        for (qsizetype i = 0; i < commands.size(); ++i) {
            for (qsizetype j = i + 1; j < commands.size(); ++j) {
                if (!Command_Keys::Meet(commands[i].place, commands[j].place))
                    continue;
                for (const QKeySequence &key : commands[i].prescribed)
                    QVERIFY2(!commands[j].prescribed.contains(key),
                             qPrintable(commands[i].name + u' ' + commands[j].name + u' ' + key.toString()));
            }
        }
    }

    void Keys_Are_Changed_And_In_Force_At_Once()
    {
        const Frm_Main window;
        const auto &reload = *window.findChild<QAction *>(u"Mnu_Reload"_s);
        const auto &print = *window.findChild<QAction *>(u"Mnu_Print"_s);
        Frm_Config form;
        auto &apply = Get<QPushButton>(form, "Cmd_Apply");
        auto &key = Get<Key_Field>(form, "Txt_Key");
        auto &take = Get<QPushButton>(form, "Cmd_Key_Take");
        Get<QListWidget>(form, "Lst_Pages").setCurrentRow(Keys_Page);
        Choose_Command(form, u"Mnu_Reload"_s);
        QCOMPARE(key.Key(), QKeySequence(Qt::Key_F5));
        Press(key, Qt::Key_A); // writes text
        QVERIFY(!apply.isEnabled() && !Get<QLabel>(form, "Lab_Conflict").text().isEmpty());
        Press(key, Qt::Key_P, Qt::ControlModifier);
        QVERIFY(Get<QLabel>(form, "Lab_Conflict").text().contains(u"打印"_s) && !take.isHidden());
        QVERIFY(!apply.isEnabled()); // neither has changed
        Choose_Command(form, u"Mnu_Import_File"_s);
        QVERIFY(take.isHidden());
        Press(key, Qt::Key_F7); // another change goes on
        QVERIFY(apply.isEnabled());
        Choose_Command(form, u"Mnu_Reload"_s);
        Press(key, Qt::Key_P, Qt::ControlModifier);
        take.click();
        apply.click();
        QCOMPARE(reload.shortcuts(), QList<QKeySequence>{QKeySequence(u"Ctrl+P"_s)});
        QCOMPARE(print.shortcuts(), QList<QKeySequence>());
        QCOMPARE(GetIni(u"Keys"_s, u"Mnu_Reload"_s), u"Ctrl+P"_s);
        QCOMPARE(GetIni(u"Keys"_s, u"Mnu_Import_File"_s), u"F7"_s);
        QCOMPARE(GetIni(u"Keys"_s, u"Mnu_Print"_s), u"None"_s);

        Get<QPushButton>(form, "Cmd_Default").click();
        Get<QPushButton>(form, "Cmd_OK").click();
        QCOMPARE(reload.shortcut(), QKeySequence(Qt::Key_F5));
        QCOMPARE(print.shortcut(), QKeySequence(u"Ctrl+P"_s));
        QCOMPARE(GetIni(u"Keys"_s, u"Mnu_Print"_s), QString());
    }

    void Commands_Are_Found_By_Name_And_By_Key()
    {
        const Frm_Main window;
        Frm_Config form;
        const auto &list = Get<QTreeWidget>(form, "Lsv_Keys");
        const auto shown = [&] {
            QStringList captions;
            for (int i = 0; i < list.topLevelItemCount(); ++i) {
                if (!list.topLevelItem(i)->isHidden())
                    captions << list.topLevelItem(i)->text(0);
            }
            return captions;
        };
        Press(Get<Key_Field>(form, "Txt_Key_Press"), Qt::Key_F5);
        QVERIFY(shown().contains(u"刷新"_s) && shown().size() < 4);
        Get<QPushButton>(form, "Cmd_Key_All").click();
        Get<QLineEdit>(form, "Txt_Key_Find").setText(u"Mnu_OnLock"_s);
        QCOMPARE(shown(), QStringList(u"一键锁定"_s));
        Get<QLineEdit>(form, "Txt_Search").setText(u"一键锁定"_s); // the search of all settings goes to it as well
        QCOMPARE(list.currentItem()->text(0), u"一键锁定"_s);
    }

    void Keys_In_A_File_Are_Taken_As_Far_As_They_Are_Some()
    {
        m_program->Write(u"Config.ini"_s, m_program->Bytes(u"Config.ini"_s) +
                                              "[Keys]\r\nMnu_Reload=Ctrl+R; Ctrl+R; nonsense+; F8; F9; F10; F11\r\n"
                                              "Mnu_Print=\xff\xfe\r\nCmd_Bold=Ctrl+Alt+Shift+B\r\nNobody=Ctrl+1\r\n");
        const Frm_Main window;
        QVERIFY(window.findChild<QAction *>(u"Mnu_Reload"_s)->shortcuts().contains(QKeySequence(u"Ctrl+R"_s)));
        QVERIFY(window.findChild<QAction *>(u"Mnu_Reload"_s)->shortcuts().size() <= 4);
        QCOMPARE(window.findChild<QAction *>(u"Mnu_Print"_s)->shortcut(), QKeySequence(u"Ctrl+P"_s));
        QCOMPARE(window.findChild<QAction *>(u"Cmd_Bold"_s)->shortcut(), QKeySequence(u"Ctrl+Alt+Shift+B"_s));
    }

    void Review_Groups_Are_Edited()
    {
        Sql_Run(u"delete * from tab_gene"_s);
        Sql_Run(
            u"insert into tab_gene(gene_id,gene_name,gene_num,gene_per,gene_default) values (1,'Used',1.6,'D','X')"_s);
        Add_Document(u"{1}"_s, u"001"_s, u"A title"_s);
        Sql_Run(u"update Code_Info set Code_ReadDate_Gene_Id=1"_s);
        Frm_Config form;
        Get<QListWidget>(form, "Lst_Pages").setCurrentRow(Review_Page);
        auto &groups = Get<QTreeWidget>(form, "Lsv_Gene");
        auto &name = Get<QLineEdit>(form, "Txt_Gene_Name");
        auto &factor = Get<QLineEdit>(form, "Txt_Gene_Num");
        QCOMPARE(name.text(), u"Used"_s);
        m_program->prompts.Expect(u"是否删除？Used"_s, u"yes"_s);
        m_program->prompts.Expect(u"Used已经使用啦"_s, u"ok"_s);
        Get<QPushButton>(form, "Cmd_Gene_Del").click();
        name.setText(u" "_s);
        m_program->prompts.Expect(u"请输入显示的名称。"_s, u"ok"_s);
        Get<QPushButton>(form, "Cmd_Gene_Add").click();
        name.setText(u"Weekly"_s);
        factor.setText(u"2.1"_s);
        Get<QComboBox>(form, "Cob_Gene_Num").setCurrentIndex(2);
        Get<QPushButton>(form, "Cmd_Gene_Add").click();
        QCOMPARE(groups.topLevelItemCount(), 2);
        QCOMPARE(groups.topLevelItem(1)->text(1), u"1.7"_s);
        groups.topLevelItem(1)->setCheckState(0, Qt::Checked);
        QCOMPARE(groups.topLevelItem(0)->checkState(0), Qt::Unchecked);
        groups.topLevelItem(1)->setCheckState(0, Qt::Unchecked); // one is always the default
        QCOMPARE(groups.topLevelItem(1)->checkState(0), Qt::Checked);
        QCOMPARE(Sql_Cell(u"select count(*) from tab_gene"_s), u"1"_s);
        Get<QPushButton>(form, "Cmd_Apply").click();
        QCOMPARE(Sql_Rows(u"select gene_name,gene_per,gene_default from tab_gene order by gene_name"_s),
                 (QList<QStringList>{{u"Used"_s, u"D"_s, u""_s}, {u"Weekly"_s, u"W"_s, u"X"_s}}));
    }

    void Tools_Of_The_User_Are_In_The_Menu()
    {
        const QString program = m_program->Path(u"make a mark"_s);
        m_program->Write(u"make a mark"_s, "#!/bin/sh\ntouch started\n");
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        const Frm_Main window;
        Frm_Config form;
        Get<QListWidget>(form, "Lst_Pages").setCurrentRow(Tools_Page);
        auto &add = Get<QPushButton>(form, "Cmd_Tool_Add");
        Get<QLineEdit>(form, "Txt_Tool_Name").setText(u"A & B"_s);
        for (const QString &path : {QString(), u"/nowhere/at all"_s, program + u'|'}) {
            Get<QLineEdit>(form, "Txt_Tool_Path").setText(path);
            QVERIFY(!add.isEnabled());
            QCOMPARE(Get<QLabel>(form, "Lab_Tool_Reason").text().isEmpty(), path.isEmpty());
        }
        Get<QLineEdit>(form, "Txt_Tool_Path").setText(program);
        add.click();
        Get<QPushButton>(form, "Cmd_Apply").click();
        auto &menu = Get<QMenu>(window, "Mnu_Tools");
        emit menu.aboutToShow();
        emit menu.aboutToShow(); // once each
        QList<QAction *> entries = menu.actions();
        entries.removeIf([](const QAction *action) { return action->text() != u"A && B"; });
        QCOMPARE(entries.size(), 1);
        entries.first()->trigger();
        QTRY_VERIFY(QFile::exists(m_program->Path(u"started"_s)));
        QVERIFY(QFile::remove(program));
        m_program->prompts.Expect(u"make a mark"_s, u"ok"_s);
        entries.first()->trigger();
        Config().User_Tools = u"half|||x"_s;
        emit menu.aboutToShow();
        QVERIFY(!menu.actions().last()->property("User_Tool").isValid());
    }

    void A_Screen_Reader_Is_Told_Each_Control()
    {
        const Frm_Main window; // with the commands
        QStringList nameless;
        for (const QString &language : {u"CHINESE"_s, u"English"_s}) {
            Language().Load(Pack_Folder(), language);
            int seen = 0;
            Frm_Config options;
            frmLogin login;
            Frm_Users users;
            Frm_User_Change_PWD password;
            for (QDialog *form : std::initializer_list<QDialog *>{&options, &login, &users, &password}) {
                form->show();
                Walk(QAccessible::queryAccessibleInterface(form), nameless, seen);
            }
            auto &pages = Get<QListWidget>(options, "Lst_Pages");
            for (int i = 1; i < pages.count(); ++i) {
                pages.setCurrentRow(i);
                Walk(QAccessible::queryAccessibleInterface(&options), nameless, seen);
            }
            QVERIFY(seen > 100);
        }
        nameless.removeDuplicates();
        QCOMPARE(nameless.join(u' '), QString());
    }
};

QTEST_MAIN(Test_Config_Pages)
#include "test_config_pages.moc"
