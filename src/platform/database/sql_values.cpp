// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/sql_values.h"

#include "platform/database/dates.h"
#include "platform/database/engine_error.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace Sql_Value
{
namespace
{
constexpr int Significant_Digits = 15;

QString Shown(const Cell &cell)
{
    return To_Text(cell).left(60);
}

[[noreturn]] void Mismatch(const Cell &cell, const QString &wanted, const QString &column)
{
    const QString where = column.isEmpty() ? QString() : u" for the column '%1'"_s.arg(column);
    throw Engine_Error::Type_Mismatch(u"'%1' is no %2%3"_s.arg(Shown(cell), wanted, where));
}

/// The number that a cell means, or NaN.
double Number_Of(const Cell &cell)
{
    if (const auto *whole = std::get_if<qint64>(&cell)) {
        return static_cast<double>(*whole);
    }
    if (const auto *number = std::get_if<double>(&cell)) {
        return *number;
    }
    if (const auto *text = std::get_if<QString>(&cell)) {
        bool good = false;
        const double number = text->trimmed().toDouble(&good);
        return good ? number : std::numeric_limits<double>::quiet_NaN();
    }
    return std::numeric_limits<double>::quiet_NaN();
}
} // namespace

QString Number_Text(double number)
{
    return QString::number(number, 'g', Significant_Digits).toUpper();
}

QString To_Text(const Cell &cell)
{
    if (const auto *text = std::get_if<QString>(&cell)) {
        return *text;
    }
    if (const auto *whole = std::get_if<qint64>(&cell)) {
        return QString::number(*whole);
    }
    if (const auto *number = std::get_if<double>(&cell)) {
        return Number_Text(*number);
    }
    const auto *bytes = std::get_if<QByteArray>(&cell);
    return bytes == nullptr ? QString() : QString::fromUtf8(*bytes);
}

Cell As_Text(const Cell &cell, int size, const QString &column)
{
    if (Is_Null(cell)) {
        return cell;
    }
    QString text = To_Text(cell);
    if (size > 0 && text.size() > size) {
        throw Engine_Error::Too_Long(column, size);
    }
    return text;
}

Cell As_Long(const Cell &cell, const QString &column)
{
    if (Is_Null(cell)) {
        return cell;
    }
    const double number = std::nearbyint(Number_Of(cell)); // halves go to the even neighbour
    if (!(number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<qint32>::max())) {
        Mismatch(cell, u"whole number"_s, column);
    }
    return static_cast<qint64>(number);
}

Cell As_Single(const Cell &cell, const QString &column)
{
    if (Is_Null(cell)) {
        return cell;
    }
    const double number = Number_Of(cell);
    if (!std::isfinite(number)) {
        Mismatch(cell, u"number"_s, column);
    }
    return number;
}

Cell As_Date(const Cell &cell, const QString &column)
{
    if (Is_Null(cell)) {
        return cell;
    }
    const auto *text = std::get_if<QString>(&cell);
    const auto date = text == nullptr ? std::nullopt : Stored_Date::From_Text(*text);
    if (!date) {
        Mismatch(cell, u"date"_s, column);
    }
    return *date;
}

Cell As_Number(const Cell &cell)
{
    if (!std::holds_alternative<QString>(cell)) {
        return cell;
    }
    const double number = Number_Of(cell);
    if (std::isnan(number)) {
        Mismatch(cell, u"number"_s, {});
    }
    return number;
}
} // namespace Sql_Value
