// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/connection.h"
#include "platform/database/sql_ast.h"

/// Changes of tables, each whole or not at all.
namespace Ddl
{
/// A column on which the engine keeps an index of its own.
struct Indexed_Column {
    QString table;
    QString column;
    bool ordered = false; ///< a text by which lists are ordered
};
/// Those of the indexes of Misses_Indexes that are not there.
std::vector<Indexed_Column> Missing_Indexes(const Catalog &catalog);

/// Runs a statement that changes tables; false for any other statement.
bool Run(Connection &connection, const Sql_Ast::Statement &statement);
/// The engine keeps indexes for itself on columns that hold another table's key (a Text column with the name of
/// another table's only key column), and in tables with a text key on dates and on the texts of Keep_In_Order. They
/// change no result. A statement that changes tables makes those of tables without rows; the others are made one by
/// one.
[[nodiscard]] bool Misses_Indexes(Connection &connection);
/// Makes one that is missing; false when there was none.
bool Make_Next_Index(Connection &connection);
} // namespace Ddl
