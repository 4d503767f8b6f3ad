// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/expr_translator.h"

/// The same statements in PostgreSQL's words. Values that SQLite compares by a collation are compared by what
/// zelqor_fold makes of them, and that is what the server's indexes hold; the functions are those of
/// server_functions_sql.h, by the names that they have in a file.
class Server_Translator : public Translator
{
public:
    using Translator::Translator;

    QString Query(const Sql_Ast::Query &query, const Sql_Scope *outer, std::vector<Output> &outputs,
                  bool updatable) override;
    Sql_Piece Expression(const Sql_Ast::Expr &expr, const Sql_Scope &scope) override;
    QString Condition(const Sql_Ast::Expr &expr, const Sql_Scope &scope) override;

protected:
    Sql_Piece Column(const Expr &expr, const Sql_Scope &scope) override;
    Sql_Piece Arithmetic(const Expr &expr, const Sql_Scope &scope) override;
    Sql_Piece Compare(const Expr &expr, const Sql_Scope &scope) override;
    Sql_Piece Like(const Expr &expr, const Sql_Scope &scope) override;
    Sql_Piece In_Query(const Expr &expr, const Sql_Scope &scope) override;
    Sql_Piece Function(const Expr &expr, const Sql_Scope &scope) override;
    Sql_Piece Aggregate(const Expr &expr, const Sql_Scope &scope) override;
    Pair Comparable(const Expr &left, const Expr &right, const Sql_Scope &scope, bool equality) override;
    QString Text_Of(const Sql_Piece &piece) override;

private:
    /// What one select is made of: what it shows, from where, and what it is ordered by.
    struct Parts {
        QString items;
        QString rest; ///< from, where, group, having
        std::vector<Output> outputs;
        QStringList hidden; ///< terms of the order that are no output, each " AS" a name of its own
        QString order;
    };
    Parts Parts_Of(const Sql_Ast::Select &select, const Sql_Scope *outer, bool ordered, const Catalog_Table *tied,
                   bool named, bool updatable);
    QString Select_Of(const Sql_Ast::Select &select, const Sql_Scope *outer, std::vector<Output> &outputs, bool ordered,
                      bool updatable, const Catalog_Table *tied, bool inUnion);
    QString Union_Of(const Sql_Ast::Query &query, const Sql_Scope *outer, std::vector<Output> &outputs,
                     const Catalog_Table *tied);
    QString Wrapped(const Sql_Ast::Select &select, const Parts &parts);
    void Order_By(const Sql_Ast::Select &select, const Sql_Scope &scope, bool named, Parts &parts);
    QString Group_By(const Sql_Ast::Select &select, const Sql_Scope &scope);
    /// The value without what makes a truth a number of it.
    Sql_Piece Raw(const Expr &expr, const Sql_Scope &scope) { return Translator::Expression(expr, scope); }

    bool m_inAggregate = false;
};

/// Translates a query, insert, update or delete for a server. @throws Run_Time_Error as Translate does.
Plan Translate_For_Server(const Sql_Ast::Statement &statement, const Catalog &catalog, bool updatable);

namespace Server_Text
{
/// What two texts that are equal have in common.
QString Folded(const QString &text);
/// A value of a type as rows are told apart by it.
QString Told(const QString &text, Value_Type type);
/// Terms of an order: Null first, texts as the dictionary has them.
QString Ordered(const QString &text, Value_Type type, bool descending);
} // namespace Server_Text
