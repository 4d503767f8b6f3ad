// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/trouble.h"
#include "documents/review.h"
#include "documents/review_backlog.h"
#include "documents/review_groups.h"
#include "documents/review_session.h"
#include "support/test_program.h"

#include <QTest>
#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Review : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    static void Add_Group(int id, const QString &name, const QString &period, double factor, const QString &mark = {})
    {
        Sql_Run(u"insert into tab_Gene(Gene_Id,Gene_Name,Gene_Per,Gene_Num,Gene_Default) values "
                "(%1,'%2','%3',%4,'%5')"_s.arg(QString::number(id), name, period, QString::number(factor), mark));
    }
    static void Add_Due(const QStringList &dates, const QString &more = {})
    {
        for (int i = 0; i < dates.size(); ++i)
            Add_Document(
                u"{%1}"_s.arg(i), u"001"_s, u"t%1"_s.arg(i),
                (dates[i].isEmpty() ? u"Code_ReadDateNext=Null"_s : u"Code_ReadDateNext='%1'"_s.arg(dates[i])) + more);
    }
    static QString Next_Of(int document)
    {
        return Sql_Cell(u"select Code_ReadDateNext from Code_Info where Code_ID='{%1}'"_s.arg(document));
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->Logged(), QStringList());
        m_program.reset();
    }

    void A_Date_Moves_By_Whole_Units_Then_By_The_Fraction_data()
    {
        QTest::addColumn<QString>("interval");
        QTest::addColumn<int>("whole");
        QTest::addColumn<double>("fraction");
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("result");
        const QString noon = u"2026-03-05 12:00:00"_s;
        QTest::addRow("hours") << u"h"_s << 3 << 1.5 << noon << u"2026-03-05 16:30:00"_s;
        QTest::addRow("hours, no fraction") << u"H"_s << 3 << 0.0 << noon << u"2026-03-05 15:00:00"_s;
        QTest::addRow("days, 40.8 hours rounded") << u"d"_s << 3 << 1.7 << noon << u"2026-03-10 05:00:00"_s;
        QTest::addRow("weeks, 11.9 days rounded") << u"ww"_s << 1 << 1.7 << noon << u"2026-03-24 12:00:00"_s;
        QTest::addRow("weeks, 3.5 days to the even 4") << u"ww"_s << 0 << 0.5 << noon << u"2026-03-09 12:00:00"_s;
        QTest::addRow("weeks, 10.5 days to the even 10") << u"ww"_s << 0 << 1.5 << noon << u"2026-03-15 12:00:00"_s;
        QTest::addRow("months and 60 days") << u"m"_s << 1 << 2.0 << u"2026-01-01"_s << u"2026-04-02"_s;
        QTest::addRow("end of a month") << u"m"_s << 1 << 0.0 << u"2026-01-31"_s << u"2026-02-28"_s;
        QTest::addRow("end of a month, leap year") << u"m"_s << 1 << 0.0 << u"2024-01-31"_s << u"2024-02-29"_s;
        QTest::addRow("the whole of y counts days") << u"y"_s << 3 << 1.5 << u"2026-03-05"_s << u"2027-09-08"_s;
        QTest::addRow("y from a leap day") << u"y"_s << 0 << 1.0 << u"2024-02-29"_s << u"2025-02-28"_s;
        QTest::addRow("back") << u"d"_s << -1 << 0.0 << u"2024-03-01"_s << u"2024-02-29"_s;
        QTest::addRow("16 bits") << u"d"_s << 32767 << 0.0 << u"2026-03-05"_s << u"2115-11-21"_s;
        QTest::addRow("beyond the last year") << u"ww"_s << 32767 << 0.0 << u"9900-01-01"_s << u""_s;
        QTest::addRow("only the fraction beyond it") << u"y"_s << 1 << 9e3 << u"2026-03-05"_s << u"2026-03-06"_s;
        QTest::addRow("no number") << u"d"_s << 1 << std::numeric_limits<double>::quiet_NaN() << u"2026-03-05"_s
                                   << u"2026-03-06"_s;
        QTest::addRow("another interval") << u"w"_s << 1 << 1.0 << noon << u""_s;
        QTest::addRow("no date") << u"d"_s << 1 << 1.0 << u"2026-02-30"_s << u""_s;
    }
    void A_Date_Moves_By_Whole_Units_Then_By_The_Fraction()
    {
        QFETCH(QString, interval);
        QFETCH(int, whole);
        QFETCH(double, fraction);
        QFETCH(QString, base);
        auto part = static_cast<float>(fraction);
        QString result;
        DateAddEx(interval, static_cast<qint16>(whole), part, base, result);
        QTEST(result, "result");
    }

    void A_Curve_Has_Four_Dates_data()
    {
        QTest::addColumn<QString>("period");
        QTest::addColumn<double>("factor");
        QTest::addColumn<QString>("dates"); ///< from 2026-01-31
        QTest::addRow("H") << u"H"_s << 1.5 << u"01-31 04:30:00,01-31 03:30:00,01-31 02:30:00,01-31 01:30:00"_s;
        QTest::addRow("D") << u"D"_s << 2.0 << u"02-05,02-04,02-03,02-02"_s;
        QTest::addRow("W") << u"W"_s << 2.0 << u"03-07,02-28,02-21,02-14"_s;
        QTest::addRow("M") << u"M"_s << 2.0 << u"06-29,05-30,04-29,04-01"_s;
        QTest::addRow("Y") << u"y"_s << 0.5 << u"08-03,08-02,08-01,07-31"_s;
        QTest::addRow("unknown") << u"Q"_s << 2.0 << u",,,"_s;
    }
    void A_Curve_Has_Four_Dates()
    {
        QFETCH(QString, period);
        QFETCH(double, factor);
        QStringList dates;
        for (const QString &date : Curve_Dates(period, static_cast<float>(factor), u"2026-01-31"_s))
            dates << date.mid(5);
        QTEST(dates.join(u','), "dates");
    }

    void A_Document_Chooses_Its_Group()
    {
        Add_Due({u""_s, u""_s, u""_s}, u",Code_ReadDate='2026-03-01 08:00:00'"_s);
        Sql_Run(u"update Code_Info set Code_ReadDate_Gene_Id=2,Code_ReadDate_Sta='X' where Code_ID='{1}'"_s);
        Sql_Run(u"update Code_Info set Code_ReadDate_Gene_Id=77 where Code_ID='{2}'"_s);
        Gene_Chooser chooser;
        Get_Gene_List_Id(chooser, u"{0}"_s);
        QCOMPARE(chooser.chosen, -1); // no group at all
        QCOMPARE(Dates_Of_Choice(chooser), Review_Dates());
        Add_Group(1, u"b_c"_s, u"D"_s, 1.5, u"X"_s);
        Add_Group(2, u"a"_s, u"H"_s, 2);
        Get_Gene_List_Id(chooser, u"{0}"_s);
        QCOMPARE(chooser.items, QStringList({u"2_a"_s, u"1_b_c"_s}));
        QCOMPARE(chooser.Gene_Id(), 1);
        Get_Gene_List_Id(chooser, u"{2}"_s);
        QCOMPARE(chooser.chosen, -1); // its group was deleted elsewhere
        Get_Gene_List_Id(chooser, u"{1}"_s);
        QCOMPARE(chooser.Gene_Id(), 2);
        QCOMPARE(Dates_Of_Choice(chooser)[0], u"2026-03-01 13:00:00"_s);
        QVERIFY(!Set_Gene_List_Id(chooser, u"{1}"_s, {}));
        QVERIFY(Set_Gene_List_Id(chooser, u"{1}"_s, u"2026-03-01 13:00:00"_s));
        QCOMPARE(Sql_Rows(u"select Code_ReadDate_Gene_Id,Code_ReadDate_Sta,Code_ReadDateNext from Code_Info "
                          "where Code_ID='{1}'"_s),
                 QList<QStringList>({{u"2"_s, u""_s, u"2026-03-01 13:00:00"_s}}));
        QVERIFY(!Set_Gene_List_Id(chooser, u"{9}"_s, u"2026-03-01"_s));
        chooser.last_read.clear();
        QCOMPARE(Dates_Of_Choice(chooser)[3], u"2026-03-05 02:00:00"_s); // never read: today's date
        QVERIFY(!Set_Gene_List_Id(chooser, u"{1}"_s, u"soon"_s));
        QCOMPARE(Next_Of(1), u"2026-03-01 13:00:00"_s);
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_DataBase\\Set_Gene_List_Id"_s));
        m_program.emplace();
    }

    void A_Factor_Stays_Within_Its_Limits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("factor");
        for (const auto &[text, factor] : std::initializer_list<std::pair<const char *, double>>{{"", 1.7},
                                                                                                 {"1.5", 1.5},
                                                                                                 {"2.0", 2.0},
                                                                                                 {"1.4", 1.7},
                                                                                                 {"2.1", 1.7},
                                                                                                 {" 1.8x", 1.8},
                                                                                                 {"abc", 1.7},
                                                                                                 {"-1.8", 1.7},
                                                                                                 {"1.9.9", 1.9}})
            QTest::addRow("'%s'", text) << QString::fromLatin1(text) << factor;
    }
    void A_Factor_Stays_Within_Its_Limits()
    {
        QFETCH(QString, text);
        QFETCH(double, factor);
        QCOMPARE(Factor_Of_Text(text), static_cast<float>(factor));
    }

    void Groups_Are_Edited_And_Applied()
    {
        Add_Group(5, u"used"_s, u"D"_s, 1.5);
        Add_Group(6, u"default"_s, u"W"_s, 2, u"X"_s);
        Add_Due({u""_s}, u",Code_ReadDate_Gene_Id=5"_s);
        Group_Editor editor;
        QVERIFY(editor.Load());
        QCOMPARE(editor.Checked(), 0);
        QVERIFY(editor.Put(-1, u"  "_s, u"1.5"_s, {}) == Group_Refusal::No_Name);
        QVERIFY(editor.Put(-1, u" new "_s, {}, {}) == Group_Refusal::None);
        QVERIFY(editor.Put(1, u"used"_s, u"1.9"_s, u"M--月"_s) == Group_Refusal::None);
        QVERIFY(editor.Delete(1) == Group_Refusal::In_Use);
        editor.Check(2);
        QVERIFY(editor.Apply());
        QCOMPARE(Sql_Rows(u"select Gene_Id,Gene_Name,Gene_Per,Gene_Default from tab_Gene order by Gene_Name"_s),
                 QList<QStringList>({{u"6"_s, u"default"_s, u"W"_s, u""_s},
                                     {u"3"_s, u"new"_s, u"H"_s, u"X"_s},
                                     {u"5"_s, u"used"_s, u"M"_s, u""_s}}));
        QVERIFY(editor.Delete(0) == Group_Refusal::None);
        QCOMPARE(editor.Checked(), 0);
        QCOMPARE(Sql_Cell(u"select count(*) from tab_Gene"_s), u"2"_s);
        QVERIFY(editor.Put(-1, u"unsaved"_s, {}, {}) == Group_Refusal::None);
        QVERIFY(editor.Delete(2) == Group_Refusal::None); // documents without a group do not use it
        QVERIFY(editor.Put(0, u"changed"_s, {}, {}) == Group_Refusal::None);
        QVERIFY(editor.Put(-1, u"it's"_s, {}, {}) == Group_Refusal::None);
        QVERIFY(!editor.Apply());
        QVERIFY(Last_Trouble().contains(u'\''));
        QCOMPARE(Sql_Cell(u"select count(*) from tab_Gene where Gene_Name='changed'"_s), u"0"_s);
        QCOMPARE(m_program->Logged().size(), 1);
        m_program.emplace();
    }

    void A_Review_Takes_What_Is_Due()
    {
        Add_Due({u"2026-03-05 09:00:00"_s, u"2026-03-01"_s, u"2026-03-06"_s, u"2026-03-05 08:00:00"_s, u"2026-02-01"_s,
                 u"2026-03-04"_s, u"2026-03-03"_s});
        Sql_Run(u"update Code_Info set Code_Color='★★★☆☆' where Code_ID='{0}'"_s);
        Sql_Run(u"update Code_Info set Cate_ID='000001' where Code_ID='{4}'"_s);
        Review_Session session;
        session.Begin(Test_Program::Now().date());
        QCOMPARE(session.Left(), 5);
        QCOMPARE(session.Next()->code_id, u"{1}"_s);
        Sql_Run(u"update Code_Info set Code_ReadDateNext='2026-03-04' where Code_ID='{6}'"_s); // scored elsewhere
        Sql_Run(u"update Code_Info set Cate_ID='000' where Code_ID='{5}'"_s);
        QCOMPARE(session.Next()->code_id, u"{0}"_s); // of one day, the more important one
        QCOMPARE(session.Left(), 1);
        QCOMPARE(session.Next()->code_id, u"{3}"_s);
        QVERIFY(!session.Next());
    }

    void A_Backlog_Is_Spread_And_Taken_Back()
    {
        const QDate today = Test_Program::Now().date();
        QVERIFY(Plan_Backlog(today, 3).empty());
        Add_Due({u"2026-03-04"_s, u"2026-02-01 10:00:00"_s, u"2026-03-02"_s, u"2026-03-03"_s, u"2026-03-05"_s});
        const Backlog_Plan plan = Plan_Backlog(today, 2);
        QStringList lines;
        for (const New_Reading &reading : plan)
            lines << reading.title + u' ' + reading.from.left(10) + u' ' + reading.to;
        QCOMPARE(lines, QStringList({u"t1 2026-02-01 2026-03-05"_s, u"t2 2026-03-02 2026-03-05"_s,
                                     u"t3 2026-03-03 2026-03-06"_s, u"t0 2026-03-04 2026-03-06"_s}));
        Sql_Run(u"update Code_Info set Code_ReadDateNext='2026-04-01' where Code_ID='{3}'"_s);
        QVERIFY(Apply_Backlog(plan));
        QCOMPARE(Next_Of(0) + u' ' + Next_Of(1) + u' ' + Next_Of(3), u"2026-03-06 2026-03-05 2026-04-01"_s);
        QVERIFY(Apply_Backlog(Turned_Back(plan)));
        QCOMPARE(Next_Of(0) + u' ' + Next_Of(1) + u' ' + Next_Of(3), u"2026-03-04 2026-02-01 10:00:00 2026-04-01"_s);
    }
};

QTEST_MAIN(Test_Review)
#include "test_review.moc"
