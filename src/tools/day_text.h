// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

/// What the Chinese calendar says of a day.
struct Day_Text {
    enum class Kind { Plain, Term, Festival, Holiday };
    QString line;  ///< the most important word: a festival, a solar term, else the lunar day
    QString whole; ///< everything: lunar date, year, term and all festivals
    Kind kind = Kind::Plain;
};

/// Empty for a day outside of the calendar's tables.
Day_Text Text_Of_Day(const QDate &day);

/// A month of a lunar year; a leap month stands behind the one of its number.
struct Lunar_Month {
    QString name;
    int number = 0;
    bool leap = false;
    int days = 0;
};
QList<Lunar_Month> Months_Of_Lunar_Year(int year);

/// "初一" to "三十"
QString Lunar_Day_Name(int day);
