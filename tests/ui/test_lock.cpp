// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/kit/command_keys.h"
#include "ui/program/frm_login.h"
#include "ui/program/frm_users.h"
#include "ui/window/frm_main.h"
#include "ui/window/program_lock.h"
#include "users/user_list.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QWindow>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
frmLogin *Login()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *login = qobject_cast<frmLogin *>(window); login != nullptr && login->isVisible())
            return login;
    }
    return nullptr;
}

void Type_Login(const QString &name, const QString &password)
{
    Get<QComboBox>(*Login(), "txtUserName").setEditText(name);
    Get<QLineEdit>(*Login(), "txtPassword").setText(password);
    QTest::keyClick(Login(), Qt::Key_Return);
}

/// Only the login may be seen, and what it opens itself.
QStringList Seen()
{
    QStringList seen;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && !window->testAttribute(Qt::WA_DontShowOnScreen))
            seen << QLatin1String(window->metaObject()->className());
    }
    return seen;
}

void Press_Key(QWidget *window)
{
    QTest::keyClick(window, Qt::Key_L, Qt::ControlModifier | Qt::AltModifier);
    QCoreApplication::processEvents();
}
} // namespace

class Test_Lock : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::unique_ptr<Frm_Main> m_window;

private slots:
    void init()
    {
        m_program.emplace();
        for (const char *name : {"Anna", "Bea"}) {
            User user = Blank_User();
            user.name = QLatin1String(name);
            user.password = user.repeated = user.name + u" pw"_s;
            QCOMPARE(Add_User(user), User_Refusal::None);
        }
        App().Curr_User = u"Anna"_s;
        Add_Folder(u"001"_s, u"Work"_s);
        Load_Root_Facts();
        m_window = std::make_unique<Frm_Main>();
        m_window->show();
        m_window->New_Document();
    }
    void cleanup()
    {
        m_window.reset();
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    /// Locked from a dialog that waits for its answer, and left by another user.
    void Everything_Waits_Behind_The_Lock()
    {
        auto &content = Get<QTextEdit>(*m_window, "Txt_Content");
        content.insertPlainText(u"typed"_s);
        QPointer<QMessageBox> late;
        QTimer::singleShot(0, this, [&] {
            QWidget *dialog = QApplication::activeModalWidget();
            Get<QComboBox>(*dialog, "Cob_User").setEditText(u"half typed"_s);
            QMenu menu(dialog);
            menu.addAction(u"entry"_s);
            menu.popup({});
            Press_Key(&menu);
            QVERIFY(!menu.isVisible());
            QCOMPARE(Seen(), QStringList(u"frmLogin"_s));
            QVERIFY(m_window->windowHandle()->handle() == nullptr); // the desktop has forgotten it, and its name
            QVERIFY(!QDir(m_program->Path(u"data"_s)).entryList({u"*-drafts"_s}).isEmpty());

            late = new QMessageBox(QMessageBox::Warning, u"late"_s, u"late"_s, QMessageBox::Ok, Login());
            late->open();
            m_window->Bring_Back();
            QCoreApplication::processEvents();
            QCOMPARE(Seen(), QStringList(u"frmLogin"_s));

            m_program->prompts.Expect(u"用户或密码不正确"_s, u"ok"_s);
            Type_Login(u"Anna"_s, u"Bea pw"_s);
            m_program->prompts.Expect(u"用户或密码不正确"_s, u"ok"_s);
            Type_Login(u"Nobody"_s, u"x"_s);
            QVERIFY(!Get<QPushButton>(*Login(), "cmdOK").isEnabled()); // the second answer keeps one waiting
            QTRY_VERIFY(Get<QPushButton>(*Login(), "cmdOK").isEnabled());
            QCOMPARE(Seen(), QStringList(u"frmLogin"_s));
            Type_Login(u"Bea"_s, u"Bea pw"_s);
            QTRY_VERIFY(Login() == nullptr);
            QVERIFY(late != nullptr && late->isVisible());
            QCOMPARE(QApplication::activeModalWidget(), late.get());
            late->close();
            QVERIFY(m_window->isVisible());
            QCOMPARE(QApplication::activeModalWidget(), dialog);
            QCOMPARE(Get<QComboBox>(*dialog, "Cob_User").currentText(), u"half typed"_s);
            dialog->close();
        });
        Get<QAction>(*m_window, "Mnu_DbLog").trigger();
        QCOMPARE(App().Curr_User, u"Bea"_s);
        QCOMPARE(content.toPlainText(), u"typed"_s);
        QVERIFY(m_window->isVisible());
    }

    void Boxes_Are_Emptied_But_Not_Values()
    {
        auto &password = Get<QLineEdit>(*m_window, "Txt_Password");
        auto &find = Get<QComboBox>(*m_window, "Cob_FindKey");
        password.setText(u"of the document"_s);
        find.setEditText(u"secret plan"_s);
        m_window->Lock();
        QCOMPARE(find.currentText(), QString());
        QCOMPARE(password.text(), u"of the document"_s);
        Type_Login(u"Anna"_s, u"Anna pw"_s);
        QVERIFY(m_window->isVisible());
    }

    void The_Key_Is_The_One_That_Was_Chosen()
    {
        auto &keys = Command_Keys::Of_Program();
        keys.Change({{u"Mnu_OnLock"_s, {QKeySequence(u"Ctrl+F9"_s)}}});
        Press_Key(m_window.get());
        QVERIFY(Login() == nullptr);
        QTest::keyClick(m_window.get(), Qt::Key_F9, Qt::ControlModifier);
        QTRY_VERIFY(Login() != nullptr);
        Type_Login(u"Anna"_s, u"Anna pw"_s);
        keys.Change({{u"Mnu_OnLock"_s, {QKeySequence(u"Ctrl+Alt+L"_s)}}});
    }

    /// Whoever comes by reads how many, and not which.
    void What_Cannot_Be_Hidden_Is_Told()
    {
        Program_Lock lock(*m_window, *m_window->findChild<QAction *>(u"Mnu_OnLock"_s));
        lock.Left_Outside = [] {
            return QStringList{u"plan.docx"_s, u"list.xlsx"_s};
        };
        lock.Lock();
        const QString told = Get<QLabel>(*Login(), "Lab_Note").text();
        QVERIFY(told.contains(u'2') && !told.contains(u"plan"_s));
        Type_Login(u"Anna"_s, u"Anna pw"_s);
        QVERIFY(m_window->isVisible());
    }

    void Nobody_To_Come_Back_Locks_Nothing()
    {
        App().Curr_User = u"Nobody"_s;
        m_window->Lock();
        QVERIFY(Login() == nullptr && m_window->isVisible());
    }

    void Idle_Minutes_Lock_Only_Where_They_Are_Set()
    {
        auto &idle = Get<QTimer>(*m_window, "Idle");
        QTest::keyClick(m_window.get(), Qt::Key_Shift);
        QVERIFY(!idle.isActive());
        Config().Lock_Minutes = u"3"_s;
        QTest::keyClick(m_window.get(), Qt::Key_Shift);
        QCOMPARE(idle.interval(), 180'000);
        idle.start(1);
        QTRY_VERIFY(Login() != nullptr);
        Type_Login(u"Anna"_s, u"Anna pw"_s);
        QVERIFY(m_window->isVisible() && idle.isActive());
        Config().Lock_Minutes = u"0"_s;
    }

    /// The two clicks of a new user, and what each step tells.
    void Users_Are_Kept_In_Their_Form()
    {
        Frm_Users form;
        auto &fresh = Get<QPushButton>(form, "Cmd_New");
        auto &change = Get<QPushButton>(form, "Cmd_Apply");
        auto &name = Get<QLineEdit>(form, "Txt_User");
        auto &list = Get<QListWidget>(form, "Lsv_User");
        QCOMPARE(Get<QLineEdit>(form, "Txt_Pass").text(), u"Anna pw"_s);
        fresh.click();
        QCOMPARE(fresh.text(), u"保存"_s);
        QVERIFY(!change.isEnabled() && name.text().isEmpty());
        m_program->prompts.Expect(u"请输入用户名"_s, u"ok"_s);
        fresh.click();
        name.setText(u"Cleo"_s);
        m_program->prompts.Expect(u"成功增加用户：Cleo"_s, u"ok"_s);
        fresh.click();
        QCOMPARE(fresh.text(), u"新增"_s);
        QCOMPARE(list.count(), 3);
        list.setCurrentRow(2);
        QCOMPARE(name.text(), u"Cleo"_s);
        for (const QString &answer : {u"no"_s, u"yes"_s})
            m_program->prompts.Expect(u"确定要删除用户：Cleo"_s, answer);
        m_program->prompts.Expect(u"成功删除用户：Cleo"_s, u"ok"_s);
        Get<QPushButton>(form, "Cmd_Delete").click();
        Get<QPushButton>(form, "Cmd_Delete").click();
        QCOMPARE(list.count(), 2);
        QVERIFY(!change.isEnabled());
    }
};

QTEST_MAIN(Test_Lock)
#include "test_lock.moc"
