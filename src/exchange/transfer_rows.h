// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QVariant>
#include <span>

class Recordset;

/// The rows that a transfer copies, column by column.
namespace Transfer_Rows
{
/// Rows that go over together.
struct Table {
    const char16_t *rows;
    std::span<const char *const> columns;
    const char *number = ""; ///< of the engine's own giving: the source's is kept where it is free
};

extern const Table Document, Files, Bookmarks, Tags, Groups, Folders, Memberships;
/// Copied once, at the end.
extern const std::span<const Table> Closing;

/// Values that a row gets in the place of the source's.
using Own_Values = QHash<QString, QVariant>;

void Open_For_Adding(Recordset &rows, const QString &statement, const QString &connection);

/// Adds a copy of the current row: a column that either side lacks or refuses is left out. A row that the target
/// refuses as it is comes without its number and its Nulls, for which the target has values of its own.
/// @returns whether the target has it; the pending error tells why not
bool Copy_Row(Recordset &from, Recordset &to, const Table &table, const Own_Values &own = {});
} // namespace Transfer_Rows
