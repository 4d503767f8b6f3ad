// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/engine_error.h"
#include "platform/database/server_translator.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace
{
const QString Row_Alias = u"\"zelqor:row\""_s;

QString Order_Alias(qsizetype index)
{
    return Quoted_Name(u"zelqor:order"_s + QString::number(index));
}

/// The number of a column of the result that an order names, 0 for an expression.
size_t Place_Of(const Order_Term &term, size_t outputs)
{
    const Expr &expr = *term.expr;
    if (expr.kind != Expr_Kind::Literal || expr.token.kind != Token_Kind::Number) {
        return 0;
    }
    const size_t place = expr.token.raw.toULongLong();
    if (place < 1 || place > outputs) {
        throw Engine_Error::Syntax(u"there is no column %1 to order by"_s.arg(expr.token.raw));
    }
    return place;
}

QString All_Outputs(const std::vector<Output> &outputs)
{
    QStringList names;
    for (size_t i = 0; i < outputs.size(); ++i) {
        names.append(Quoted_Name(Output_Alias(i)));
    }
    return names.join(u", "_s);
}

/// "DISTINCT ON (...) " for rows that are told apart by what they show.
QString Distinct_Of(const std::vector<Output> &outputs)
{
    QStringList told;
    for (size_t i = 0; i < outputs.size(); ++i) {
        told.append(Server_Text::Told(Quoted_Name(Output_Alias(i)), outputs[i].type));
    }
    return u"DISTINCT ON ("_s + told.join(u", "_s) + u") "_s;
}

const Expr &Meant(const Order_Term &term, const Select &select)
{
    const Expr *meant = term.expr.get();
    if (meant->kind == Expr_Kind::Column && meant->qualifier.isEmpty()) {
        for (const Select_Item &item : select.items) {
            if (!item.alias.isEmpty() && item.alias.compare(meant->name, Qt::CaseInsensitive) == 0) {
                return *item.expr;
            }
        }
    }
    return *meant;
}

QString Row_Of(const Sql_Scope &scope)
{
    const Sql_Scope::Entry &entry = scope.entries.front();
    return Quoted_Name(entry.name) + u'.' + Quoted_Name(entry.table->rowColumn);
}

bool Is_Grouped(const Select &select)
{
    return !select.groupBy.empty() || (select.having != nullptr && Has_Aggregate(*select.having)) ||
           std::any_of(select.items.begin(), select.items.end(),
                       [](const Select_Item &item) { return item.expr != nullptr && Has_Aggregate(*item.expr); });
}
} // namespace

namespace Server_Text
{
QString Folded(const QString &text)
{
    return u"(zelqor_fold("_s + text + u") COLLATE \"C\")"_s;
}

QString Told(const QString &text, Value_Type type)
{
    return Is_Text(type) ? Folded(text) : text;
}

QString Ordered(const QString &text, Value_Type type, bool descending)
{
    const QString end = descending ? u" DESC NULLS LAST"_s : u" NULLS FIRST"_s;
    return Is_Text(type) ? text + u" COLLATE zelqor_sort"_s + end + u", "_s + Folded(text) + end : text + end;
}
} // namespace Server_Text

QString Server_Translator::Query(const struct Query &query, const Sql_Scope *outer, std::vector<Output> &outputs,
                                 bool updatable)
{
    const Catalog_Table *tied = std::exchange(m_ties, false) ? Table_Of_Rows(query, m_catalog) : nullptr;
    return query.parts.size() == 1 ? Select_Of(query.parts.front(), outer, outputs, true, updatable, tied, false)
                                   : Union_Of(query, outer, outputs, tied);
}

QString Server_Translator::Union_Of(const struct Query &query, const Sql_Scope *outer, std::vector<Output> &outputs,
                                    const Catalog_Table *tied)
{
    QString all;
    for (size_t i = 0; i < query.parts.size(); ++i) {
        std::vector<Output> own;
        const bool last = i + 1 == query.parts.size();
        const QString text = u"SELECT * FROM ("_s + Select_Of(query.parts[i], outer, own, !last, false, tied, true) +
                             u") AS \"zelqor part\""_s;
        if (i == 0) {
            outputs = std::move(own);
            all = text;
            continue;
        }
        if (own.size() != outputs.size()) {
            throw Engine_Error::Syntax(u"the selects of a union have different numbers of columns"_s);
        }
        all += u" UNION ALL "_s + text;
        if (!query.keepDuplicates[i - 1]) {
            const QString told = tied != nullptr ? u"DISTINCT ON ("_s + Row_Alias + u") "_s : Distinct_Of(outputs);
            all = u"SELECT "_s + told + u"* FROM ("_s + all + u") AS \"zelqor both\""_s;
        }
    }
    Sql_Scope whole;
    whole.entries.push_back({u"zelqor union"_s, nullptr, outputs});
    const struct Select &last = query.parts.back();
    Parts parts;
    parts.outputs = outputs;
    for (const Order_Term &term : last.orderBy) {
        const size_t place = Place_Of(term, outputs.size());
        m_plan.reusable = m_plan.reusable && place == 0;
        const Sql_Piece piece =
            place > 0 ? Sql_Piece{Quoted_Name(Output_Alias(place - 1)), outputs[place - 1].type, 0, {}, false}
                      : Expression(*term.expr, whole);
        parts.order += (parts.order.isEmpty() ? u" ORDER BY "_s : u", "_s) +
                       Server_Text::Ordered(piece.text, piece.type, term.descending);
    }
    if (tied != nullptr) {
        const bool descending = !last.orderBy.empty() && last.orderBy.back().descending;
        parts.order +=
            (parts.order.isEmpty() ? u" ORDER BY "_s : u", "_s) + Row_Alias + (descending ? u" DESC"_s : QString());
    }
    for (Output &output : outputs) {
        output.column.clear();
    }
    return u"SELECT "_s + All_Outputs(outputs) + u" FROM ("_s + all + u") AS \"zelqor union\""_s + parts.order;
}

/// The select whose rows are to be distinct, or are ordered by a place, is one of rows that are made already.
QString Server_Translator::Select_Of(const struct Select &select, const Sql_Scope *outer, std::vector<Output> &outputs,
                                     bool ordered, bool updatable, const Catalog_Table *tied, bool inUnion)
{
    ordered = ordered && !select.orderBy.empty();
    const bool byPlace =
        ordered && std::any_of(select.orderBy.begin(), select.orderBy.end(), [](const auto &term) {
            return term.expr->kind == Expr_Kind::Literal && term.expr->token.kind == Token_Kind::Number;
        });
    const bool wrapped = select.distinct || byPlace;
    Parts parts = Parts_Of(select, outer, ordered, inUnion || ordered ? tied : nullptr, wrapped, updatable && !wrapped);
    outputs = parts.outputs;
    if (wrapped) {
        m_plan.reusable = m_plan.reusable && !byPlace;
        return Wrapped(select, parts);
    }
    const QString items = inUnion && tied != nullptr ? parts.items + u", "_s + parts.hidden.back() : parts.items;
    return u"SELECT "_s + items + parts.rest + parts.order + Limit(select);
}

QString Server_Translator::Wrapped(const struct Select &select, const Parts &parts)
{
    const QString hidden = parts.hidden.isEmpty() ? QString() : u", "_s + parts.hidden.join(u", "_s);
    const QString inner = u"SELECT "_s + parts.items + hidden + parts.rest;
    const QString rows =
        select.distinct ? u"SELECT "_s + Distinct_Of(parts.outputs) + u"* FROM ("_s + inner + u") AS \"zelqor all\""_s
                        : inner;
    return u"SELECT "_s + All_Outputs(parts.outputs) + u" FROM ("_s + rows + u") AS \"zelqor rows\""_s + parts.order +
           Limit(select);
}

Server_Translator::Parts Server_Translator::Parts_Of(const struct Select &select, const Sql_Scope *outer, bool ordered,
                                                     const Catalog_Table *tied, bool named, bool updatable)
{
    Parts parts;
    Sql_Scope scope;
    scope.outer = outer;
    parts.rest = From(select, scope);
    if (select.where != nullptr) {
        parts.rest += u" WHERE "_s + Condition(*select.where, scope);
    }
    parts.rest += Group_By(select, scope);
    scope.grouped = Is_Grouped(select);
    parts.items = Items(select, scope, parts.outputs, false);
    const bool single = select.from.size() == 1 && scope.entries.size() == 1 && scope.entries[0].table != nullptr;
    if (updatable && single && !scope.entries[0].table->rowColumn.isEmpty() && !scope.grouped) {
        m_plan.baseTable = scope.entries[0].table->name;
        parts.items += u", "_s + Row_Of(scope);
    }
    if (select.having != nullptr) {
        parts.rest += u" HAVING "_s + Condition(*select.having, scope);
    }
    if (ordered) {
        Order_By(select, scope, named, parts);
    }
    if (tied != nullptr) {
        const QString row = Row_Of(scope);
        parts.hidden.append(row + u" AS "_s + Row_Alias);
        if (ordered) {
            parts.order +=
                u", "_s + (named ? Row_Alias : row) + (select.orderBy.back().descending ? u" DESC"_s : QString());
        }
    }
    return parts;
}

/// @param named  what is ordered by is shown under a name of its own
void Server_Translator::Order_By(const struct Select &select, const Sql_Scope &scope, bool named, Parts &parts)
{
    QStringList terms;
    for (const Order_Term &term : select.orderBy) {
        const size_t place = Place_Of(term, parts.outputs.size());
        if (place > 0) {
            terms.append(Server_Text::Ordered(Quoted_Name(Output_Alias(place - 1)), parts.outputs[place - 1].type,
                                              term.descending));
            continue;
        }
        const Sql_Piece piece = Expression(Meant(term, select), scope);
        const QString name = Order_Alias(parts.hidden.size());
        if (named) {
            parts.hidden.append(piece.text + u" AS "_s + name);
        }
        terms.append(Server_Text::Ordered(named ? name : piece.text, piece.type, term.descending));
    }
    parts.order = u" ORDER BY "_s + terms.join(u", "_s);
}

QString Server_Translator::Group_By(const struct Select &select, const Sql_Scope &scope)
{
    QStringList terms;
    for (const Expr_Ptr &term : select.groupBy) {
        if (term->kind == Expr_Kind::Literal) {
            throw Engine_Error::Syntax(u"a literal cannot be grouped by"_s);
        }
        const Sql_Piece piece = Expression(*term, scope);
        terms.append(Server_Text::Told(piece.text, piece.type));
    }
    return terms.isEmpty() ? QString() : u" GROUP BY "_s + terms.join(u", "_s);
}

Plan Translate_For_Server(const Statement &statement, const Catalog &catalog, bool updatable)
{
    Plan plan;
    Server_Translator translator(catalog, plan, true);
    Translate_By(translator, plan, statement, catalog, updatable);
    return plan;
}
