// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/connection.h"
#include "platform/database/sql_ast.h"

/// Changes of tables, each whole or not at all.
namespace Ddl
{
/// Runs a statement that changes tables; false for any other statement.
bool Run(Connection &connection, const Sql_Ast::Statement &statement);
/// Makes the indexes that the engine keeps for itself on columns that hold another table's key: a Text column with
/// the name of another table's only key column. They change no result.
void Make_Missing_Indexes(Connection &connection);
} // namespace Ddl
