// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/catalog.h"
#include "platform/database/sql_ast.h"

/// How the value of a literal is made when its statement runs.
enum class Bind {
    Plain,
    Text,       // a number becomes text
    Number,     // a text must mean a number
    Date,       // a text must mean a date
    Prefix_Low, // of a like pattern: the digits it begins with, the lower end of the range
    Prefix_High,
    Date_Low, // the same for the prefix of a date
    Date_High,
    As_Text, // assigned to a column of that type
    As_Long,
    As_Single,
    As_Date,
};

struct Parameter {
    int literal = 0;
    Bind bind = Bind::Plain;
    int size = 0;   ///< of Text(n), 0 for memo
    QString column; ///< for the error text
};

/// A column of the result.
struct Output {
    QString name;
    Value_Type type = Value_Type::Null;
    qint32 size = 0; ///< of Text(n)
    QString column;  ///< of the base table, "" for a computed one
};

/// A statement as SQLite runs it.
struct Plan {
    QByteArray sql;
    std::vector<Parameter> parameters;
    std::vector<Output> outputs;
    bool write = false;
    bool reusable = true; ///< the same SQL serves every statement of this shape
    QString baseTable;    ///< of an updatable query, whose last hidden column is then the rowid
    std::vector<QString> tables;
};

/// Translates a query, insert, update or delete. @throws Run_Time_Error for unknown names and misused functions.
Plan Translate(const Sql_Ast::Statement &statement, const Catalog &catalog, bool updatable);
