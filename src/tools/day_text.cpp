// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/day_text.h"

#include "tools/calendar.h"

namespace
{
constexpr int Months = 12;

QString Month_Name(int number, bool leap)
{
    return (leap ? QStringLiteral("闰") : QString()) + (number == 1 ? QStringLiteral("正") : Chinese_Number(number)) +
           QStringLiteral("月");
}

/// Several festivals of one day stand with blanks between.
QString First_Word(const QString &names)
{
    return names.section(QLatin1Char(' '), 0, 0);
}

Day_Text Text_Of(const clsDate &date)
{
    using Kind = Day_Text::Kind;
    const QString month = Month_Name(date.Lunar_Month(), date.Is_Leap());
    Day_Text text;
    text.kind = date.Is_Holiday() ? Kind::Holiday : Kind::Festival;
    const QString solarHoliday = date.Is_Holiday() ? date.Solar_Festival() : QString();
    for (const QString &festival :
         {date.Lunar_Festival(), solarHoliday, date.Solar_Term(), date.Solar_Festival(), date.Weekday_Festival()}) {
        if (text.line.isEmpty())
            text.line = First_Word(festival);
    }
    if (text.line.isEmpty()) {
        text.kind = Kind::Plain;
        text.line = date.Lunar_Day() == 1 ? month : date.Lunar_Day_Text();
    } else if (text.line == date.Solar_Term() && text.kind == Kind::Festival) {
        text.kind = Kind::Term;
    }
    text.whole =
        QStringLiteral("农历%1年（%2）%3%4").arg(date.Stem_Branch(), date.Animal(), month, date.Lunar_Day_Text());
    for (const QString &more :
         {date.Solar_Term(), date.Lunar_Festival(), date.Solar_Festival(), date.Weekday_Festival()}) {
        if (!more.isEmpty())
            text.whole += QLatin1Char(' ') + more;
    }
    return text;
}
} // namespace

Day_Text Text_Of_Day(const QDate &day)
{
    static const QDate first(1900, 1, 31);
    static const QDate last(2050, 1, 22);
    if (day < first || day > last)
        return {};
    clsDate date;
    date.Set_Solar(day.year(), day.month(), day.day());
    return Text_Of(date);
}

QList<Lunar_Month> Months_Of_Lunar_Year(int year)
{
    QList<Lunar_Month> months;
    for (int number = 1; number <= Months; ++number) {
        months << Lunar_Month{Month_Name(number, false), number, false, clsDate::Days_In_Lunar_Month(year, number)};
        if (number == clsDate::Leap_Month(year))
            months << Lunar_Month{Month_Name(number, true), number, true, clsDate::Days_In_Leap_Month(year)};
    }
    return months;
}

QString Lunar_Day_Name(int day)
{
    clsDate date;
    date.Set_Lunar(1900, 1, day, false);
    return date.Lunar_Day_Text();
}
