// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A named statement with values joined in where %1, %2 ... stand. Values go in as they are: nothing is doubled or
/// quoted, and a "%" of the statement that is no place marker stays.
template <class... Values>
QString Sql_Text(const char16_t *statement, const Values &...values)
{
    const QString text = QString::fromUtf16(statement);
    if constexpr (sizeof...(values) == 0)
        return text;
    else
        return text.arg(values...);
}
