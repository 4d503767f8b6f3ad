// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/process_state.h"
#include "support/test_program.h"
#include "users/login.h"
#include "users/user_start.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_User_Start : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init() { m_program.emplace(); }
    void cleanup() { m_program.reset(); }

    /// Each row runs the start's three steps on a database whose users are `credentials` ("name:password:lock")
    /// and `profiles`.
    void A_Login_Is_Asked_For_data()
    {
        QTest::addColumn<QString>("last");
        QTest::addColumn<QStringList>("credentials");
        QTest::addColumn<QStringList>("profiles");
        QTest::addColumn<bool>("dialog");
        QTest::addColumn<QString>("user");
        QTest::addColumn<QStringList>("usersAfter");
        const QStringList ann{u"ann:x:"_s};
        QTest::addRow("new database") << u""_s << QStringList() << QStringList() << false << u"Zelqor"_s
                                      << QStringList(u"Zelqor"_s);
        QTest::addRow("no name, users") << u""_s << ann << QStringList(u"ann"_s) << true << u""_s
                                        << QStringList(u"ann"_s);
        QTest::addRow("unknown name, users")
            << u"bob"_s << ann << QStringList(u"ann"_s) << true << u"bob"_s << QStringList(u"ann"_s);
        QTest::addRow("password") << u"ann"_s << ann << QStringList(u"ann"_s) << true << u"ann"_s
                                  << QStringList(u"ann"_s);
        QTest::addRow("neither password nor lock") << u"ann"_s << QStringList(u"ann: : "_s) << QStringList(u"ann"_s)
                                                   << false << u"ann"_s << QStringList(u"ann"_s);
        QTest::addRow("lock alone") << u"ann"_s << QStringList(u"ann::1"_s) << QStringList(u"ann"_s) << true << u"ann"_s
                                    << QStringList(u"ann"_s);
        QTest::addRow("credentials without profile go")
            << u"ann"_s << ann << QStringList() << false << u"Zelqor"_s << QStringList(u"Zelqor"_s);
        QTest::addRow("profile without credentials goes")
            << u"ann"_s << QStringList(u"bob::"_s) << QStringList({u"ann"_s, u"bob"_s}) << true << u"ann"_s
            << QStringList(u"bob"_s);
    }
    void A_Login_Is_Asked_For()
    {
        QFETCH(QString, last);
        QFETCH(QStringList, credentials);
        QFETCH(QStringList, profiles);
        QFETCH(bool, dialog);
        QFETCH(QString, user);
        QFETCH(QStringList, usersAfter);
        for (const QString &row : credentials) {
            const QStringList parts = row.split(u':');
            Sql_Run(u"insert into user_pass(user_name,user_pass,user_lock) values ('%1','%2','%3')"_s.arg(
                parts[0], parts[1], parts[2]));
        }
        for (const QString &name : profiles)
            Sql_Run(u"insert into user_list(user_name) values ('%1')"_s.arg(name));
        WriteIni(u"Col"_s, u"Login_Uname"_s, last);
        Read_Last_User();
        Repair_Users();
        QCOMPARE(Decide_Login() == Login_Need::Dialog, dialog);
        QCOMPARE(App().Curr_User, user);
        for (const char *table : {"user_pass", "user_list"}) {
            QStringList names;
            for (const QStringList &row : Sql_Rows(u"select user_name from %1"_s.arg(QLatin1String(table))))
                names << row[0];
            QCOMPARE(names, usersAfter);
        }
    }

    void A_Name_Is_Never_More_Than_A_Name()
    {
        const QString name = u"x' union select user_name,'','','','' from user_pass where ''='"_s;
        QVERIFY_EXCEPTION_THROWN(Try_Login(name, {}), Run_Time_Error);
        QVERIFY(GetIni(u"Col"_s, u"Login_Uname"_s).isEmpty());
    }

    void The_Default_User_Is_Made_Once()
    {
        for (int start = 0; start < 2; ++start) {
            Read_Last_User();
            Repair_Users();
            QVERIFY(Decide_Login() == Login_Need::None);
            WriteIni(u"Col"_s, u"Login_Uname"_s, App().Curr_User);
        }
        QCOMPARE(Sql_Rows(u"select User_Name,User_Pass,User_Lock,User_Start,User_End from User_pass"_s),
                 QList<QStringList>({{u"Zelqor"_s, u""_s, u""_s, u"2008-11-30"_s, u"2019-12-01"_s}}));
        QCOMPARE(App().Root_Icon, u"HOME.ICO"_s);
    }

    void An_Empty_Name_Takes_The_Roots()
    {
        App().Root_Name = u"Home"_s;
        Read_Last_User();
        QCOMPARE(App().Curr_User, u"Home"_s);
        QCOMPARE(GetIni(u"Col"_s, u"Login_Uname"_s), u"Home"_s);
    }

    /// Where the repair could not remove them, credentials without a profile are those of the default user.
    void A_Missing_Profile_Is_Made_For_The_Default_User()
    {
        Sql_Run(u"insert into user_pass(user_name,user_pass) values ('ann','x')"_s);
        App().Curr_User = u"ann"_s;
        QVERIFY(Decide_Login() == Login_Need::None);
        QCOMPARE(App().Curr_User, u"Zelqor"_s);
        QCOMPARE(Sql_Cell(u"select user_name from user_list"_s), u"Zelqor"_s);
    }
};

QTEST_GUILESS_MAIN(Test_User_Start)
#include "test_user_start.moc"
