// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/sql_values.h"

struct sqlite3_context;
struct sqlite3_stmt;
struct sqlite3_value;

/// Values to and from SQLite.
namespace Sqlite_Cells
{
Cell Read(sqlite3_value *value);
Cell Column(sqlite3_stmt *statement, int column);
void Return(sqlite3_context *context, const Cell &cell);
/// @param at  counted from 1; returns SQLite's code
int Bind_Cell(sqlite3_stmt *statement, int at, const Cell &cell);
} // namespace Sqlite_Cells
