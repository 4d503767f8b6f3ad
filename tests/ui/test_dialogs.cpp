// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/system_log.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/desktop/single_instance.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "storage/database_choice.h"
#include "storage/database_lifecycle.h"
#include "support/controls.h"
#include "ui/program/frm_about.h"
#include "ui/program/frm_database.h"
#include "ui/program/frm_db_log.h"
#include "ui/program/frm_login.h"
#include "ui/program/frm_update_235.h"
#include "ui/program/frm_user_change_pwd.h"
#include "ui/program/frm_users.h"
#include "users/scrambling.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

namespace
{
bool programEnded = false;

void Click(const QWidget &form, const char *button)
{
    Get<QAbstractButton>(form, button).click();
}

void Run(const QString &statement)
{
    Run_Statement(statement, App().Conn_Str);
}

void Add_User(const QString &name, const QString &storedPassword, const QString &lock)
{
    Recordset users;
    users.CursorType = Cursor_Type::Keyset;
    users.LockType = Lock_Type::Optimistic;
    users.Open(QStringLiteral("select * from user_pass"), App().Conn_Str);
    users.AddNew();
    users[QStringLiteral("user_name")].Set(name);
    users[QStringLiteral("user_pass")].Set(storedPassword);
    users[QStringLiteral("user_lock")].Set(lock);
    users.Update();
    users.Close();
    Run(QStringLiteral("insert into user_list(user_name) values ('%1')").arg(name));
}

QString Written(const char *key)
{
    return GetIni(QStringLiteral("DataBase"), QLatin1String(key));
}

/// The password whose stored form is the single letter that the login takes for a lock.
QString Password_Stored_As_X()
{
    for (char letter = ' '; letter <= '~'; ++letter) {
        if (Encode(QString(QLatin1Char(letter))) == QLatin1String("X"))
            return QString(QLatin1Char(letter));
    }
    return {};
}
} // namespace

class Test_Dialogs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void Login_data();
    void Login();
    void Login_Keeps_The_Dialog_Open_On_No();
    void Login_Offers_Users();
    void Database_Is_Changed();
    void Unusable_Database_Is_Refused_data();
    void Unusable_Database_Is_Refused();
    void Relative_Path_Follows_Its_Box();
    void Log_Is_Filtered_data();
    void Log_Is_Filtered();
    void Every_Control_Is_Named();
    void One_Instance_For_Each_Directory();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

void Test_Dialogs::init()
{
    programEnded = false;
    frmLogin::End_Program = [] {
        programEnded = true;
    };
    Machine::Fix_Clock(QDateTime(QDate(2024, 3, 15), QTime(10, 30)));
    m_directory = std::make_unique<QTemporaryDir>();
    App().App_Path = m_directory->path() + QLatin1Char('/');
    Load_Built_In_Language();
    GetConfigInfo(Database_Steps_For_Start());
    QVERIFY(App().Conn_OK);
    App().Date_Delim = QStringLiteral("#");
    App().Curr_User = QStringLiteral("nobody");
    Add_User(QStringLiteral("Zelqor"), {}, {});
    Add_User(QStringLiteral("Anna"), Encode(QStringLiteral("Se cret1")), QStringLiteral("X"));
    Add_User(QStringLiteral("Xaver"), QStringLiteral("X"), {});
}

void Test_Dialogs::cleanup()
{
    Database_Engine::Let_Go();
    m_directory.reset();
}

void Test_Dialogs::Login_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("refusal"); ///< "" when the login succeeds

    const QString wrong = QStringLiteral("_ErrorPass");
    QTest::newRow("an empty password is one") << "Zelqor"
                                              << ""
                                              << "";
    QTest::newRow("the lock flag stops nobody") << "Anna"
                                                << "Se cret1"
                                                << "";
    QTest::newRow("blanks around the name") << "  Anna "
                                            << "Se cret1"
                                            << "";
    QTest::newRow("wrong password") << "Anna"
                                    << "se cret1" << wrong;
    QTest::newRow("no password") << "Anna"
                                 << "" << wrong;
    QTest::newRow("unknown user") << "Bertha"
                                  << "Se cret1" << wrong;
    QTest::newRow("stored password X is locked") << "Xaver" << Password_Stored_As_X() << "_ErrorLock";
    QTest::newRow("Chinese character") << "Anna" << QStringLiteral("密码") << "_SpecChar";
}

void Test_Dialogs::Login()
{
    QFETCH(QString, name);
    QFETCH(QString, password);
    QFETCH(QString, refusal);
    Prompt_Script script;
    frmLogin form(nullptr, QStringLiteral("Zelqor"));
    form.show();
    Get<QComboBox>(form, "txtUserName").setEditText(name);
    Get<QLineEdit>(form, "txtPassword").setText(password);
    if (!refusal.isEmpty())
        script.Expect(Language().GetString(QStringLiteral("frmLogin"), refusal), QStringLiteral("ok"));
    QTest::keyClick(&Get<QLineEdit>(form, "txtPassword"), Qt::Key_Return);

    const bool loggedIn = refusal.isEmpty();
    QCOMPARE(script.Problems(), QStringList());
    QCOMPARE(form.isVisible(), !loggedIn);
    QCOMPARE(App().Curr_User, loggedIn ? name.trimmed() : QStringLiteral("nobody"));
    QCOMPARE(GetIni(QStringLiteral("Col"), QStringLiteral("Login_Uname")), loggedIn ? name.trimmed() : QString());
    Recordset log;
    log.Open(QStringLiteral("select type_id, log_text from tab_log"), App().Conn_Str);
    QCOMPARE(log.Eof(), !loggedIn);
    if (loggedIn)
        QCOMPARE(log[0].Text() + log[1].Text(), QStringLiteral("2%1Login....").arg(name.trimmed()));
}

void Test_Dialogs::Login_Keeps_The_Dialog_Open_On_No()
{
    Prompt_Script script;
    frmLogin form;
    form.show();
    script.Expect(QStringLiteral("您确认要退出吗？"), QStringLiteral("no"));
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(form.isVisible() && !programEnded);
    script.Expect(QStringLiteral("您确认要退出吗？"), QStringLiteral("yes"));
    Click(form, "cmdCancel");
    QVERIFY(programEnded);
    QCOMPARE(script.Problems(), QStringList());
}

void Test_Dialogs::Login_Offers_Users()
{
    WriteIni(QStringLiteral("Col"), QStringLiteral("Login_Uname"), QStringLiteral("Xaver"));
    const frmLogin form;
    const auto &names = Get<QComboBox>(form, "txtUserName");
    QStringList offered;
    for (int i = 0; i < names.count(); ++i)
        offered << names.itemText(i);
    QCOMPARE(offered.join(QLatin1Char(' ')), QStringLiteral("Anna Xaver Zelqor"));
    QCOMPARE(names.currentText(), QStringLiteral("Xaver"));
}

void Test_Dialogs::Database_Is_Changed()
{
    const QString other = App().App_Path + QStringLiteral("other.db");
    QVERIFY(CreateDataBase(other));
    Prompt_Script script;
    QWidget window;
    Frm_Database form(&window);
    form.show();
    QSignalSpy changed(&form, &Frm_Database::Database_Changed);
    script.Expect(QStringLiteral("选择数据库"), other);
    Click(form, "Cmd_BrowseDateBase");
    Click(form, "Opt_DB_SQL_1");
    script.Expect(Pack_Text("Frm_Database", "_SaveOK"), QStringLiteral("ok"));
    Click(form, "Cmd_Apply");

    QCOMPARE(script.Problems(), QStringList());
    QCOMPARE(changed.count(), 1);
    QCOMPARE(App().Conn_Str, File_Conn_Str(other));
    QCOMPARE(App().Date_Delim, QStringLiteral("'"));
    QCOMPARE(Written("DATABASE_NAME"), QStringLiteral("\\other.db"));
    QCOMPARE(Written("Op_DB_Type") + Written("Op_DB_Sql") + Written("CH_PATH"), QStringLiteral("011"));
    QVERIFY(form.isVisible()); // the window behind goes on with the new database
    Click(form, "Cmd_Cancel");
    QCOMPARE(form.result(), static_cast<int>(QDialog::Accepted));
    GetConfigInfo(Database_Steps_For_Start());
    QVERIFY(App().Conn_OK);
    QCOMPARE(Database_Path(), other);
}

void Test_Dialogs::Unusable_Database_Is_Refused_data()
{
    QTest::addColumn<QString>("file"); ///< in the program directory
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("dataSource");

    QTest::newRow("missing file") << "none.db" << QByteArray() << false;
    QTest::newRow("garbage") << "garbage.db" << QByteArray(4096, 'g') << false;
    QTest::newRow("no source file") << "none.udl" << QByteArray() << true;
    QTest::newRow("senseless source file") << "odbc.udl" << QByteArray("[oledb]\r\n") << true;
}

void Test_Dialogs::Unusable_Database_Is_Refused()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QFETCH(bool, dataSource);
    if (!content.isEmpty()) {
        QFile written(App().App_Path + file);
        QVERIFY(written.open(QIODevice::WriteOnly) && written.write(content) == content.size());
    }
    const QString connStr = App().Conn_Str;
    const QString name = Written("DATABASE_NAME");
    Prompt_Script script;
    Frm_Database form;
    form.show();
    QSignalSpy changed(&form, &Frm_Database::Database_Changed);
    Click(form, dataSource ? "Opt_DB_Type_1" : "Opt_DB_Type_0");
    Get<QLineEdit>(form, "Txt_NowDataBase").setText(file);
    script.Expect(QStringLiteral("当前数据库不可用,请重新填写!"), QStringLiteral("ok"));
    Click(form, "Cmd_Apply");

    QCOMPARE(script.Problems(), QStringList());
    QCOMPARE(changed.count(), 0);
    QCOMPARE(App().Conn_Str, connStr);
    QCOMPARE(Written("DATABASE_NAME") + Written("Op_DB_Type"), name + QLatin1Char('0'));
    QVERIFY(content.isEmpty() == !QFile::exists(App().App_Path + file));
    QVERIFY(form.isVisible());
}

void Test_Dialogs::Relative_Path_Follows_Its_Box()
{
    const Frm_Database form;
    const auto &path = Get<QLineEdit>(form, "Txt_NowDataBase");
    QCOMPARE(path.text(), QStringLiteral("\\data\\Zelqor.db"));
    Click(form, "Chk_Path");
    QCOMPARE(path.text(), App().App_Path + QStringLiteral("data/Zelqor.db"));
    Click(form, "Chk_Path");
    QCOMPARE(path.text(), QStringLiteral("\\data\\Zelqor.db"));
    QCOMPARE(Spelled_Path(QStringLiteral("/elsewhere/a.db"), true), QStringLiteral("/elsewhere/a.db"));
}

void Test_Dialogs::Log_Is_Filtered_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QDate>("first");
    QTest::addColumn<QDate>("last");
    QTest::addColumn<QString>("lines"); ///< number, type and text of each

    const QDate day(2024, 3, 15);
    QTest::newRow("all of a day, the latest first") << "" << day << day << "1 删除 night|2 创建 morning";
    QTest::newRow("part of a name") << "nn" << day << day << "1 创建 morning";
    QTest::newRow("two days") << "" << day.addDays(-1) << day << "1 删除 night|2 创建 morning|3 常规 eve";
    QTest::newRow("nothing") << "" << day.addDays(1) << day.addDays(2) << "";
}

void Test_Dialogs::Log_Is_Filtered()
{
    QFETCH(QString, user);
    QFETCH(QDate, first);
    QFETCH(QDate, last);
    QFETCH(QString, lines);
    const auto write = [](const QString &name, const QDateTime &time, Log_Type type, const QString &text) {
        App().Curr_User = name;
        Machine::Fix_Clock(time);
        Add_Log(type, text);
    };
    const QDate day(2024, 3, 15);
    write(QStringLiteral("Anna"), day.startOfDay(), Log_Type::Created, QStringLiteral("morning"));
    write(QStringLiteral("Zelqor"), QDateTime(day, QTime(23, 59, 59)), Log_Type::Deleted, QStringLiteral("night"));
    write(QStringLiteral("Zelqor"), QDateTime(day.addDays(-1), QTime(23, 0)), Log_Type::General, QStringLiteral("eve"));

    Prompt_Script script;
    const Frm_DbLog form;
    QCOMPARE(Get<QLineEdit>(form, "Txt_End").text(), QStringLiteral("2024-03-14")); // the clock's today
    Get<QComboBox>(form, "Cob_User").setEditText(user);
    Get<QLineEdit>(form, "Txt_Start").setText(QStringLiteral("no day"));
    script.Expect(QStringLiteral("请输入正确的日期"), QStringLiteral("ok"));
    Click(form, "Cmd_Apply");
    Get<QLineEdit>(form, "Txt_Start").setText(first.toString(QStringLiteral("yyyy/M/d")));
    Get<QLineEdit>(form, "Txt_End").setText(last.toString(Qt::ISODate));
    Click(form, "Cmd_Apply");
    const QAbstractItemModel &model = *Get<QTreeView>(form, "Lsv_Log").model();
    QStringList shown;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < 3; ++column)
            cells << model.index(row, column).data().toString();
        shown << cells.join(QLatin1Char(' '));
    }
    QCOMPARE(shown.join(QLatin1Char('|')), lines);
    QCOMPARE(script.Problems(), QStringList());
}

/// Every control that the keyboard reaches has a name for those who cannot see it.
void Test_Dialogs::Every_Control_Is_Named()
{
    frmLogin login;
    Frm_Database database;
    Frm_DbLog log;
    Frm_Update_235 upgrade;
    Frm_Users users;
    Frm_User_Change_PWD password;
    Frm_About about(Frm_About::Role::About);
    for (QWidget *form :
         std::initializer_list<QWidget *>{&login, &database, &log, &about, &upgrade, &users, &password}) {
        for (const QWidget *control : form->findChildren<QWidget *>()) {
            const QString name = control->objectName();
            if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) || control->focusPolicy() == Qt::NoFocus)
                continue;
            auto *spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(control));
            const bool named = spoken != nullptr && !spoken->text(QAccessible::Name).isEmpty();
            QVERIFY2(named || name == QLatin1String("Login_Uname"), qPrintable(form->objectName() + name));
        }
    }
}

void Test_Dialogs::One_Instance_For_Each_Directory()
{
    const QString here = m_directory->path();
    QTemporaryDir elsewhere;
    QProcess holder;
    holder.start(QStringLiteral("flock"), {QStringLiteral("--no-fork"), here, QStringLiteral("sh"),
                                           QStringLiteral("-c"), QStringLiteral("echo held; exec cat")});
    if (!holder.waitForStarted())
        QSKIP("no flock program here");
    QVERIFY(holder.waitForReadyRead());
    QVERIFY(!Single_Instance(here).Is_Only_One());
    QVERIFY(Single_Instance(elsewhere.path()).Is_Only_One());
    holder.kill();
    QVERIFY(holder.waitForFinished());

    Single_Instance first(here + QLatin1Char('/'));
    QVERIFY(first.Is_Only_One());
    QVERIFY(!Single_Instance(here).Is_Only_One());
    first.Release();
    QVERIFY(Single_Instance(here).Is_Only_One());
}

QTEST_MAIN(Test_Dialogs)
#include "test_dialogs.moc"
