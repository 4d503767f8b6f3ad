// SPDX-License-Identifier: GPL-3.0-or-later
#include "arrivals/arrivals.h"
#include "arrivals/version_notice.h"
#include "core/settings.h"
#include "support/test_program.h"

#include <QTest>
#include <QTextDocument>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Arrivals : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Inbox"_s);
        Config().Cob_K9 = u"001"_s;
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    /// What arrives is never put where no tree shows it.
    void A_Folder_That_Is_Gone_Is_The_Recycle_Bin()
    {
        QCOMPARE(Arrivals::Folder(), u"001"_s);
        QCOMPARE(Arrivals::Folder_Name(u"001"_s), u"Inbox"_s);
        for (const QString &gone : {u""_s, u"002"_s, u"0' or '1'='1"_s}) {
            Config().Cob_K9 = gone;
            QCOMPARE(Arrivals::Folder(), u"000"_s);
        }
    }

    void Files_And_Notes_Become_Documents()
    {
        m_program->Write(u"plan.final.txt"_s, "two\r\nlines");
        QVERIFY(!Arrivals::Take_File(m_program->Path(u"plan.final.txt"_s), Arrivals::Folder()).isEmpty());
        QCOMPARE(Sql_Cell(u"select Code_Title + '|' + Code_Type + '|' + Cate_ID from Code_Info"_s),
                 u"plan.final.txt|TXT|001"_s);
        QCOMPARE(Sql_Cell(u"select log_text from tab_log where type_id='5'"_s).isEmpty(),
                 Sql_Rows(u"select * from tab_log"_s).isEmpty());
        QVERIFY(!Arrivals::Take_Text(u"\n  first line \nsecond"_s, u" "_s, u"001"_s).isEmpty());
        QVERIFY(!Arrivals::Take_Text(u"text"_s, u"a\ntitle "_s, u"001"_s).isEmpty());
        QCOMPARE(Sql_Rows(u"select Code_Title from Code_Info order by Code_Title"_s),
                 QList<QStringList>({{u"a title"_s}, {u"first line"_s}, {u"plan.final.txt"_s}}));
    }

    void A_Command_Has_A_Head_Of_14_Characters()
    {
        const auto command = Arrivals::Read_Command(u"十四个字符的标题，就这么长啊内容\nof it"_s);
        QVERIFY(command.has_value());
        QCOMPARE(command->title, u"十四个字符的标题，就这么长啊"_s);
        QCOMPARE(command->text, u"内容\nof it"_s);
        for (const QString &none : {u""_s, u"short"_s, u"12345678901234"_s, u"12345678901234 \n"_s})
            QVERIFY(!Arrivals::Read_Command(none));
    }

    void A_Notice_Names_A_Version_And_A_Page_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("version");
        const QByteArray page = "Page=https://example.org/zelqor\n";
        QTest::newRow("good") << "Version=2.6.0\r\n" + page << u"2.6.0"_s;
        QTest::newRow("any order and case")
            << "\xEF\xBB\xBF" + page.toLower() + "other words\nVERSION = 10.0" << u"10.0"_s;
        QTest::newRow("the first counts") << "Version=3\nVersion=4\n" + page << u"3"_s;
        QTest::newRow("no page") << QByteArray("Version=3") << QString();
        QTest::newRow("a page that runs") << QByteArray("Version=3\nPage=javascript:alert(1)") << QString();
        QTest::newRow("a file") << QByteArray("Version=3\nPage=file:///bin/sh") << QString();
        QTest::newRow("a name in front") << QByteArray("Version=3\nPage=https://bank@evil.example/") << QString();
        QTest::newRow("no number") << "Version=<b>3</b>\n" + page << QString();
        QTest::newRow("a huge number") << "Version=99999999999999999999\n" + page << QString();
        QTest::newRow("too many parts") << "Version=1.1.1.1.1\n" + page << QString();
        QTest::newRow("a page of a site") << QByteArray("<html><body>404</body></html>") << QString();
        QTest::newRow("too long") << "Version=3\n" + page + QByteArray(70'000, 'x') << QString();
        QTest::newRow("far down") << QByteArray(300, '\n') + "Version=3\n" + page << QString();
    }
    void A_Notice_Names_A_Version_And_A_Page()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, version);
        QCOMPARE(Version_Notice::Read(file).value_or(Version_Notice()).version, version);
    }

    void Versions_Are_Compared_By_Their_Numbers()
    {
        for (const char *newer : {"2.5.7", "2.10", "3", "2.5.6.1"})
            QVERIFY2((Version_Notice{QLatin1String(newer), {}}.Is_Newer_Than(u"2.5.6"_s)), newer);
        for (const char *older : {"2.5.6", "2.5.6.0", "2.5", "1.99.99"})
            QVERIFY2(!(Version_Notice{QLatin1String(older), {}}.Is_Newer_Than(u"2.5.6"_s)), older);
    }

    void A_Check_Is_Due_When_Its_Period_Is_Over_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<QString>("last");
        QTest::addColumn<bool>("due");
        QTest::newRow("a day") << u"D"_s << u"2024-03-14 23:59:00"_s << true;
        QTest::newRow("the same day") << u"D"_s << u"2024-03-15"_s << false;
        QTest::newRow("six days") << u"W"_s << u"2024-03-09"_s << false;
        QTest::newRow("seven days") << u"W"_s << u"2024-03-08"_s << true;
        QTest::newRow("a short month") << u"M"_s << u"2024-02-15"_s << true;
        QTest::newRow("not a month") << u"M"_s << u"2024-02-16"_s << false;
        QTest::newRow("never") << u" "_s << u"2000-01-01"_s << false;
        QTest::newRow("a clock that was wrong") << u"M"_s << u"2099-01-01"_s << true;
        QTest::newRow("no date") << u"M"_s << u"xx"_s << true;
    }
    void A_Check_Is_Due_When_Its_Period_Is_Over()
    {
        QFETCH(QString, period);
        QFETCH(QString, last);
        QTEST(Is_Check_Due(period, last, QDateTime(QDate(2024, 3, 15), QTime(8, 0))), "due");
    }
};

QTEST_MAIN(Test_Arrivals)
#include "test_arrivals.moc"
