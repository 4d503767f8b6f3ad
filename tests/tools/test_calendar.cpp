// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors/run_time_error.h"
#include "tools/calendar.h"

#include <QTest>

using namespace Qt::StringLiterals;

class Test_Calendar : public QObject
{
    Q_OBJECT

    static clsDate Day(const QDate &date)
    {
        clsDate day;
        day.Set_Solar(date.year(), date.month(), date.day());
        return day;
    }
    static QString Lunar(const clsDate &day)
    {
        return u"%1-%2%3-%4"_s.arg(day.Lunar_Year())
            .arg(day.Lunar_Month())
            .arg(day.Is_Leap() ? u"+"_s : u""_s)
            .arg(day.Lunar_Day());
    }

private slots:
    void Days_Of_Both_Calendars_data()
    {
        QTest::addColumn<QString>("lunar"); ///< "+" behind a leap month
        const std::pair<const char *, const char *> days[] = {
            // New Year's days as almanacs and the Hong Kong Observatory's tables print them.
            {"1900-01-31", "1900-1-1"},
            {"1912-02-18", "1912-1-1"},
            {"1949-01-29", "1949-1-1"},
            {"1954-02-03", "1954-1-1"},
            {"1966-01-21", "1966-1-1"},
            {"1976-01-31", "1976-1-1"},
            {"1985-02-20", "1985-1-1"},
            {"2000-02-05", "2000-1-1"},
            {"2008-02-07", "2008-1-1"},
            {"2012-01-23", "2012-1-1"},
            {"2020-01-25", "2020-1-1"},
            {"2024-02-10", "2024-1-1"},
            {"2026-02-17", "2026-1-1"},
            {"2027-02-06", "2027-1-1"},
            {"2030-02-03", "2030-1-1"},
            {"2034-02-19", "2034-1-1"},
            {"2049-02-02", "2049-1-1"},
            {"2050-01-22", "2049-12-29"},
            // First days of leap months, and days around them.
            {"1984-11-23", "1984-10+1"},
            {"2009-06-23", "2009-5+1"},
            {"2012-05-21", "2012-4+1"},
            {"2014-10-24", "2014-9+1"},
            {"2017-07-23", "2017-6+1"},
            {"2020-05-23", "2020-4+1"},
            {"2023-03-21", "2023-2-30"},
            {"2023-03-22", "2023-2+1"},
            {"2023-04-19", "2023-2+29"},
            {"2023-04-20", "2023-3-1"},
            {"2025-07-25", "2025-6+1"},
            {"2033-12-22", "2033-11+1"},
            // Months whose new moon falls close to midnight.
            {"1996-07-16", "1996-6-1"},
            {"2012-08-17", "2012-7-1"},
            {"2018-11-08", "2018-10-1"},
        };
        for (const auto &[solar, lunar] : days)
            QTest::addRow("%s", solar) << QString::fromLatin1(lunar).replace(u'+', u"+-"_s);
    }
    void Days_Of_Both_Calendars()
    {
        QTEST(Lunar(Day(QDate::fromString(QString::fromLatin1(QTest::currentDataTag()), Qt::ISODate))), "lunar");
    }

    void What_A_Day_Is_data()
    {
        QTest::addColumn<QString>("what"); ///< year, term, festivals, weekday, day text; "!" for a holiday
        const std::pair<const char *, const char16_t *> days[] = {
            {"1984-02-02", u"甲子鼠  世界湿地日 春节! 星期四 初一"},
            {"2000-02-04", u"己卯兔 立春 除夕! 星期五 廿九"},
            {"2024-02-09", u"癸卯兔  除夕! 星期五 三十"},
            {"2024-06-10", u"甲辰龙  端午节! 星期一 初五"},
            {"2025-01-28", u"甲辰龙  除夕! 星期二 廿九"},
            {"2025-10-06", u"乙巳蛇  老人节 中秋节 国际住房日! 星期一 十五"},
            {"2025-10-29", u"乙巳蛇  重阳节 星期三 初九"},
            {"2025-11-27", u"乙巳蛇  感恩节 星期四 初八"},
            {"2025-12-21", u"乙巳蛇 冬至  星期日 初二"},
            {"2026-01-01", u"乙巳蛇  元旦! 星期四 十三"},
            {"2026-02-04", u"乙巳蛇 立春  星期三 十七"},
            {"2026-04-05", u"丙午马 清明  星期日 十八"},
            {"2026-05-10", u"丙午马  国际母亲节 星期日 廿四"},
            {"2026-05-12", u"丙午马  08汶川地震 护士节 国际护士节 星期二 廿六"},
            {"2026-05-17", u"丙午马  全国助残日 星期日 初一"},
            {"2050-01-22", u"己巳蛇  除夕! 星期六 廿九"},
        };
        for (const auto &[solar, what] : days)
            QTest::addRow("%s", solar) << QString::fromUtf16(what);
    }
    void What_A_Day_Is()
    {
        const clsDate day = Day(QDate::fromString(QString::fromLatin1(QTest::currentDataTag()), Qt::ISODate));
        QStringList festivals = {day.Solar_Festival(), day.Lunar_Festival(), day.Weekday_Festival()};
        festivals.removeAll(QString());
        const QStringList parts = {day.Stem_Branch() + day.Animal(), day.Solar_Term(),
                                   festivals.join(u' ') + (day.Is_Holiday() ? u"!"_s : u""_s), day.Weekday_Name(),
                                   day.Lunar_Day_Text()};
        QTEST(parts.join(u' '), "what");
    }

    void Signs_And_Eras_data()
    {
        QTest::addColumn<QString>("sign");
        QTest::addColumn<QString>("era");
        QTest::addRow("1900-12-31") << u"摩羯座"_s << u"清朝光绪二十七年"_s;
        QTest::addRow("1910-01-19") << u"摩羯座"_s << u"清朝宣统二年"_s;
        QTest::addRow("1912-01-20") << u"水瓶座"_s << u"中华民国一年"_s;
        QTest::addRow("1948-02-18") << u"水瓶座"_s << u"中华民国三十七年"_s;
        QTest::addRow("1959-02-19") << u"双鱼座"_s << u"中华人民共和国成立十年"_s;
        QTest::addRow("2026-03-20") << u"双鱼座"_s << u"中华人民共和国成立七十七年"_s;
        QTest::addRow("2026-03-21") << u"白羊座"_s << u"中华人民共和国成立七十七年"_s;
        QTest::addRow("2049-12-21") << u"射手座"_s << u"中华人民共和国成立一百年"_s;
    }
    void Signs_And_Eras()
    {
        const clsDate day = Day(QDate::fromString(QString::fromLatin1(QTest::currentDataTag()), Qt::ISODate));
        QTEST(day.Sign(), "sign");
        QTEST(day.Era(), "era");
    }

    void Numbers_Are_Spelled()
    {
        const std::pair<int, const char16_t *> numbers[] = {{0, u"零"},
                                                            {10, u"十"},
                                                            {15, u"十五"},
                                                            {105, u"一百零五"},
                                                            {1010, u"一千零一十"},
                                                            {10005, u"一万零五"},
                                                            {100000, u"十万"},
                                                            {20030400, u"二千零三万零四百"},
                                                            {100000001, u"一亿零一"}};
        for (const auto &[number, text] : numbers)
            QCOMPARE(Chinese_Number(number), QString::fromUtf16(text));
    }

    void All_Days_Go_Forth_And_Back()
    {
        int years = 0;
        clsDate before = Day(QDate(1900, 1, 31));
        for (QDate date(1900, 1, 31); date <= QDate(2050, 1, 22); date = date.addDays(1)) {
            const clsDate day = Day(date);
            clsDate back;
            back.Set_Lunar(day.Lunar_Year(), day.Lunar_Month(), day.Lunar_Day(), day.Is_Leap());
            if (back.Solar() != date || Lunar(back) != Lunar(day) || day.Lunar_Day() < 1 || day.Lunar_Day() > 30)
                QFAIL(qPrintable(date.toString(Qt::ISODate) + u' ' + Lunar(day)));
            if (day.Lunar_Day() != 1 && day.Lunar_Day() != before.Lunar_Day() + 1)
                QFAIL(qPrintable(date.toString(Qt::ISODate)));
            years += day.Lunar_Year() != before.Lunar_Year() ? 1 : 0;
            before = day;
        }
        QCOMPARE(years, 149);
    }

    void The_Tables_End()
    {
        QVERIFY_EXCEPTION_THROWN(Day(QDate(2050, 1, 23)), Run_Time_Error);
        QVERIFY_EXCEPTION_THROWN(Day(QDate(1899, 12, 31)), Run_Time_Error);
        QVERIFY_EXCEPTION_THROWN(clsDate().Set_Lunar(2050, 1, 1, false), Run_Time_Error);
        QVERIFY_EXCEPTION_THROWN(clsDate().Set_Lunar(2049, 13, 1, false), Run_Time_Error);
        QVERIFY_EXCEPTION_THROWN(clsDate().Set_Solar(1900, 2, 29), Run_Time_Error);
        QCOMPARE(Day(QDate(1900, 1, 30)).Lunar_Day(), 0); // stands before the range
        QCOMPARE(clsDate::Days_In_Month(1900, 2), 29);
        clsDate day;
        day.Set_Lunar(2024, 5, 5, true); // 2024 has no leap month
        QCOMPARE(day.Solar(), QDate(2024, 6, 10));
        QVERIFY(!day.Is_Leap());
    }
};

QTEST_APPLESS_MAIN(Test_Calendar)
#include "test_calendar.moc"
