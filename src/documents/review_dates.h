// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <array>

/// Adds an amount of time to a date. The intervals are those of the classic date-add routine: "h" hours, "d" days, "ww"
/// weeks, "m" calendar months, and "y", the day of the year, which counts days. The fraction is turned into the next
/// smaller unit (for "y" into months, twelve for 1), rounded to whole ones, halves to the even number.
/// @param fraction  in and out: left as the amount of the smaller unit
/// @param base      a date in text
/// @param result    out: the date in its short form. Another interval or a date that is none leaves it as it is; a
///                  step beyond the years 100 to 9999 leaves it at the step before.
void DateAddEx(const QString &interval, qint16 whole, float &fraction, const QString &base, QString &result);

/// The dates of the four scores, "简单" first.
inline constexpr int Scores = 4;
using Review_Dates = std::array<QString, Scores>;

/// @param period  the letter of a group, in any case
/// @param factor  added to the whole periods of a score, 3 for the first down to 0 for the last
/// @param base    the last reading. The dates are empty where it is none.
Review_Dates Curve_Dates(const QString &period, float factor, const QString &base);
