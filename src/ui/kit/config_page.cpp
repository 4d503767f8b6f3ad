// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/config_page.h"

#include <algorithm>

namespace Config_Pages
{
namespace
{
QList<Row> &Table()
{
    static QList<Row> table;
    return table;
}
} // namespace

void Add(std::span<const Row> rows)
{
    for (const Row &row : rows) {
        const bool isKnown =
            std::ranges::any_of(Table(), [&](const Row &other) { return qstrcmp(other.name, row.name) == 0; });
        if (!isKnown)
            Table() << row;
    }
}

QList<Row> All()
{
    return Table();
}
} // namespace Config_Pages
