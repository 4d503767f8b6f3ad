// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ExtractText
{
/// Code of a format that spreadsheets need not write down (ECMA-376-1, 18.8.30), "" for the general one. Of those that
/// depend on the language it is the Chinese one, and the short date is year first.
QString Built_In_Format(int id);

/// A number as a cell shows it: fixed decimals, thousands, percent, dates, times of day and elapsed times; any other
/// format, and one that is longer than programs let it be, shows the plain number.
/// @param date1904  days are counted from 1904 instead of 1900
QString Formatted_Number(double number, const QString &format, bool date1904);
} // namespace ExtractText
