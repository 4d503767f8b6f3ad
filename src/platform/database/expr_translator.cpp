// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/expr_translator.h"

#include "platform/database/engine_error.h"
#include "platform/database/text_fold.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace
{
constexpr size_t Alternatives_For_A_List = 8;

Sql_Piece Truth(const QString &text)
{
    return {text, Value_Type::Boolean, 0, {}, false};
}

bool Is_Literal_Text(const Expr &expr)
{
    return expr.kind == Expr_Kind::Literal && expr.token.kind == Token_Kind::Text;
}

bool Is_Ascii_Literal(const Expr &expr)
{
    return expr.kind == Expr_Kind::Literal && Text_Fold::Is_Ascii(expr.token.raw);
}

QString Negated(bool negated, const QString &text)
{
    return negated ? u"(NOT "_s + text + u')' : text;
}
} // namespace

QString Translator::Parameter_Text(int literal, Bind bind, int size, const QString &column)
{
    m_plan.parameters.push_back({literal, bind, size, column});
    return u'?' + QString::number(m_plan.parameters.size());
}

Sql_Piece Translator::Expression(const Expr &expr, const Sql_Scope &scope)
{
    switch (expr.kind) {
    case Expr_Kind::Literal:
        return Literal(expr);
    case Expr_Kind::Null:
        return {u"NULL"_s, Value_Type::Null, 0, {}, false};
    case Expr_Kind::Column:
        return Column(expr, scope);
    case Expr_Kind::Star:
        throw Engine_Error::Syntax(u"'*' outside of count"_s);
    case Expr_Kind::Not:
        return Truth(u"(NOT "_s + Condition(*expr.args[0], scope) + u')');
    case Expr_Kind::Negate:
        return {u"(- "_s + Expression(*expr.args[0], scope).text + u')', Value_Type::Number, 0, {}, false};
    case Expr_Kind::Arithmetic:
        return Arithmetic(expr, scope);
    case Expr_Kind::Compare:
        return Compare(expr, scope);
    case Expr_Kind::And:
    case Expr_Kind::Or:
        return Chain(expr, scope);
    case Expr_Kind::Like:
        return Like(expr, scope);
    case Expr_Kind::Between:
        return Between(expr, scope);
    case Expr_Kind::In_List:
        return In_List(expr, scope);
    case Expr_Kind::In_Query:
        return In_Query(expr, scope);
    case Expr_Kind::Is_Null:
        return Truth(u'(' + Expression(*expr.args[0], scope).text +
                     (expr.negated ? u" IS NOT NULL)"_s : u" IS NULL)"_s));
    case Expr_Kind::Function:
        return Function(expr, scope);
    case Expr_Kind::Exists:
    case Expr_Kind::Scalar_Query: {
        std::vector<Output> outputs;
        const bool aggregate = m_aggregate;
        const QString text = u'(' + Query(*expr.query, &scope, outputs, false) + u')';
        m_aggregate = aggregate;
        if (expr.kind == Expr_Kind::Exists) {
            return Truth(u"(EXISTS "_s + text + u')');
        }
        return {text, outputs.front().type, outputs.front().size, {}, false};
    }
    }
    return {};
}

Sql_Piece Translator::Literal(const Expr &expr)
{
    const Token &token = expr.token;
    if (token.kind == Token_Kind::Date) {
        return {Parameter_Text(token.literal, Bind::Date), Value_Type::Date, 0, {}, false};
    }
    const bool text = token.kind == Token_Kind::Text;
    return {Parameter_Text(token.literal, Bind::Plain), text ? Value_Type::Memo : Value_Type::Number, 0, {}, false};
}

Sql_Piece Translator::Column(const Expr &expr, const Sql_Scope &scope)
{
    const QString spelled = expr.qualifier.isEmpty() ? expr.name : expr.qualifier + u'.' + expr.name;
    for (const Sql_Scope *level = &scope; level != nullptr; level = level->outer) {
        Sql_Piece found;
        for (const Sql_Scope::Entry &entry : level->entries) {
            if (!expr.qualifier.isEmpty() && entry.name.compare(expr.qualifier, Qt::CaseInsensitive) != 0) {
                continue;
            }
            Sql_Piece piece;
            if (entry.table != nullptr) {
                if (const Catalog_Column *column = entry.table->Find(expr.name)) {
                    piece = {Quoted_Name(entry.name) + u'.' + Quoted_Name(column->name),
                             column->type,
                             column->size,
                             column->name,
                             column->noCase,
                             entry.table->name};
                }
            }
            for (size_t i = 0; i < entry.outputs.size() && piece.text.isEmpty(); ++i) {
                const Output &output = entry.outputs[i];
                if (output.name.compare(expr.name, Qt::CaseInsensitive) == 0) {
                    piece = {Quoted_Name(entry.name) + u'.' + Quoted_Name(Output_Alias(i)), output.type, output.size,
                             output.name, false};
                }
            }
            if (!piece.text.isEmpty() && !found.text.isEmpty()) {
                throw Engine_Error::Ambiguous_Column(spelled);
            }
            found = piece.text.isEmpty() ? found : piece;
        }
        if (!found.text.isEmpty()) {
            return found;
        }
    }
    if (expr.qualifier.isEmpty() && (expr.name.compare("true"_L1, Qt::CaseInsensitive) == 0 ||
                                     expr.name.compare("false"_L1, Qt::CaseInsensitive) == 0)) {
        return {expr.name.size() == 4 ? u"(-1)"_s : u"0"_s, Value_Type::Boolean, 0, {}, false};
    }
    throw Engine_Error::Missing_Column(spelled);
}

Sql_Piece Translator::Arithmetic(const Expr &expr, const Sql_Scope &scope)
{
    if (expr.name == u"&"_s) {
        const QString left = Text_Argument(*expr.args[0], scope);
        const QString right = Text_Argument(*expr.args[1], scope);
        return {u"zelqor_join("_s + left + u", "_s + right + u')', Value_Type::Memo, 0, {}, false};
    }
    const Sql_Piece left = Expression(*expr.args[0], scope);
    const Sql_Piece right = Expression(*expr.args[1], scope);
    if (expr.name == u"+"_s && Is_Text(left.type) && Is_Text(right.type)) {
        return {u'(' + left.text + u" || "_s + right.text + u')', Value_Type::Memo, 0, {}, false};
    }
    const auto number = [](const Sql_Piece &piece) {
        return Is_Text(piece.type) || piece.type == Value_Type::Date ? u"zelqor_number("_s + piece.text + u')'
                                                                     : piece.text;
    };
    const QString a = number(left);
    const QString b = number(right);
    QString text;
    if (expr.name == u"/"_s) {
        text = u"((1.0 * "_s + a + u") / "_s + b + u')';
    } else if (expr.name == u"^"_s) {
        text = u"pow("_s + a + u", "_s + b + u')';
    } else if (expr.name == u"\\"_s) {
        text = u"(CAST(round("_s + a + u") AS INTEGER) / CAST(round("_s + b + u") AS INTEGER))"_s;
    } else {
        const QString sign = expr.name == u"mod"_s ? u"%"_s : expr.name;
        text = u'(' + a + u' ' + sign + u' ' + b + u')';
    }
    return {text, Value_Type::Number, 0, {}, false};
}

/// The text of one side of a comparison whose other side has the type `other`. A literal takes the other's type;
/// of two computed sides, the text becomes what the other is.
QString Translator::Operand(const Expr &expr, const Sql_Piece &piece, Value_Type other)
{
    const bool literal = expr.kind == Expr_Kind::Literal;
    if (literal) {
        Parameter &parameter = m_plan.parameters.back();
        if (other == Value_Type::Date && piece.type != Value_Type::Number) {
            parameter.bind = Bind::Date;
        } else if (Is_Number(other)) {
            parameter.bind = Bind::Number;
        } else if (Is_Text(other)) {
            parameter.bind = Bind::Text;
        }
        return piece.text;
    }
    if (other == Value_Type::Date && Is_Text(piece.type)) {
        return u"zelqor_date("_s + piece.text + u')';
    }
    if (Is_Number(other) && (Is_Text(piece.type) || piece.type == Value_Type::Date)) {
        return u"zelqor_number("_s + piece.text + u')';
    }
    return piece.text;
}

/// Whether one of two columns holds nothing but ASCII, so that NOCASE and its indexes do. It is taken to be so, and the
/// plan says that it is; where it turns out otherwise, the catalog knows next time.
bool Translator::Is_One_Ascii(const Sql_Piece &a, const Sql_Piece &b)
{
    const Column_Pair pair{{a.table, a.column}, {b.table, b.column}};
    if (m_catalog.Is_Beyond_Ascii(pair)) {
        return false;
    }
    m_plan.asciiPairs.push_back(pair);
    return true;
}

Translator::Pair Translator::Comparable(const Expr &left, const Expr &right, const Sql_Scope &scope, bool equality)
{
    // A literal's parameter is the last one pushed while it is being adapted, so each side is finished in turn: the
    // side that is no literal first, because the literal follows its type.
    const bool leftLiteral = left.kind == Expr_Kind::Literal;
    const Expr &first = leftLiteral ? right : left;
    const Expr &second = leftLiteral ? left : right;
    const Sql_Piece a = Expression(first, scope);
    const Sql_Piece b = Expression(second, scope);
    const bool bothLiteral = first.kind == Expr_Kind::Literal;
    const bool secondLiteral = second.kind == Expr_Kind::Literal;
    const QString bText = Operand(second, b, bothLiteral ? Value_Type::Null : a.type);
    const QString aText = secondLiteral ? a.text : Operand(first, a, b.type);

    const bool text = Is_Text(a.type) && (Is_Text(b.type) || secondLiteral);
    QString collation;
    if (text) {
        const bool ownServes =
            a.noCase && (secondLiteral ? Is_Ascii_Literal(second) : equality && b.noCase && Is_One_Ascii(a, b));
        collation = ownServes                                   ? QString()
                    : secondLiteral && Is_Ascii_Literal(second) ? u" COLLATE NOCASE"_s
                                                                : u" COLLATE zelqor_text"_s;
    }
    return leftLiteral ? Pair{bText, aText, collation} : Pair{aText, bText, collation};
}

Sql_Piece Translator::Compare(const Expr &expr, const Sql_Scope &scope)
{
    const Pair pair = Comparable(*expr.args[0], *expr.args[1], scope, expr.name == u"="_s || expr.name == u"<>"_s);
    return Truth(u'(' + pair.left + pair.collation + u' ' + expr.name + u' ' + pair.right + u')');
}

namespace
{
/// "(a OR b) OR (c OR d)": as deep as the logarithm of the length, since SQLite limits the depth of an expression.
QString Balanced(const QStringList &texts, const QString &sign, qsizetype from, qsizetype to)
{
    if (to - from == 1) {
        return texts[from];
    }
    const qsizetype middle = from + (to - from) / 2;
    return u'(' + Balanced(texts, sign, from, middle) + sign + Balanced(texts, sign, middle, to) + u')';
}

/// Many "column = 'text'" of the same column, joined by "or".
bool Is_List_Of_Alternatives(const Expr &expr)
{
    if (expr.kind != Expr_Kind::Or || expr.args.size() < Alternatives_For_A_List) {
        return false;
    }
    const Expr &first = *expr.args[0];
    if (first.kind != Expr_Kind::Compare || first.args[0]->kind != Expr_Kind::Column) {
        return false;
    }
    return std::all_of(expr.args.begin(), expr.args.end(), [&first](const Expr_Ptr &one) {
        return one->kind == Expr_Kind::Compare && one->name == u"="_s && one->args[0]->kind == Expr_Kind::Column &&
               one->args[0]->name.compare(first.args[0]->name, Qt::CaseInsensitive) == 0 &&
               one->args[0]->qualifier.compare(first.args[0]->qualifier, Qt::CaseInsensitive) == 0 &&
               Is_Literal_Text(*one->args[1]) && Is_Ascii_Literal(*one->args[1]);
    });
}
} // namespace

Sql_Piece Translator::Chain(const Expr &expr, const Sql_Scope &scope)
{
    if (Is_List_Of_Alternatives(expr)) {
        QString list;
        QString subject;
        for (const Expr_Ptr &one : expr.args) {
            const Pair pair = Comparable(*one->args[0], *one->args[1], scope, true);
            list += (list.isEmpty() ? QString() : u", "_s) + pair.right;
            subject = pair.left + pair.collation;
        }
        return Truth(u'(' + subject + u" IN ("_s + list + u"))"_s);
    }
    QStringList texts;
    for (const Expr_Ptr &one : expr.args) {
        texts.append(Condition(*one, scope));
    }
    return Truth(Balanced(texts, expr.kind == Expr_Kind::And ? u" AND "_s : u" OR "_s, 0, texts.size()));
}

Sql_Piece Translator::Like(const Expr &expr, const Sql_Scope &scope)
{
    const Sql_Piece subject = Expression(*expr.args[0], scope);
    const Expr &patternExpr = *expr.args[1];
    if (!Is_Literal_Text(patternExpr)) {
        const QString pattern = Text_Argument(patternExpr, scope);
        return Truth(Negated(expr.negated, u"zelqor_like("_s + pattern + u", "_s + Text_Of(subject) + u')'));
    }
    const int literal = patternExpr.token.literal;
    const Pattern_Class pattern = patternExpr.token.pattern;
    const bool ranged = !subject.column.isEmpty() && Is_Text(subject.type);
    const auto range = [&](Bind low, Bind high) {
        const QString from = Parameter_Text(literal, low);
        const QString to = Parameter_Text(literal, high);
        return u'(' + subject.text + u" >= "_s + from + u" AND "_s + subject.text + u" < "_s + to + u')';
    };
    const auto full = [&] {
        return u"zelqor_like("_s + Parameter_Text(literal, Bind::Plain) + u", "_s + Text_Of(subject) + u')';
    };
    QString text;
    const bool date = subject.type == Value_Type::Date;
    if (date && (pattern == Pattern_Class::Date_Prefix || pattern == Pattern_Class::Digits_Prefix)) {
        text = range(Bind::Date_Low, Bind::Date_High);
    } else if (ranged && pattern == Pattern_Class::Everything) {
        text = u'(' + subject.text + u" >= '')"_s;
    } else if (ranged && pattern == Pattern_Class::Digits_Prefix) {
        text = range(Bind::Prefix_Low, Bind::Prefix_High);
    } else if (ranged && (pattern == Pattern_Class::Digits_Other || pattern == Pattern_Class::Date_Prefix)) {
        const QString bounds = range(Bind::Prefix_Low, Bind::Prefix_High);
        text = u'(' + bounds + u" AND "_s + full() + u')';
    } else {
        text = full();
    }
    return Truth(Negated(expr.negated, text));
}

Sql_Piece Translator::Between(const Expr &expr, const Sql_Scope &scope)
{
    const Pair low = Comparable(*expr.args[0], *expr.args[1], scope, false);
    const Pair high = Comparable(*expr.args[0], *expr.args[2], scope, false);
    return Truth(Negated(expr.negated, u'(' + low.left + low.collation + u" >= "_s + low.right + u" AND "_s +
                                           high.left + high.collation + u" <= "_s + high.right + u')'));
}

Sql_Piece Translator::In_List(const Expr &expr, const Sql_Scope &scope)
{
    QStringList tests;
    QString plainList;
    QString subject;
    for (size_t i = 1; i < expr.args.size(); ++i) {
        const Pair pair = Comparable(*expr.args[0], *expr.args[i], scope, true);
        if (pair.collation.isEmpty() && expr.args[0]->kind == Expr_Kind::Column) {
            subject = pair.left;
            plainList += (plainList.isEmpty() ? QString() : u", "_s) + pair.right;
        } else {
            tests.append(u'(' + pair.left + pair.collation + u" = "_s + pair.right + u')');
        }
    }
    if (!plainList.isEmpty()) {
        tests.append(u'(' + subject + u" IN ("_s + plainList + u"))"_s);
    }
    return Truth(Negated(expr.negated, Balanced(tests, u" OR "_s, 0, tests.size())));
}

Sql_Piece Translator::In_Query(const Expr &expr, const Sql_Scope &scope)
{
    const Sql_Piece subject = Expression(*expr.args[0], scope);
    std::vector<Output> outputs;
    const bool aggregate = m_aggregate;
    const QString text = Query(*expr.query, &scope, outputs, false);
    m_aggregate = aggregate;
    if (outputs.size() != 1) {
        throw Engine_Error::Syntax(u"the query behind 'in' must have one column"_s);
    }
    return Truth(u'(' + subject.text + Folding(subject.type) + (expr.negated ? u" NOT IN ("_s : u" IN ("_s) + text +
                 u"))"_s);
}

QString Translator::Text_Of(const Sql_Piece &piece)
{
    if (piece.type == Value_Type::Date) {
        return u"zelqor_short("_s + piece.text + u')';
    }
    return Is_Number(piece.type) || piece.type == Value_Type::Blob ? u"zelqor_str("_s + piece.text + u')' : piece.text;
}

QString Translator::Text_Argument(const Expr &expr, const Sql_Scope &scope)
{
    return Text_Of(Expression(expr, scope));
}

QString Translator::Assigned(const Expr &expr, const Catalog_Column &column, const Sql_Scope &scope)
{
    if (expr.kind != Expr_Kind::Literal) {
        return Assigned_Piece(Expression(expr, scope), column);
    }
    const int literal = expr.token.literal;
    switch (column.type) {
    case Value_Type::Text:
    case Value_Type::Memo:
        return Parameter_Text(literal, Bind::As_Text, column.size, column.name);
    case Value_Type::Long:
        return Parameter_Text(literal, Bind::As_Long, 0, column.name);
    case Value_Type::Single:
        return Parameter_Text(literal, Bind::As_Single, 0, column.name);
    case Value_Type::Date:
        return Parameter_Text(literal, Bind::As_Date, 0, column.name);
    default:
        return Parameter_Text(literal, Bind::Plain);
    }
}

QString Translator::Assigned_Piece(const Sql_Piece &piece, const Catalog_Column &column)
{
    if (piece.type == Value_Type::Null) {
        return piece.text;
    }
    const QString name = u", "_s + Quoted_Text(column.name) + u')';
    switch (column.type) {
    case Value_Type::Text: {
        const bool fits = Is_Text(piece.type) && piece.size > 0 && piece.size <= column.size;
        return fits ? piece.text
                    : u"zelqor_as_text("_s + Text_Of(piece) + u", "_s + QString::number(column.size) + name;
    }
    case Value_Type::Memo:
        return Text_Of(piece);
    case Value_Type::Long:
        return piece.type == Value_Type::Long ? piece.text : u"zelqor_as_long("_s + piece.text + name;
    case Value_Type::Single:
        return u"zelqor_as_single("_s + piece.text + name;
    case Value_Type::Date:
        return piece.type == Value_Type::Date ? piece.text : u"zelqor_as_date("_s + piece.text + name;
    default:
        return piece.text;
    }
}
