// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

/// A day of the Gregorian and of the Chinese calendar, from 1900-01-31, the first day of the lunar year 1900, to
/// 2050-01-22, the last one of 2049. docs/calendar.md names where the tables come from.
/// Beyond its tables it throws Run_Time_Error 9 (subscript out of range); callers keep the range.
class clsDate
{
public:
    /// @throws Run_Time_Error 5 for a day that does not exist, 9 outside of the tables. The day is as before then.
    void Set_Solar(int year, int month, int day);
    /// @param leap  the leap month of that number; dropped where the year's leap month is another one or none
    void Set_Lunar(int year, int month, int day, bool leap);

    [[nodiscard]] int Solar_Year() const { return m_solar.year(); }
    [[nodiscard]] int Solar_Month() const { return m_solar.month(); }
    [[nodiscard]] int Solar_Day() const { return m_solar.day(); }
    [[nodiscard]] QDate Solar() const { return m_solar; }
    [[nodiscard]] int Lunar_Year() const { return m_lunar.year; }
    [[nodiscard]] int Lunar_Month() const { return m_lunar.month; }
    [[nodiscard]] int Lunar_Day() const { return m_lunar.day; }
    [[nodiscard]] bool Is_Leap() const { return m_lunar.leap; }

    /// "丙午", and its animal "马".
    [[nodiscard]] QString Stem_Branch() const;
    [[nodiscard]] QString Animal() const;
    /// The solar term that begins on the day, "" for most days.
    [[nodiscard]] QString Solar_Term() const;
    /// Festivals by the Gregorian date, by the lunar date and by the weekday; several of one day with blanks between.
    [[nodiscard]] QString Solar_Festival() const;
    [[nodiscard]] QString Lunar_Festival() const;
    [[nodiscard]] QString Weekday_Festival() const;
    [[nodiscard]] bool Is_Holiday() const;
    [[nodiscard]] QString Weekday_Name() const;
    [[nodiscard]] QString Month_Abbreviation() const;
    [[nodiscard]] QString Sign() const;
    /// The year in the counting of the time: "中华人民共和国成立七十七年".
    [[nodiscard]] QString Era() const;
    /// "初一", "廿九", "三十"
    [[nodiscard]] QString Lunar_Day_Text() const;

    /// Days of a Gregorian month; February has 29 in every year that is divisible by 4, in 1900 too.
    static int Days_In_Month(int year, int month);
    static int Days_In_Lunar_Month(int year, int month);
    /// 0 for a year without a leap month.
    static int Days_In_Leap_Month(int year);
    static int Leap_Month(int year);
    static int Days_In_Lunar_Year(int year);

private:
    struct Lunar_Date {
        int year = 1900;
        int month = 1;
        int day = 1;
        bool leap = false;
    };
    static Lunar_Date Lunar_Of(const QDate &solar);
    [[nodiscard]] bool Is_New_Years_Eve() const;

    QDate m_solar{1900, 1, 31};
    Lunar_Date m_lunar;
};

/// A number in Chinese: 105 is "一百零五", 15 "十五".
QString Chinese_Number(int number);
