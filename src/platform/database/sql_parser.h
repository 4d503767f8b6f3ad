// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/sql_ast.h"

/// Reads one statement, which may end with one ";". The tokens' text must outlive the tree.
/// @throws Run_Time_Error Db_Syntax.
Sql_Ast::Statement Parse_Statement(const std::vector<Token> &tokens);
