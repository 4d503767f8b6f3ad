// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/catalog.h"
#include "platform/database/sql_ast.h"

#include <QByteArrayList>
#include <memory>
#include <optional>

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
    Like_Text,    // a like pattern in a server's words, with its sets as single wildcards
    Like_Classes, // the sets of it as an expression, "" when it has none
    As_Text,      // assigned to a column of that type
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

struct Key_Plan;

/// A statement as its engine runs it.
struct Plan {
    QByteArray sql;
    std::vector<Parameter> parameters;
    std::vector<Output> outputs;
    bool write = false;
    bool reusable = true; ///< the same SQL serves every statement of this shape
    QString baseTable;    ///< of an updatable query, whose last hidden column is then the rowid
    std::vector<QString> tables;
    std::vector<Column_Pair> asciiPairs; ///< compared as if one of the two held nothing but ASCII
    QString key;                         ///< of a write: the key column of one text that it sets, "" for none
    QByteArrayList changes; ///< of a write: a query whose SQL holds none of these names has the same rows behind it
    std::shared_ptr<const Key_Plan> keys; ///< the same query by its row numbers, null where it can't be run so
};

/// A query that shows columns of one table in an order, taken apart: which rows, in which order, what they hold. Long
/// texts are then read for the rows that are wanted, and not while others are passed over or sorted.
struct Key_Plan {
    /// One select of a union.
    struct Part {
        Plan candidates;           ///< row numbers, by what is quick to tell
        std::optional<Plan> test;  ///< those of them, given as JSON, whose texts answer
        std::optional<Plan> first; ///< those of the rows that stand in front that answer; only beside a test
        int top = -1;              ///< the literal that bounds this part
    };
    std::vector<Part> parts;
    QByteArray orderOfMany; ///< all row numbers of a Key_Set in order
    QByteArray orderOfFew;  ///< the same for row numbers given as JSON
    /// Row numbers with what they are ordered by, where that is one text: all of them where an index holds them, else
    /// those from one number to another.
    QByteArray texts;
    bool textsOfIndex = false;
    bool descending = false;
    QByteArray row;      ///< the columns of one row number
    bool always = false; ///< pays for the first rows too: texts are searched, or would be sorted along
};

/// Translates a query, insert, update or delete. @throws Run_Time_Error for unknown names and misused functions.
Plan Translate(const Sql_Ast::Statement &statement, const Catalog &catalog, bool updatable);
/// The plan by row numbers of a query that Translate accepted, or null.
std::shared_ptr<const Key_Plan> Translate_Keys(const Sql_Ast::Query &query, const Catalog &catalog);
