// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "core/system_log.h"
#include "support/test_program.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Logs : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init() { m_program.emplace(); }
    void cleanup() { m_program.reset(); }

    void A_Record_Is_Appended_And_The_Error_Cleared()
    {
        Log_Mark(u"a clean start"_s);
        QCOMPARE(m_program->Bytes(u"Error.log"_s), QByteArray());
        const QByteArray record =
            " \r\n     Version = " + Version_Digits().toUtf8() +
            "\r\n     Number = -2147217865\r\nDescription = 没有表 'x'\r\n     Source = Main()\r\n"
            "       Time = 2026-03-05 10:20:30\r\n \r\n----------------------------\r\n";
        for (int i = 1; i <= 2; ++i) {
            Set_Pending(Run_Time_Error(Error_Number::Db_Missing_Table, u"没有表 'x'"_s));
            Log_Mark_Off(u"nothing"_s);
            QCOMPARE(Err().number, Error_Number::Db_Missing_Table);
            Log_Mark(u"Main()"_s);
            Log_Mark(u"a second mark"_s);
            QCOMPARE(m_program->Bytes(u"Error.log"_s), record.repeated(i));
        }
        QVERIFY(Version_Digits().toInt() > 0);
    }

    void A_Log_That_Cannot_Be_Written_Is_Silent()
    {
        App().App_Path = m_program->Path(u"missing/"_s);
        Set_Pending(Run_Time_Error(53, u"text"_s));
        Error_Log(u"source"_s);
        QCOMPARE(Err().number, 0);
    }

    void A_Trap_Answers_Empty_And_Records()
    {
        QString reported;
        const auto fail = []() -> QString {
            throw Run_Time_Error(75, u"no access"_s, Failure::Path_Access);
        };
        QCOMPARE(Trap(u"Mod\\Proc"_s, fail, [&] { reported = Error_Text(Err()); }), QString());
        QVERIFY2(reported.startsWith(u"无法访问该路径") && reported.endsWith(u"\nno access"), qPrintable(reported));
        QCOMPARE(Err().number, 0);
        QVERIFY(!Resume_Next(fail));
        QCOMPARE(Err().number, 75);
        QVERIFY(Resume_Next([] {}));
        QCOMPARE(Err().number, 75);
        Log_Mark(u"later"_s);
        QCOMPARE(m_program->Logged(), QStringList({u"Mod\\Proc"_s, u"later"_s}));
    }

    void The_System_Log_Takes_What_Fits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("fits");
        QTest::addRow("a title") << u"it's \"done\" 成功"_s << true;
        QTest::addRow("255") << QString(255, u'文') << true;
        QTest::addRow("256") << QString(256, u'文') << false;
    }
    void The_System_Log_Takes_What_Fits()
    {
        QFETCH(QString, text);
        QFETCH(bool, fits);
        Add_Log(Log_Type::Deleted, text, u"v1"_s, u"v2"_s);
        QCOMPARE(Sql_Rows(u"select type_id,log_text,log_user,log_date,log_var1,log_var2 from tab_log"_s),
                 (fits ? QList<QStringList>{{u"4"_s, text, u"Zelqor"_s, u"2026-03-05 10:20:30"_s, u"v1"_s, u"v2"_s}}
                       : QList<QStringList>()));
        QCOMPARE(m_program->Logged(), fits ? QStringList() : QStringList(u"Mod_DataBase\\Add_Log"_s));
        Add_Log(Log_Type::General, u"next"_s);
        QCOMPARE(Sql_Cell(u"select count(*) from tab_log where log_text='next'"_s), u"1"_s);
    }
};

QTEST_GUILESS_MAIN(Test_Logs)
#include "test_logs.moc"
