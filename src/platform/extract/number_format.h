// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ExtractText
{
/// Code of a format that spreadsheets need not write down (ECMA-376-1, 18.8.30), "" for the general one. Dates whose
/// form depends on the place are year first.
QString Built_In_Format(int id);

/// A number as a cell shows it: fixed decimals, thousands, percent, dates and times of day; any other format shows
/// the plain number. @param date1904  days are counted from 1904 instead of 1900
QString Formatted_Number(double number, const QString &format, bool date1904);
} // namespace ExtractText
