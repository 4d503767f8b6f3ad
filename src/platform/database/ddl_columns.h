// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/catalog.h"
#include "platform/database/sql_ast.h"

/// How tables and columns are written in the file's schema. Only what every SQLite program understands is used, so
/// that the file can be opened and written without this program.
namespace Ddl_Columns
{
/// The declared type, chosen so that SQLite's affinity keeps the values as they are.
QString Type_Sql(const Sql_Ast::Column_Definition &column);
/// The whole definition. @param key  the column is its table's only primary key
QString Column_Sql(const Sql_Ast::Column_Definition &column, bool key);
QString Create_Table_Sql(const Sql_Ast::Create_Table &create);
std::optional<QString> Default_Sql(const Sql_Ast::Column_Definition &column);
bool Is_Auto(const Sql_Ast::Column_Definition &column);
/// SQLite can add the column to a table with rows.
bool Can_Be_Added(const Sql_Ast::Column_Definition &column);
/// The columns of an existing table as a definition, without a key of several columns.
QString Definition_Of(const Catalog_Table &table);
/// ", PRIMARY KEY (...)" for a key of several columns, else "".
QString Key_Sql(const Catalog_Table &table);
/// A CREATE TABLE text with another type for one column; "" when it cannot be edited safely.
QString With_Type(const QString &createSql, const QString &column, const QString &type);
/// The value of a column in the type that it gets.
QString Converted(const QString &value, const Catalog_Column &from, const Catalog_Column &to);
} // namespace Ddl_Columns
