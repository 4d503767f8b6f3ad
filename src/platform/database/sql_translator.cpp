// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/sql_translator.h"

#include "platform/database/engine_error.h"
#include "platform/database/expr_translator.h"

#include <utility>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace
{
const QString Row_Alias = u"\"zelqor:row\""_s;
} // namespace

QString Folding(Value_Type type)
{
    return Is_Text(type) ? u" COLLATE zelqor_text"_s : QString();
}

QString Output_Alias(size_t index)
{
    return u"zelqor:"_s + QString::number(index);
}

const Catalog_Table &Translator::Table(const QString &name)
{
    const Catalog_Table *table = m_catalog.Find(name);
    if (table == nullptr) {
        throw Engine_Error::Missing_Table(name);
    }
    m_plan.tables.push_back(table->name);
    return *table;
}

QString Translator::Query(const struct Query &query, const Sql_Scope *outer, std::vector<Output> &outputs,
                          bool updatable)
{
    const Catalog_Table *tied = std::exchange(m_ties, false) ? Table_Of_Rows(query, m_catalog) : nullptr;
    if (query.parts.size() == 1) {
        Select_Text select = Select(query.parts.front(), outer, true, updatable, tied, false);
        outputs = std::move(select.outputs);
        return select.text;
    }
    QString text;
    for (size_t i = 0; i < query.parts.size(); ++i) {
        const struct Select &part = query.parts[i];
        const bool last = i + 1 == query.parts.size();
        Select_Text select = Select(part, outer, !last, false, tied, true);
        if (i == 0) {
            outputs = std::move(select.outputs);
        } else if (select.outputs.size() != outputs.size()) {
            throw Engine_Error::Syntax(u"the selects of a union have different numbers of columns"_s);
        } else {
            text += query.keepDuplicates[i - 1] ? u" UNION ALL "_s : u" UNION "_s;
        }
        const bool closed = part.top.has_value() || (!last && !part.orderBy.empty());
        text += closed ? u"SELECT * FROM ("_s + select.text + u')' : select.text;
    }
    Sql_Scope whole;
    whole.entries.push_back({u"zelqor union"_s, nullptr, outputs});
    const std::vector<Order_Term> &order = query.parts.back().orderBy;
    QString orderText = order.empty() ? QString() : Order(order, nullptr, whole, outputs.size());
    if (tied != nullptr) {
        orderText += Tie(Row_Alias, order);
    }
    for (Output &output : outputs) {
        output.column.clear();
    }
    return u"SELECT * FROM ("_s + text + u") AS \"zelqor union\""_s + orderText;
}

QString Translator::From(const struct Select &select, Sql_Scope &scope)
{
    QString from;
    for (const struct Source &source : select.from) {
        from += (from.isEmpty() ? u" FROM "_s : u", "_s) + Source(source, scope);
    }
    return from;
}

/// @param tied  the table whose row numbers settle ties; selects of a union then carry them as a last hidden column
Translator::Select_Text Translator::Select(const struct Select &select, const Sql_Scope *outer, bool ordered,
                                           bool updatable, const Catalog_Table *tied, bool inUnion)
{
    Sql_Scope scope;
    scope.outer = outer;
    const QString from = From(select, scope);
    Select_Text result;
    m_aggregate = false;
    QString items = Items(select, scope, result.outputs, select.distinct || (inUnion && tied == nullptr));
    const bool single = select.from.size() == 1 && scope.entries.size() == 1 && scope.entries[0].table != nullptr;
    if (updatable && single && scope.entries[0].table->hasRowid && !select.distinct && !m_aggregate &&
        select.groupBy.empty()) {
        m_plan.baseTable = scope.entries[0].table->name;
        items += u", "_s + Quoted_Name(scope.entries[0].name) + u".rowid"_s;
    }
    const QString rowid = tied == nullptr ? QString() : Quoted_Name(scope.entries.front().name) + u".rowid"_s;
    if (tied != nullptr && inUnion) {
        items += u", "_s + rowid + u" AS "_s + Row_Alias;
    }
    result.text = u"SELECT "_s + (select.distinct ? u"DISTINCT "_s : QString()) + items + from;
    if (select.where != nullptr) {
        result.text += u" WHERE "_s + Condition(*select.where, scope);
    }
    result.text += Group(select, scope);
    if (select.having != nullptr) {
        result.text += u" HAVING "_s + Condition(*select.having, scope);
    }
    if (ordered && !select.orderBy.empty()) {
        result.text += Order(select.orderBy, &select, scope, result.outputs.size());
        if (tied != nullptr) {
            result.text += Tie(rowid, select.orderBy);
        }
    }
    result.text += Limit(select);
    return result;
}

QString Translator::Limit(const struct Select &select)
{
    return select.top ? u" LIMIT "_s + Parameter_Text(select.top->literal, Bind::Number) : QString();
}

QString Translator::Group(const struct Select &select, const Sql_Scope &scope)
{
    QStringList terms;
    for (const Expr_Ptr &term : select.groupBy) {
        if (term->kind == Expr_Kind::Literal) {
            throw Engine_Error::Syntax(u"a literal cannot be grouped by"_s);
        }
        const Sql_Piece piece = Expression(*term, scope);
        terms.append(piece.text + Folding(piece.type));
    }
    return terms.isEmpty() ? QString() : u" GROUP BY "_s + terms.join(u", "_s);
}

QString Translator::Items(const struct Select &select, const Sql_Scope &scope, std::vector<Output> &outputs, bool told)
{
    constexpr int First_Unnamed = 1000;
    QStringList texts;
    int unnamed = First_Unnamed;
    for (const Select_Item &item : select.items) {
        if (item.star) {
            Star(item, scope, texts, outputs, told);
            continue;
        }
        const Sql_Piece piece = Expression(*item.expr, scope);
        QString name = item.alias.isEmpty() ? piece.column : item.alias;
        if (name.isEmpty()) {
            name = u"Expr"_s + QString::number(unnamed++);
        }
        texts.append(piece.text + (told ? Folding(piece.type) : QString()) + u" AS "_s +
                     Quoted_Name(Output_Alias(outputs.size())));
        outputs.push_back({name, piece.type, piece.size, piece.column});
    }
    return texts.join(u", "_s);
}

void Translator::Star(const Select_Item &item, const Sql_Scope &scope, QStringList &texts, std::vector<Output> &outputs,
                      bool told)
{
    bool found = false;
    for (const Sql_Scope::Entry &entry : scope.entries) {
        if (!item.qualifier.isEmpty() && entry.name.compare(item.qualifier, Qt::CaseInsensitive) != 0) {
            continue;
        }
        found = true;
        const auto add = [&](const QString &column, const Output &output) {
            texts.append(Quoted_Name(entry.name) + u'.' + Quoted_Name(column) +
                         (told ? Folding(output.type) : QString()) + u" AS "_s +
                         Quoted_Name(Output_Alias(outputs.size())));
            outputs.push_back(output);
        };
        if (entry.table != nullptr) {
            for (const Catalog_Column &column : entry.table->columns) {
                add(column.name, {column.name, column.type, column.size, column.name});
            }
        }
        for (size_t i = 0; i < entry.outputs.size(); ++i) {
            add(Output_Alias(i), entry.outputs[i]);
        }
    }
    if (!found) {
        throw item.qualifier.isEmpty() ? Engine_Error::Syntax(u"'*' without a table"_s)
                                       : Engine_Error::Missing_Table(item.qualifier);
    }
}

QString Translator::Source(const struct Source &source, Sql_Scope &scope)
{
    if (source.left != nullptr) {
        const QString left = Source(*source.left, scope);
        const bool nested = source.right->left != nullptr;
        QString right = Source(*source.right, scope);
        right = nested ? u'(' + right + u')' : right;
        const QString join = source.join == Join_Kind::Left    ? u" LEFT JOIN "_s
                             : source.join == Join_Kind::Right ? u" RIGHT JOIN "_s
                                                               : u" JOIN "_s;
        return left + join + right + u" ON "_s + Condition(*source.on, scope);
    }
    Sql_Scope::Entry entry;
    QString text;
    if (source.query != nullptr) {
        // Not lateral: a query in parentheses does not see its neighbours.
        text = u'(' + Query(*source.query, scope.outer, entry.outputs, false) + u')';
        entry.name = source.alias.isEmpty() ? u"zelqor query "_s + QString::number(scope.entries.size()) : source.alias;
    } else {
        entry.table = &Table(source.table);
        text = Quoted_Name(entry.table->name);
        entry.name = source.alias.isEmpty() ? entry.table->name : source.alias;
    }
    for (const Sql_Scope::Entry &other : scope.entries) {
        if (other.name.compare(entry.name, Qt::CaseInsensitive) == 0) {
            throw Engine_Error::Syntax(u"the table '%1' stands twice after 'from'"_s.arg(entry.name));
        }
    }
    text += u" AS "_s + Quoted_Name(entry.name);
    scope.entries.push_back(std::move(entry));
    return text;
}

/// Texts are ordered as the dictionary orders them; a number names the column of the result at that place.
QString Translator::Order(const std::vector<Order_Term> &terms, const struct Select *select, const Sql_Scope &scope,
                          size_t outputs)
{
    QStringList texts;
    for (const Order_Term &term : terms) {
        const Expr &expr = *term.expr;
        QString text;
        if (expr.kind == Expr_Kind::Literal && expr.token.kind == Token_Kind::Number) {
            const size_t place = expr.token.raw.toULongLong();
            if (place < 1 || place > outputs) {
                throw Engine_Error::Syntax(u"there is no column %1 to order by"_s.arg(expr.token.raw));
            }
            m_plan.reusable = false;
            text = QString::number(place);
        } else {
            const Expr *meant = &expr;
            if (select != nullptr && expr.kind == Expr_Kind::Column && expr.qualifier.isEmpty()) {
                for (const Select_Item &item : select->items) {
                    if (!item.alias.isEmpty() && item.alias.compare(expr.name, Qt::CaseInsensitive) == 0) {
                        meant = item.expr.get();
                    }
                }
            }
            const Sql_Piece piece = Expression(*meant, scope);
            text = piece.text + (Is_Text(piece.type) ? u" COLLATE zelqor_sort"_s : QString());
        }
        texts.append(text + (term.descending ? u" DESC"_s : QString()));
    }
    return u" ORDER BY "_s + texts.join(u", "_s);
}

namespace
{
const Catalog_Column &Column_Of(const Catalog_Table &table, const QString &name)
{
    const Catalog_Column *column = table.Find(name);
    if (column == nullptr) {
        throw Engine_Error::Missing_Column(name);
    }
    return *column;
}

Sql_Scope Scope_Of(const Catalog_Table &table, const QString &alias)
{
    Sql_Scope scope;
    scope.entries.push_back({alias.isEmpty() ? table.name : alias, &table, {}});
    return scope;
}

QString Aliased(const Catalog_Table &table, const QString &alias)
{
    return Quoted_Name(table.name) + (alias.isEmpty() ? QString() : u" AS "_s + Quoted_Name(alias));
}

QString Translate_Insert(const Insert &insert, Translator &translator)
{
    const Catalog_Table &table = translator.Table(insert.table);
    std::vector<const Catalog_Column *> columns;
    QStringList names;
    for (const QString &name : insert.columns) {
        columns.push_back(&Column_Of(table, name));
    }
    for (size_t i = 0; i < table.columns.size() && insert.columns.empty(); ++i) {
        columns.push_back(&table.columns[i]);
    }
    for (const Catalog_Column *column : columns) {
        names.append(Quoted_Name(column->name));
    }
    const QString head = u"INSERT INTO "_s + Quoted_Name(table.name) + u" ("_s + names.join(u", "_s) + u") "_s;
    std::vector<Output> outputs;
    const QString query =
        insert.query == nullptr ? QString() : translator.Query(*insert.query, nullptr, outputs, false);
    if (columns.size() != (insert.query == nullptr ? insert.values.size() : outputs.size())) {
        throw Engine_Error::Syntax(u"the number of values differs from the number of columns"_s);
    }
    QStringList values;
    for (size_t i = 0; i < columns.size(); ++i) {
        if (insert.query == nullptr) {
            values.append(translator.Assigned(*insert.values[i], *columns[i], Sql_Scope()));
        } else {
            const Sql_Piece piece{Quoted_Name(Output_Alias(i)), outputs[i].type, outputs[i].size, {}, false};
            values.append(translator.Assigned_Piece(piece, *columns[i]));
        }
    }
    return insert.query == nullptr
               ? head + u"VALUES ("_s + values.join(u", "_s) + u')'
               : head + u"SELECT "_s + values.join(u", "_s) + u" FROM ("_s + query + u") AS \"zelqor rows\""_s;
}

QString Translate_Update(const Update &update, Translator &translator)
{
    const Catalog_Table &table = translator.Table(update.table);
    const Sql_Scope scope = Scope_Of(table, update.alias);
    QStringList changes;
    for (const auto &[name, value] : update.changes) {
        const Catalog_Column &column = Column_Of(table, name);
        changes.append(Quoted_Name(column.name) + u" = "_s + translator.Assigned(*value, column, scope));
    }
    QString text = u"UPDATE "_s + Aliased(table, update.alias) + u" SET "_s + changes.join(u", "_s);
    if (update.where != nullptr) {
        text += u" WHERE "_s + translator.Condition(*update.where, scope);
    }
    return text;
}

/// The columns that are set; where one of them is of the key, the rows are other ones.
QByteArrayList Changes_Of(const Update &update, const Catalog_Table &table)
{
    QByteArrayList names;
    for (const auto &[name, value] : update.changes) {
        const Catalog_Column &column = Column_Of(table, name);
        names << Quoted_Name(column.keyPlace > 0 ? table.name : column.name).toUtf8();
    }
    return names;
}

QString Translate_Delete(const Delete &remove, Translator &translator)
{
    const Catalog_Table &table = translator.Table(remove.table);
    const auto named = [&](const QString &name) {
        return name.compare(remove.target, Qt::CaseInsensitive) == 0;
    };
    if (!remove.target.isEmpty() && !named(table.name) && !named(remove.alias)) {
        Column_Of(table, remove.target);
    }
    QString text = u"DELETE FROM "_s + Aliased(table, remove.alias);
    if (remove.where != nullptr) {
        text += u" WHERE "_s + translator.Condition(*remove.where, Scope_Of(table, remove.alias));
    }
    return text;
}
} // namespace

Plan Translate(const Statement &statement, const Catalog &catalog, bool updatable)
{
    Plan plan;
    Translator translator(catalog, plan, true);
    Translate_By(translator, plan, statement, catalog, updatable);
    const auto *query = std::get_if<Query>(&statement);
    plan.keys = query == nullptr || updatable ? nullptr : Translate_Keys(*query, catalog);
    return plan;
}

void Translate_By(Translator &translator, Plan &plan, const Statement &statement, const Catalog &catalog,
                  bool updatable)
{
    QString text;
    if (const auto *query = std::get_if<Query>(&statement)) {
        text = translator.Query(*query, nullptr, plan.outputs, updatable);
    } else {
        plan.write = true;
        if (const auto *insert = std::get_if<Insert>(&statement)) {
            text = Translate_Insert(*insert, translator);
        } else if (const auto *update = std::get_if<Update>(&statement)) {
            text = Translate_Update(*update, translator);
        } else if (const auto *remove = std::get_if<Delete>(&statement)) {
            text = Translate_Delete(*remove, translator);
        }
        const auto *update = std::get_if<Update>(&statement);
        const Catalog_Table &table = *catalog.Find(plan.tables.front());
        plan.changes =
            update != nullptr ? Changes_Of(*update, table) : QByteArrayList{Quoted_Name(table.name).toUtf8()};
        const Catalog_Column *key = table.Single_Key();
        plan.key = key != nullptr && Is_Text(key->type) ? key->name : QString();
    }
    plan.sql = text.toUtf8();
}
