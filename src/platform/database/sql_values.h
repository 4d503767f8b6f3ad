// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <variant>
#include <vector>

/// A value as it lies in the file: nothing, a whole number, a number, a text (dates too), or bytes.
using Cell = std::variant<std::monostate, qint64, double, QString, QByteArray>;
using Row = std::vector<Cell>;

[[nodiscard]] inline bool Is_Null(const Cell &cell)
{
    return std::holds_alternative<std::monostate>(cell);
}

/// Conversions to the type of a column. Null stays Null. @throws Run_Time_Error Db_Type_Mismatch or Db_Too_Long.
namespace Sql_Value
{
QString Number_Text(double number);
QString To_Text(const Cell &cell);
Cell As_Text(const Cell &cell, int size, const QString &column);
Cell As_Long(const Cell &cell, const QString &column);
Cell As_Single(const Cell &cell, const QString &column);
Cell As_Date(const Cell &cell, const QString &column);
/// A number for a comparison.
Cell As_Number(const Cell &cell);
} // namespace Sql_Value
