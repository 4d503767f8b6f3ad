// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/sql_translator.h"

/// A piece of an engine's text with what is known of its value.
struct Sql_Piece {
    QString text;
    Value_Type type = Value_Type::Null;
    int size = 0;
    QString column;      ///< the name of the column that it is, else ""
    bool noCase = false; ///< a column whose own collation is NOCASE
    QString table = {};  ///< of a column
};

/// The sources that names in a select can mean, and the select around it.
struct Sql_Scope {
    struct Entry {
        QString name;
        const Catalog_Table *table = nullptr;
        std::vector<Output> outputs; ///< of a query in parentheses; its columns are named by Output_Alias
    };
    std::vector<Entry> entries;
    const Sql_Scope *outer = nullptr;
    bool grouped = false; ///< its rows stand for several: a column outside of an aggregate is that of any of them
};

QString Output_Alias(size_t index);
/// The collation of equality behind a text: " COLLATE zelqor_text"; "" behind other values.
QString Folding(Value_Type type);

/// Turns expressions and queries into SQLite text and collects the parameters of one plan. What another engine writes
/// in another way is virtual. A parameter is "?" and its number in every engine's text.
class Translator
{
public:
    Translator(const Catalog &catalog, Plan &plan, bool ties = false) : m_catalog(catalog), m_plan(plan), m_ties(ties)
    {
    }
    virtual ~Translator() = default;
    Translator(const Translator &) = delete;
    Translator &operator=(const Translator &) = delete;

    virtual QString Query(const Sql_Ast::Query &query, const Sql_Scope *outer, std::vector<Output> &outputs,
                          bool updatable);
    /// An expression whose value is wanted.
    virtual Sql_Piece Expression(const Sql_Ast::Expr &expr, const Sql_Scope &scope);
    /// An expression of which it is asked whether it is true.
    virtual QString Condition(const Sql_Ast::Expr &expr, const Sql_Scope &scope)
    {
        return Expression(expr, scope).text;
    }
    /// The value of an expression as it is stored in a column.
    QString Assigned(const Sql_Ast::Expr &expr, const Catalog_Column &column, const Sql_Scope &scope);
    QString Assigned_Piece(const Sql_Piece &piece, const Catalog_Column &column);
    const Catalog_Table &Table(const QString &name);
    QString From(const Sql_Ast::Select &select, Sql_Scope &scope);
    /// @param told  rows are told apart by what they show, without regard to case
    QString Items(const Sql_Ast::Select &select, const Sql_Scope &scope, std::vector<Output> &outputs,
                  bool told = false);
    virtual QString Order(const std::vector<Sql_Ast::Order_Term> &terms, const Sql_Ast::Select *select,
                          const Sql_Scope &scope, size_t outputs);

protected:
    using Expr = Sql_Ast::Expr;
    struct Select_Text {
        QString text;
        std::vector<Output> outputs;
    };

    Select_Text Select(const Sql_Ast::Select &select, const Sql_Scope *outer, bool ordered, bool updatable,
                       const Catalog_Table *tied, bool inUnion);
    void Star(const Sql_Ast::Select_Item &item, const Sql_Scope &scope, QStringList &texts,
              std::vector<Output> &outputs, bool told);
    QString Source(const Sql_Ast::Source &source, Sql_Scope &scope);
    QString Group(const Sql_Ast::Select &select, const Sql_Scope &scope);
    QString Limit(const Sql_Ast::Select &select);

    virtual Sql_Piece Column(const Expr &expr, const Sql_Scope &scope);
    Sql_Piece Literal(const Expr &expr);
    virtual Sql_Piece Arithmetic(const Expr &expr, const Sql_Scope &scope);
    virtual Sql_Piece Compare(const Expr &expr, const Sql_Scope &scope);
    Sql_Piece Chain(const Expr &expr, const Sql_Scope &scope);
    virtual Sql_Piece Like(const Expr &expr, const Sql_Scope &scope);
    Sql_Piece Between(const Expr &expr, const Sql_Scope &scope);
    Sql_Piece In_List(const Expr &expr, const Sql_Scope &scope);
    virtual Sql_Piece In_Query(const Expr &expr, const Sql_Scope &scope);
    virtual Sql_Piece Function(const Expr &expr, const Sql_Scope &scope);
    virtual Sql_Piece Aggregate(const Expr &expr, const Sql_Scope &scope);
    Sql_Piece Instr(const Expr &expr, const Sql_Scope &scope);

    /// Both sides of a comparison in one type, and the collation that it needs.
    struct Pair {
        QString left;
        QString right;
        QString collation; ///< " COLLATE x", or "" when the column's own serves
    };
    /// @param equality  it is asked whether they are equal, and not which one comes first
    virtual Pair Comparable(const Expr &left, const Expr &right, const Sql_Scope &scope, bool equality);
    bool Is_One_Ascii(const Sql_Piece &a, const Sql_Piece &b);
    QString Operand(const Expr &expr, const Sql_Piece &piece, Value_Type other);
    QString Parameter_Text(int literal, Bind bind, int size = 0, const QString &column = {});
    virtual QString Text_Of(const Sql_Piece &piece);
    QString Text_Argument(const Expr &expr, const Sql_Scope &scope);

    const Catalog &m_catalog;
    Plan &m_plan;
    bool m_ties; ///< rows that are equal in the order of the outermost query are ordered by their numbers
    bool m_aggregate = false;
};

/// Translates a statement by a translator that collects in `plan`.
void Translate_By(Translator &translator, Plan &plan, const Sql_Ast::Statement &statement, const Catalog &catalog,
                  bool updatable);
/// A value of several rows: count, sum and their like.
bool Has_Aggregate(const Sql_Ast::Expr &expr);
/// The table whose rows a query shows one for one, so that their numbers tell them apart; null when there is none.
/// Of a union each select must show them, with the key that tells whole rows apart.
const Catalog_Table *Table_Of_Rows(const Sql_Ast::Query &query, const Catalog &catalog);
/// ", x.rowid" with the direction of the last term: what comes behind an order to settle ties.
QString Tie(const QString &rowid, const std::vector<Sql_Ast::Order_Term> &terms);
