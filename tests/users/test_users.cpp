// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "platform/errors/run_time_error.h"
#include "support/test_program.h"
#include "users/login.h"
#include "users/scrambling.h"
#include "users/user_list.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
User New_User(const QString &name, const QString &password = {})
{
    User user = Blank_User();
    user.name = name;
    user.password = user.repeated = password;
    return user;
}

QList<QStringList> Stored()
{
    return Sql_Rows(u"select user_name, user_pass from user_pass order by user_name"_s) +
           Sql_Rows(u"select user_name, user_email from user_list order by user_name"_s);
}
} // namespace

class Test_Users : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init()
    {
        m_program.emplace();
        Sql_Run(u"delete from user_pass"_s);
        Sql_Run(u"delete from user_list"_s);
        QCOMPARE(Add_User(New_User(u"Anna"_s, u"old one"_s)), User_Refusal::None);
        App().Curr_User = u"Anna "_s;
    }
    void cleanup() { m_program.reset(); }

    /// A refused user leaves no row, whatever comes first of what is wrong with it is told.
    void A_User_Is_Added_Or_Refused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("repeated");
        QTest::addColumn<int>("others");
        QTest::addColumn<User_Refusal>("refusal");
        using enum User_Refusal;
        QTest::addRow("plain") << u" Bea "_s << u"p w"_s << u"p w"_s << 0 << None;
        QTest::addRow("no password") << u"Bea"_s << u""_s << u""_s << 0 << None;
        QTest::addRow("outer blanks of the password go") << u"Bea"_s << u" p"_s << u"p "_s << 0 << None;
        QTest::addRow("the sixth") << u"Bea"_s << u"p"_s << u"p"_s << 4 << None;
        QTest::addRow("the seventh") << u"Bea"_s << u"p"_s << u"p"_s << 5 << Too_Many;
        QTest::addRow("taken comes before too many") << u"Anna"_s << u"p"_s << u"p"_s << 5 << Exists;
        QTest::addRow("differ") << u"Bea"_s << u"p"_s << u"P"_s << 0 << Passwords_Differ;
        QTest::addRow("no name comes before differ") << u"  "_s << u"p"_s << u"P"_s << 0 << No_Name;
        QTest::addRow("Chinese comes before no name") << u""_s << u"密码"_s << u""_s << 0 << Special_Character;
    }
    void A_User_Is_Added_Or_Refused()
    {
        QFETCH(QString, name);
        QFETCH(QString, password);
        QFETCH(QString, repeated);
        QFETCH(int, others);
        QFETCH(User_Refusal, refusal);
        for (int i = 0; i < others; ++i)
            QCOMPARE(Add_User(New_User(u"user %1"_s.arg(i))), User_Refusal::None);
        const auto before = Stored();
        User user = New_User(name, password);
        user.repeated = repeated;
        user.locked = true;
        QCOMPARE(Add_User(user), refusal);
        if (refusal != User_Refusal::None) {
            QCOMPARE(Stored(), before);
            return;
        }
        QCOMPARE(Sql_Cell(u"select user_pass from user_pass where user_name='Bea'"_s), Encode(password.trimmed()));
        QCOMPARE(Try_Login(u"Bea"_s, password.trimmed()), Login_Result::Success); // locked in name only
    }

    void A_User_Is_Changed_Whole_Or_Not()
    {
        User user = New_User(u"Anna"_s, u"new \"one\""_s);
        user.start = u"2001-02-03"_s;
        user.end = {};
        user.title = u"Dr"_s;
        user.email = u"a@example.org"_s;
        QCOMPARE(Change_User(user), User_Refusal::None);
        const User read = Read_User(u"Anna"_s);
        QCOMPARE(read.password, user.password);
        QCOMPARE(QStringList({read.start, read.end, read.title, read.email, read.name2}),
                 QStringList({user.start, u""_s, user.title, user.email, u""_s}));
        const auto before = Stored();
        user.password = user.repeated = u"third"_s;
        user.title = QString(21, u'x'); // longer than its column, after the password was put
        QVERIFY_EXCEPTION_THROWN(Change_User(user), Run_Time_Error);
        QCOMPARE(Stored(), before);
        user.name = u"Nobody"_s;
        QCOMPARE(Change_User(user), User_Refusal::Unknown);
    }

    void The_Last_User_Stays()
    {
        QCOMPARE(May_Delete_User(), User_Refusal::Only_One);
        QCOMPARE(Add_User(New_User(u"Bea"_s)), User_Refusal::None);
        QCOMPARE(May_Delete_User(), User_Refusal::None);
        Delete_User(u"Anna"_s);
        QCOMPARE(User_Names(), QStringList(u"Bea"_s));
        QCOMPARE(Stored().size(), 2);
    }

    void A_Password_Is_Changed_data()
    {
        QTest::addColumn<QString>("old");
        QTest::addColumn<QString>("fresh");
        QTest::addColumn<QString>("repeated");
        QTest::addColumn<User_Refusal>("refusal");
        using enum User_Refusal;
        QTest::addRow("changed") << u"old one"_s << u"x"_s << u"x"_s << None;
        QTest::addRow("taken away") << u"old one"_s << u""_s << u""_s << None;
        QTest::addRow("wrong old one") << u"Old one"_s << u"x"_s << u"x"_s << Wrong_Old_Password;
        QTest::addRow("differ comes before wrong") << u"?"_s << u"x"_s << u"x "_s << Passwords_Differ;
        QTest::addRow("Chinese old one") << u"密"_s << u"x"_s << u"y"_s << Special_Character;
        QTest::addRow("Chinese new one") << u"old one"_s << u"密"_s << u"密"_s << Special_Character;
    }
    void A_Password_Is_Changed()
    {
        QFETCH(QString, old);
        QFETCH(QString, fresh);
        QFETCH(QString, repeated);
        QFETCH(User_Refusal, refusal);
        QCOMPARE(Change_Password(old, fresh, repeated), refusal);
        QCOMPARE(Read_User(u"Anna"_s).password, refusal == User_Refusal::None ? fresh : u"old one"_s);
        App().Curr_User = u"Nobody"_s;
        if (refusal == User_Refusal::None)
            QCOMPARE(Change_Password(fresh, old, old), User_Refusal::Wrong_Old_Password);
    }
};

QTEST_GUILESS_MAIN(Test_Users)
#include "test_users.moc"
