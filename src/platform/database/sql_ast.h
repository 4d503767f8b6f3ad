// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/sql_tokens.h"

#include <memory>
#include <optional>
#include <variant>

/// The tree of one statement of the dialect.
namespace Sql_Ast
{
struct Query;
struct Expr;
using Expr_Ptr = std::unique_ptr<Expr>;

enum class Expr_Kind {
    Literal, // token
    Null,
    Column,       // qualifier.name
    Star,         // only in count(*)
    Not,          // args[0]
    Negate,       // args[0]
    Arithmetic,   // name is the operator: + - * / mod div ^ &
    Compare,      // name is the operator
    And,          // any number of args
    Or,           // any number of args
    Like,         // args[0] like args[1]
    Between,      // args[0] between args[1] and args[2]
    In_List,      // args[0] in (the others)
    In_Query,     // args[0] in (query)
    Is_Null,      // args[0]
    Function,     // name(args)
    Exists,       // query
    Scalar_Query, // query
};

struct Expr {
    Expr_Kind kind = Expr_Kind::Null;
    Token token;
    QString qualifier;
    QString name;
    bool negated = false; ///< not like, not in, not between, is not null
    std::vector<Expr_Ptr> args;
    std::unique_ptr<Query> query;
};

enum class Join_Kind { Inner, Left, Right };

/// A table, a query in parentheses, or a join of two.
struct Source {
    QString table;
    QString alias;
    std::unique_ptr<Query> query;
    std::unique_ptr<Source> left;
    std::unique_ptr<Source> right;
    Join_Kind join = Join_Kind::Inner;
    Expr_Ptr on;
};

struct Select_Item {
    bool star = false;
    QString qualifier; ///< of a star
    Expr_Ptr expr;
    QString alias;
};

struct Order_Term {
    Expr_Ptr expr;
    bool descending = false;
};

struct Select {
    bool distinct = false;
    std::optional<Token> top;
    std::vector<Select_Item> items;
    std::vector<Source> from;
    Expr_Ptr where;
    std::vector<Expr_Ptr> groupBy;
    Expr_Ptr having;
    std::vector<Order_Term> orderBy;
};

/// One select, or a union of several; the order of the last one is that of the whole union.
struct Query {
    std::vector<Select> parts;
    std::vector<bool> keepDuplicates; ///< "union all" before part i + 1
};

struct Insert {
    QString table;
    std::vector<QString> columns;
    std::vector<Expr_Ptr> values;
    std::unique_ptr<Query> query;
};

struct Update {
    QString table;
    QString alias;
    std::vector<std::pair<QString, Expr_Ptr>> changes;
    Expr_Ptr where;
};

struct Delete {
    QString target; ///< the word between "delete" and "from": a table, a column, or ""
    QString table;
    QString alias;
    Expr_Ptr where;
};

struct Column_Definition {
    QString name;
    QString type; ///< lower case
    int size = 0;
    bool notNull = false;
    bool primaryKey = false;
    bool unique = false;
    std::optional<Token> defaultValue; ///< a literal, or the name of a function
    bool defaultNegative = false;
};

struct Create_Table {
    QString table;
    std::vector<Column_Definition> columns;
    std::vector<QString> primaryKey;
};

struct Alter_Table {
    enum class Action { Add, Alter, Drop } action = Action::Add;
    QString table;
    std::vector<Column_Definition> columns; ///< for Drop only the names
};

struct Drop_Table {
    QString table;
};

using Statement = std::variant<Query, Insert, Update, Delete, Create_Table, Alter_Table, Drop_Table>;
} // namespace Sql_Ast
