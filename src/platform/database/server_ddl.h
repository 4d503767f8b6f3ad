// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/server_connection.h"
#include "platform/database/sql_ast.h"

/// Changes of tables on a server, each whole or not at all.
namespace Server_Ddl
{
/// Runs a statement that changes tables; false for any other statement.
bool Run(Server_Connection &connection, const Sql_Ast::Statement &statement);
/// Makes the indexes that are missing, if this user may.
void Settle(Server_Connection &connection);
} // namespace Server_Ddl
