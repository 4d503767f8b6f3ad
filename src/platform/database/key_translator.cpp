// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/engine_error.h"
#include "platform/database/expr_translator.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace
{
/// So many that the eye has something within tenths of a second, and few enough for that.
constexpr int Rows_Looked_At_First = 1000;
const QString Given_As_Json = u".rowid IN (SELECT value FROM json_each(?%1))"_s;

bool Is_Named(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

const Source &First_Source(const Select &select)
{
    const Source *source = &select.from.front();
    while (source->left != nullptr) {
        source = source->left.get();
    }
    return *source;
}

/// The first table behind "from" when each row of the select stands for one of its rows.
const Catalog_Table *Table_Of_Rows(const Select &select, const Catalog &catalog)
{
    if (select.from.empty() || select.distinct || !select.groupBy.empty() || First_Source(select).query != nullptr) {
        return nullptr;
    }
    for (const Select_Item &item : select.items) {
        if (item.expr != nullptr && Has_Aggregate(*item.expr)) {
            return nullptr;
        }
    }
    const Catalog_Table *table = catalog.Find(First_Source(select).table);
    return table != nullptr && table->hasRowid ? table : nullptr;
}

bool Shows_Key(const Select &select, const Catalog_Table &table)
{
    const Catalog_Column *key = table.Single_Key();
    const Source &source = First_Source(select);
    const QString name = source.alias.isEmpty() ? source.table : source.alias;
    return key != nullptr && std::any_of(select.items.begin(), select.items.end(), [&](const Select_Item &item) {
               return item.expr != nullptr && item.expr->kind == Expr_Kind::Column &&
                      Is_Named(item.expr->name, key->name) &&
                      (item.expr->qualifier.isEmpty() || Is_Named(item.expr->qualifier, name));
           });
}

/// A condition that reads whole texts.
bool Reads_Texts(const Expr &expr)
{
    if (expr.kind == Expr_Kind::Function && expr.name == u"instr"_s) {
        return true;
    }
    if (expr.kind == Expr_Kind::Like && expr.args[1]->kind == Expr_Kind::Literal) {
        return expr.args[1]->token.pattern == Pattern_Class::Other;
    }
    return std::any_of(expr.args.begin(), expr.args.end(), [](const Expr_Ptr &one) { return Reads_Texts(*one); });
}

/// Takes a query apart; each piece is translated by itself, since it has parameters of its own.
class Key_Translation
{
public:
    Key_Translation(const Query &query, const Catalog &catalog, const Catalog_Table &table)
        : m_query(query), m_catalog(catalog), m_table(table)
    {
        const Source &source = First_Source(query.parts.front());
        m_name = source.alias.isEmpty() ? table.name : source.alias;
        m_scope.entries.push_back({m_name, &table, {}});
    }

    /// @throws Run_Time_Error where the query shows or orders by more than the table's own columns.
    std::shared_ptr<const Key_Plan> Make()
    {
        const std::vector<Order_Term> &terms = m_query.parts.back().orderBy;
        const QString order = Order(terms);
        const QString rowid = Quoted_Name(m_name) + u".rowid"_s;
        const QString from = u" FROM "_s + Quoted_Name(m_table.name) + u" AS "_s + Quoted_Name(m_name) + u" WHERE "_s;
        auto keys = std::make_shared<Key_Plan>();
        for (const Select &part : m_query.parts) {
            const bool bounded = part.top.has_value();
            if (bounded && (&part != &m_query.parts.front() || Order(part.orderBy) != order)) {
                return nullptr;
            }
            keys->parts.push_back(Part(part, terms.front()));
            keys->always = keys->always || keys->parts.back().test;
        }
        keys->always = keys->always || (keys->parts.front().top >= 0 && !Has_Index(*terms.front().expr));
        const QString behind = order + Tie(rowid, terms);
        keys->orderOfMany = (u"SELECT "_s + rowid + from + u"zelqor_among("_s + rowid + u", ?1)"_s + behind).toUtf8();
        keys->orderOfFew = (u"SELECT "_s + rowid + from + Quoted_Name(m_name) + Given_As_Json.arg(1) + behind).toUtf8();
        const Catalog_Column *column = m_table.Find(terms.front().expr->name);
        if (terms.size() == 1 && Is_Text(column->type)) {
            const QString texts = u"SELECT "_s + rowid + u", "_s + Quoted_Name(column->name) + from;
            keys->textsOfIndex = Has_Index(*terms.front().expr);
            keys->texts = (texts + (keys->textsOfIndex ? u"1"_s : rowid + u" BETWEEN ?1 AND ?2"_s)).toUtf8();
            keys->descending = terms.front().descending;
        }
        keys->row = (u"SELECT "_s + Items(m_query.parts.front(), *keys) + from + rowid + u" = ?1"_s).toUtf8();
        return keys;
    }

private:
    QString Order(const std::vector<Order_Term> &terms)
    {
        Plan plan;
        for (const Order_Term &term : terms) {
            if (term.expr->kind != Expr_Kind::Column) {
                throw Engine_Error::Missing_Column({});
            }
        }
        return Translator(m_catalog, plan).Order(terms, nullptr, m_scope, 0);
    }

    [[nodiscard]] bool Has_Index(const Expr &column) const
    {
        return m_catalog.Has_Index(Index_Name(m_table.name, m_table.Find(column.name)->name));
    }

    QString Items(const Select &select, Key_Plan &keys)
    {
        Plan plan;
        std::vector<Output> outputs;
        QString items = Translator(m_catalog, plan).Items(select, m_scope, outputs);
        for (const Output &output : outputs) {
            if (output.column.isEmpty()) {
                throw Engine_Error::Missing_Column(output.name);
            }
            keys.always = keys.always || output.type == Value_Type::Memo || output.type == Value_Type::Blob;
        }
        return items;
    }

    Key_Plan::Part Part(const Select &select, const Order_Term &order)
    {
        Key_Plan::Part part;
        part.top = select.top ? select.top->literal : -1;
        std::vector<const Expr *> quick;
        std::vector<const Expr *> slow;
        const bool alone = select.from.size() == 1 && select.from.front().left == nullptr;
        if (select.where != nullptr && select.where->kind == Expr_Kind::And && alone) {
            for (const Expr_Ptr &one : select.where->args) {
                (Reads_Texts(*one) ? slow : quick).push_back(one.get());
            }
        } else if (select.where != nullptr) {
            (alone && Reads_Texts(*select.where) ? slow : quick).push_back(select.where.get());
        }
        part.candidates = Rows_Where(select, quick, {});
        if (!slow.empty()) {
            part.test = Rows_Where(select, slow, Given_As_Json);
            quick.insert(quick.end(), slow.begin(), slow.end());
            part.first = Rows_Where(select, quick, Rows_In_Front(order));
        }
        return part;
    }

    /// About the first rows of the order, which an index tells at once; any rows where there is none.
    [[nodiscard]] QString Rows_In_Front(const Order_Term &order) const
    {
        const Catalog_Column *column = m_table.Find(order.expr->name);
        const bool indexed = column == m_table.Single_Key() || Has_Index(*order.expr);
        const QString by = u" ORDER BY "_s + Quoted_Name(column->name) + (order.descending ? u" DESC"_s : QString());
        return u".rowid IN (SELECT rowid FROM "_s + Quoted_Name(m_table.name) + (indexed ? by : QString()) +
               u" LIMIT "_s + QString::number(Rows_Looked_At_First) + u')';
    }

    /// @param among  what the row number must be among: SQL behind its name, %1 for a further parameter, or ""
    [[nodiscard]] Plan Rows_Where(const Select &select, const std::vector<const Expr *> &conditions,
                                  const QString &among) const
    {
        Plan plan;
        Translator translator(m_catalog, plan);
        Sql_Scope scope;
        const QString from = translator.From(select, scope);
        const QString name = Quoted_Name(scope.entries.front().name);
        QStringList texts;
        for (const Expr *condition : conditions) {
            texts << translator.Expression(*condition, scope).text;
        }
        if (!among.isEmpty()) {
            texts.prepend(name + QString(among).replace("%1"_L1, QString::number(plan.parameters.size() + 1)));
        }
        plan.sql = (u"SELECT "_s + name + u".rowid"_s + from +
                    (texts.isEmpty() ? QString() : u" WHERE "_s + texts.join(u" AND "_s)))
                       .toUtf8();
        return plan;
    }

    const Query &m_query;
    const Catalog &m_catalog;
    const Catalog_Table &m_table;
    QString m_name;
    Sql_Scope m_scope;
};
} // namespace

bool Has_Aggregate(const Expr &expr)
{
    static constexpr std::array names{"count", "sum", "min", "max", "avg"};
    return (expr.kind == Expr_Kind::Function &&
            std::any_of(names.begin(), names.end(),
                        [&expr](const char *name) { return expr.name == QLatin1StringView(name); })) ||
           std::any_of(expr.args.begin(), expr.args.end(), [](const Expr_Ptr &one) { return Has_Aggregate(*one); });
}

const Catalog_Table *Table_Of_Rows(const Query &query, const Catalog &catalog)
{
    const Catalog_Table *table = Table_Of_Rows(query.parts.front(), catalog);
    for (size_t i = 1; i < query.parts.size() && table != nullptr; ++i) {
        if (Table_Of_Rows(query.parts[i], catalog) != table) {
            table = nullptr;
        }
    }
    const bool told = table == nullptr || query.parts.size() == 1 ||
                      std::all_of(query.parts.begin(), query.parts.end(),
                                  [table](const Select &part) { return Shows_Key(part, *table); });
    return told ? table : nullptr;
}

QString Tie(const QString &rowid, const std::vector<Order_Term> &terms)
{
    return terms.empty() ? QString() : u", "_s + rowid + (terms.back().descending ? u" DESC"_s : QString());
}

std::shared_ptr<const Key_Plan> Translate_Keys(const Query &query, const Catalog &catalog)
{
    const Catalog_Table *table = Table_Of_Rows(query, catalog);
    const bool plain =
        std::none_of(query.keepDuplicates.begin(), query.keepDuplicates.end(), [](bool keep) { return keep; });
    if (table == nullptr || !plain || query.parts.back().orderBy.empty()) {
        return nullptr;
    }
    try {
        return Key_Translation(query, catalog, *table).Make();
    } catch (const Run_Time_Error &) {
        return nullptr;
    }
}
