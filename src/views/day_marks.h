// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QFlags>
#include <QHash>
#include <QString>

/// The calendar as a way into the library: what happened to documents on a day.
enum class Day_Mark { Made = 1, Changed = 2, Read = 4, Due = 8 };
Q_DECLARE_FLAGS(Day_Marks, Day_Mark)
Q_DECLARE_OPERATORS_FOR_FLAGS(Day_Marks)

/// The marks of the days of a month, by the day's number; what lies in the recycle bin makes none. One statement.
/// Errors go under "Frm_Date\Month_Marks".
QHash<int, Day_Marks> Month_Marks(int year, int month);

/// The condition that lists the documents of a mark on a day, for ShowCodeInfoToList_Ex_Key.
QString Day_Where(const QDate &day, Day_Mark mark);
