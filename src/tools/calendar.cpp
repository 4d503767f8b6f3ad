// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/calendar.h"

#include "platform/errors/run_time_error.h"
#include "tools/calendar_tables.h"

#include <QDateTime>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <span>

using namespace Calendar_Tables;

namespace
{
constexpr qint32 Invalid_Call = 5;
constexpr qint32 Subscript_Out_Of_Range = 9;
constexpr int Months = 12;
const QDate Day_Before_First(1900, 1, 30);

[[noreturn]] void Out_Of_Range()
{
    throw Run_Time_Error(Subscript_Out_Of_Range, QStringLiteral("Subscript out of range"));
}

template <class Table>
auto At(const Table &table, int index)
{
    if (index < 0 || static_cast<size_t>(index) >= table.size())
        Out_Of_Range();
    return table[static_cast<size_t>(index)];
}

template <class Table>
QString Word(const Table &table, int index)
{
    return QString::fromUtf16(At(table, index));
}

int Code_Of(int year)
{
    return At(Year_Codes, year - First_Year);
}

QStringList Festivals_On(std::span<const Festival> table, int month, int day)
{
    QStringList names;
    for (const Festival &row : table) {
        if (row.month == month && row.day == day)
            names << QString::fromUtf16(row.name);
    }
    return names;
}

bool Holiday_On(std::span<const Festival> table, int month, int day)
{
    return std::any_of(table.begin(), table.end(),
                       [&](const Festival &row) { return row.month == month && row.day == day && row.holiday; });
}

/// Sunday is 0.
int Weekday(const QDate &date)
{
    return date.dayOfWeek() % 7;
}

QDate Term_Day(int year, int term)
{
    constexpr double Minutes_In_Year = 525948.76;
    constexpr qint64 Seconds_In_Minute = 60;
    const QDateTime first(QDate(1900, 1, 6), QTime(2, 5), Qt::UTC);
    const double minutes = (year - First_Year) * Minutes_In_Year + At(Term_Offsets, term);
    return first.addSecs(static_cast<qint64>(std::nearbyint(minutes)) * Seconds_In_Minute).date();
}
} // namespace

QString Chinese_Number(int number)
{
    static constexpr std::array Digits = {u"零", u"一", u"二", u"三", u"四", u"五", u"六", u"七", u"八", u"九"};
    static constexpr std::array Places = {u"", u"十", u"百", u"千"};
    static constexpr std::array Groups = {u"", u"万", u"亿"};
    constexpr int Places_In_Group = 4;
    const QString zero = QString::fromUtf16(Digits[0]);
    const QString figures = QString::number(number);
    QString text;
    bool groupSpoken = false;
    for (qsizetype i = 0; i < figures.size(); ++i) {
        const int place = static_cast<int>(figures.size() - 1 - i);
        const int digit = figures[i].digitValue();
        if (digit != 0)
            text += Word(Digits, digit) + Word(Places, place % Places_In_Group);
        else if (!text.endsWith(zero))
            text += zero;
        groupSpoken = groupSpoken || digit != 0;
        if (place % Places_In_Group == 0) {
            while (text.size() > 1 && text.endsWith(zero))
                text.chop(1);
            if (groupSpoken)
                text += Word(Groups, place / Places_In_Group);
            groupSpoken = false;
        }
    }
    return text.startsWith(QStringLiteral("一十")) ? text.mid(1) : text;
}

void clsDate::Set_Solar(int year, int month, int day)
{
    const QDate date(year, month, day);
    if (!date.isValid())
        throw Run_Time_Error(Invalid_Call, QStringLiteral("Invalid procedure call"));
    m_lunar = Lunar_Of(date);
    m_solar = date;
}

clsDate::Lunar_Date clsDate::Lunar_Of(const QDate &solar)
{
    Lunar_Date lunar;
    auto offset = static_cast<int>(Day_Before_First.daysTo(solar));
    if (solar.year() < First_Year)
        Out_Of_Range();
    for (lunar.year = First_Year; offset - Days_In_Lunar_Year(lunar.year) > 0; ++lunar.year)
        offset -= Days_In_Lunar_Year(lunar.year);

    const int leap = Leap_Month(lunar.year);
    int length = Days_In_Lunar_Month(lunar.year, lunar.month);
    while (offset - length > 0) {
        offset -= length;
        if (lunar.month == leap && !lunar.leap) {
            lunar.leap = true; // the leap month repeats the number of the one before it
            length = Days_In_Leap_Month(lunar.year);
        } else {
            lunar.leap = false;
            length = Days_In_Lunar_Month(lunar.year, ++lunar.month);
        }
    }
    lunar.day = offset;
    return lunar;
}

void clsDate::Set_Lunar(int year, int month, int day, bool leap)
{
    if (month < 1 || month > Months)
        Out_Of_Range();
    const int leapMonth = Leap_Month(year);
    const bool inLeap = leap && month == leapMonth;
    int days = day;
    for (int before = First_Year; before < year; ++before)
        days += Days_In_Lunar_Year(before);
    for (int before = 1; before < month; ++before)
        days += Days_In_Lunar_Month(year, before);
    if (leapMonth != 0 && leapMonth < month)
        days += Days_In_Leap_Month(year);
    if (inLeap) // the month of the same number comes first
        days += Days_In_Lunar_Month(year, month);
    m_solar = Day_Before_First.addDays(days);
    m_lunar = {year, month, day, inLeap};
}

QString clsDate::Stem_Branch() const
{
    constexpr int A_First_Year = 1864;
    const int years = m_lunar.year - A_First_Year;
    return Word(Stems, years % static_cast<int>(Stems.size())) + Word(Branches, years % Months);
}

QString clsDate::Animal() const
{
    return Word(Animals, (m_lunar.year - First_Year) % Months);
}

QString clsDate::Solar_Term() const
{
    for (int term = 0; term < static_cast<int>(Terms.size()); ++term) {
        if (Term_Day(m_solar.year(), term) == m_solar)
            return Word(Terms, term);
    }
    return {};
}

QString clsDate::Solar_Festival() const
{
    return Festivals_On(Solar_Festivals, m_solar.month(), m_solar.day()).join(QLatin1Char(' '));
}

bool clsDate::Is_New_Years_Eve() const
{
    constexpr int Last_Day_At_Least = 29;
    if (m_lunar.month != Months || m_lunar.day < Last_Day_At_Least)
        return false;
    if (m_lunar.year == Last_Year && m_lunar.day == Days_In_Lunar_Month(Last_Year, Months))
        return true; // no day of the tables follows
    const Lunar_Date next = Lunar_Of(m_solar.addDays(1));
    return next.month == 1 && next.day == 1;
}

QString clsDate::Lunar_Festival() const
{
    if (Is_New_Years_Eve())
        return QString::fromUtf16(New_Years_Eve);
    return Festivals_On(Lunar_Festivals, m_lunar.month, m_lunar.day).join(QLatin1Char(' '));
}

QString clsDate::Weekday_Festival() const
{
    constexpr int Days_In_Week = 7;
    QStringList names;
    for (const Calendar_Tables::Weekday_Festival &row : Weekday_Festivals) {
        const int week = (m_solar.day() - 1) / Days_In_Week + 1;
        if (row.month == m_solar.month() && row.weekday == Weekday(m_solar) && row.week == week)
            names << QString::fromUtf16(row.name);
    }
    return names.join(QLatin1Char(' '));
}

bool clsDate::Is_Holiday() const
{
    return Is_New_Years_Eve() || Holiday_On(Solar_Festivals, m_solar.month(), m_solar.day()) ||
           Holiday_On(Lunar_Festivals, m_lunar.month, m_lunar.day);
}

QString clsDate::Weekday_Name() const
{
    return QStringLiteral("星期") + Word(Number_Words, Weekday(m_solar));
}

QString clsDate::Month_Abbreviation() const
{
    return Word(Month_Abbreviations, m_solar.month() - 1);
}

QString clsDate::Sign() const
{
    constexpr int Month_Step = 100;
    const int day = m_solar.month() * Month_Step + m_solar.day();
    const auto sign =
        std::find_if(std::begin(Signs), std::end(Signs), [&](const Sign_End &row) { return day <= row.last; });
    return QString::fromUtf16(sign->name);
}

QString clsDate::Era() const
{
    const int year = m_solar.year();
    const auto era =
        std::find_if(std::begin(Eras), std::end(Eras), [&](const Era_Row &row) { return year <= row.last; });
    const int number = year - era->first + 1;
    const QString count = number == 1 && era->first_has_word ? QStringLiteral("元") : Chinese_Number(number);
    return QString::fromUtf16(era->name) + count + QStringLiteral("年");
}

QString clsDate::Lunar_Day_Text() const
{
    constexpr int Ten = 10;
    const int day = m_lunar.day;
    if (day == Ten)
        return QStringLiteral("初十");
    if (day == 2 * Ten || day == 3 * Ten)
        return Word(Number_Words, day / Ten) + QStringLiteral("十");
    return Word(Ten_Days, day / Ten) + Word(Number_Words, day % Ten);
}

int clsDate::Days_In_Month(int year, int month)
{
    constexpr int February = 2;
    constexpr int Leap_Cycle = 4;
    return At(Month_Lengths, month - 1) + (month == February && year % Leap_Cycle == 0 ? 1 : 0);
}

int clsDate::Days_In_Lunar_Month(int year, int month)
{
    if (month < 1 || month > Months)
        Out_Of_Range();
    return 29 + ((Code_Of(year) >> (16 - month)) & 1);
}

int clsDate::Days_In_Leap_Month(int year)
{
    return Leap_Month(year) == 0 ? 0 : 29 + ((Code_Of(year) >> 16) & 1);
}

int clsDate::Leap_Month(int year)
{
    return Code_Of(year) & 15;
}

int clsDate::Days_In_Lunar_Year(int year)
{
    return At(Year_Lengths, year - First_Year);
}
