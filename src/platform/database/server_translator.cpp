// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/server_translator.h"

#include "platform/database/dates.h"
#include "platform/database/engine_error.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace
{
Sql_Piece Truth(const QString &text)
{
    return {text, Value_Type::Boolean, 0, {}, false};
}

bool Is_Whole(Value_Type type)
{
    return type == Value_Type::Long || type == Value_Type::Count || type == Value_Type::Boolean;
}

/// A value that calculations take for a number.
QString Number_Of(const Sql_Piece &piece)
{
    if (Is_Text(piece.type) || piece.type == Value_Type::Date) {
        return u"zelqor_number("_s + piece.text + u')';
    }
    return Is_Whole(piece.type) ? piece.text + u"::bigint"_s : piece.text;
}

bool Is_Texts_Like(Value_Type type)
{
    return Is_Text(type) || type == Value_Type::Date;
}

bool Is_Call_Of_Lcase(const Expr &expr)
{
    return expr.kind == Expr_Kind::Function && expr.name == u"lcase"_s && expr.args.size() == 1;
}

/// instr(1, lcase(a), lcase(b), ...) compared with 0: whether a holds b.
bool Asks_Whether_Held(const Expr &expr)
{
    if (expr.kind != Expr_Kind::Compare || expr.args[1]->kind != Expr_Kind::Literal ||
        expr.args[1]->token.raw != u"0"_s || (expr.name != u"<>"_s && expr.name != u"="_s && expr.name != u">"_s)) {
        return false;
    }
    const Expr &call = *expr.args[0];
    return call.kind == Expr_Kind::Function && call.name == u"instr"_s && call.args.size() > 2 &&
           call.args[0]->kind == Expr_Kind::Literal && call.args[0]->token.raw == u"1"_s &&
           Is_Call_Of_Lcase(*call.args[1]) && Is_Call_Of_Lcase(*call.args[2]);
}
} // namespace

Sql_Piece Server_Translator::Expression(const Expr &expr, const Sql_Scope &scope)
{
    if (expr.kind == Expr_Kind::Scalar_Query) {
        std::vector<Output> outputs;
        const bool aggregate = std::exchange(m_inAggregate, false);
        const QString text = Query(*expr.query, &scope, outputs, false);
        m_inAggregate = aggregate;
        return {u"(SELECT "_s + Quoted_Name(Output_Alias(0)) + u" FROM ("_s + text + u") AS \"zelqor one\" LIMIT 1)"_s,
                outputs.front().type,
                outputs.front().size,
                {},
                false};
    }
    Sql_Piece piece = Translator::Expression(expr, scope);
    if (piece.type == Value_Type::Boolean) {
        piece.text = u"("_s + piece.text + u")::integer"_s;
    }
    return piece;
}

QString Server_Translator::Condition(const Expr &expr, const Sql_Scope &scope)
{
    const Sql_Piece piece = expr.kind == Expr_Kind::Scalar_Query ? Expression(expr, scope) : Raw(expr, scope);
    if (piece.type == Value_Type::Boolean) {
        return piece.text;
    }
    return piece.type == Value_Type::Null ? u"(NULL::boolean)"_s : u"("_s + Number_Of(piece) + u" <> 0)"_s;
}

Sql_Piece Server_Translator::Column(const Expr &expr, const Sql_Scope &scope)
{
    Sql_Piece piece = Translator::Column(expr, scope);
    if (piece.type == Value_Type::Boolean && piece.column.isEmpty()) { // true and false are numbers
        piece.type = Value_Type::Long;
        return piece;
    }
    if (scope.grouped && !m_inAggregate) {
        piece.text =
            piece.type == Value_Type::Blob ? u"(array_agg("_s + piece.text + u"))[1]"_s : u"min("_s + piece.text + u')';
    }
    return piece;
}

Sql_Piece Server_Translator::Arithmetic(const Expr &expr, const Sql_Scope &scope)
{
    if (expr.name == u"&"_s) {
        return Translator::Arithmetic(expr, scope);
    }
    const Sql_Piece left = Expression(*expr.args[0], scope);
    const Sql_Piece right = Expression(*expr.args[1], scope);
    if (expr.name == u"+"_s && Is_Text(left.type) && Is_Text(right.type)) {
        return {u'(' + left.text + u" || "_s + right.text + u')', Value_Type::Memo, 0, {}, false};
    }
    const QString a = Number_Of(left);
    const QString b = Number_Of(right);
    QString text;
    if (expr.name == u"/"_s) {
        text = u"("_s + a + u"::double precision / nullif("_s + b + u", 0))"_s;
    } else if (expr.name == u"^"_s) {
        text = u"power("_s + a + u"::double precision, "_s + b + u')';
    } else if (expr.name == u"\\"_s) {
        text = u"(round("_s + a + u")::bigint / nullif(round("_s + b + u")::bigint, 0))"_s;
    } else if (expr.name == u"mod"_s) {
        text = u"(trunc("_s + a + u")::bigint % nullif(trunc("_s + b + u")::bigint, 0))"_s;
    } else {
        text = u'(' + a + u' ' + expr.name + u' ' + b + u')';
    }
    return {text, Value_Type::Number, 0, {}, false};
}

/// Texts are compared by what is folded of them; a number beside a text or a date that it is not turned into is a text.
Translator::Pair Server_Translator::Comparable(const Expr &left, const Expr &right, const Sql_Scope &scope,
                                               bool /*equality*/)
{
    const bool leftLiteral = left.kind == Expr_Kind::Literal;
    const Expr &first = leftLiteral ? right : left;
    const Expr &second = leftLiteral ? left : right;
    const bool literals = first.kind == Expr_Kind::Literal;
    const bool secondLiteral = second.kind == Expr_Kind::Literal;
    const Sql_Piece a = Expression(first, scope);
    const Sql_Piece b = Expression(second, scope);
    QString bText = Operand(second, b, literals ? Value_Type::Null : a.type);
    QString aText = secondLiteral ? a.text : Operand(first, a, b.type);
    if (Is_Text(a.type) && (Is_Text(b.type) || secondLiteral)) {
        aText = Server_Text::Folded(aText);
        bText = Server_Text::Folded(bText + u"::text"_s);
    } else if (a.type == Value_Type::Date && b.type == Value_Type::Number) {
        bText += u"::text"_s;
    } else if (a.type == Value_Type::Blob && Is_Texts_Like(b.type)) {
        aText = u"zelqor_str("_s + aText + u')';
    }
    return leftLiteral ? Pair{bText, aText, {}} : Pair{aText, bText, {}};
}

Sql_Piece Server_Translator::Compare(const Expr &expr, const Sql_Scope &scope)
{
    if (!Asks_Whether_Held(expr)) {
        return Translator::Compare(expr, scope);
    }
    m_plan.reusable = false; // the numbers are part of what was seen
    const Expr &call = *expr.args[0];
    const QString text = Server_Text::Folded(Text_Argument(*call.args[1]->args[0], scope));
    const QString key = Server_Text::Folded(Text_Argument(*call.args[2]->args[0], scope));
    return Truth(u"(position("_s + key + u" in "_s + text + u") "_s + (expr.name == u"="_s ? u"= 0)"_s : u"> 0)"_s));
}

Sql_Piece Server_Translator::Like(const Expr &expr, const Sql_Scope &scope)
{
    const Sql_Piece subject = Expression(*expr.args[0], scope);
    const Expr &patternExpr = *expr.args[1];
    const QString no = expr.negated ? u"NOT "_s : QString();
    if (patternExpr.kind != Expr_Kind::Literal || patternExpr.token.kind != Token_Kind::Text) {
        const QString pattern = Text_Argument(patternExpr, scope);
        return Truth(u"("_s + no + u"zelqor_like("_s + pattern + u", "_s + Text_Of(subject) + u"))"_s);
    }
    const int literal = patternExpr.token.literal;
    const Pattern_Class pattern = patternExpr.token.pattern;
    const bool date = subject.type == Value_Type::Date;
    const auto range = [&](const QString &text, Bind low, Bind high) {
        const QString from = Parameter_Text(literal, low);
        const QString to = Parameter_Text(literal, high);
        return u"("_s + text + u" >= "_s + from + u" AND "_s + text + u" < "_s + to + u')';
    };
    if (date && (pattern == Pattern_Class::Date_Prefix || pattern == Pattern_Class::Digits_Prefix)) {
        return Truth(u"("_s + no + range(subject.text, Bind::Date_Low, Bind::Date_High) + u')');
    }
    const QString text = Server_Text::Folded(Text_Of(subject));
    if (pattern == Pattern_Class::Everything) {
        // What is Null is neither like anything nor not.
        return Truth(u"("_s + no + u"("_s + text + u" >= ''))"_s);
    }
    if (pattern == Pattern_Class::Digits_Prefix) {
        return Truth(u"("_s + no + range(text, Bind::Prefix_Low, Bind::Prefix_High) + u')');
    }
    const QString like = Parameter_Text(literal, Bind::Like_Text);
    const QString classes = Parameter_Text(literal, Bind::Like_Classes);
    const QString bounds = pattern == Pattern_Class::Digits_Other || (pattern == Pattern_Class::Date_Prefix && !date)
                               ? range(text, Bind::Prefix_Low, Bind::Prefix_High) + u" AND "_s
                               : QString();
    return Truth(u"("_s + no + u"("_s + bounds + text + u" LIKE "_s + like + u" AND ("_s + classes + u" = '' OR "_s +
                 text + u" ~ "_s + classes + u")))"_s);
}

Sql_Piece Server_Translator::In_Query(const Expr &expr, const Sql_Scope &scope)
{
    const Sql_Piece subject = Expression(*expr.args[0], scope);
    std::vector<Output> outputs;
    const bool aggregate = std::exchange(m_inAggregate, false);
    const QString query = Query(*expr.query, &scope, outputs, false);
    m_inAggregate = aggregate;
    if (outputs.size() != 1) {
        throw Engine_Error::Syntax(u"the query behind 'in' must have one column"_s);
    }
    const Value_Type type = outputs.front().type;
    const bool asTexts = Is_Texts_Like(subject.type) != Is_Texts_Like(type);
    const auto told = [asTexts](const QString &text, Value_Type of) {
        return Is_Text(of) ? Server_Text::Folded(text) : asTexts ? text + u"::text"_s : text;
    };
    return Truth(u'(' + told(subject.text, subject.type) + (expr.negated ? u" NOT IN (SELECT "_s : u" IN (SELECT "_s) +
                 told(Quoted_Name(Output_Alias(0)), type) + u" FROM ("_s + query + u") AS \"zelqor those\"))"_s);
}

QString Server_Translator::Text_Of(const Sql_Piece &piece)
{
    if (piece.type == Value_Type::Date) {
        return Stored_Date::Separator() == u'-'
                   ? piece.text + u"::text"_s
                   : u"zelqor_short("_s + piece.text + u", "_s + Quoted_Text(QString(Stored_Date::Separator())) + u')';
    }
    if (piece.type == Value_Type::Null) {
        return piece.text + u"::text"_s;
    }
    return Is_Number(piece.type) || piece.type == Value_Type::Blob ? u"zelqor_str("_s + piece.text + u')' : piece.text;
}

Sql_Piece Server_Translator::Function(const Expr &expr, const Sql_Scope &scope)
{
    if (expr.name == u"isnull"_s && expr.args.size() == 1) {
        return Truth(u'(' + Expression(*expr.args[0], scope).text + u" IS NULL)"_s);
    }
    if ((expr.name == u"abs"_s || expr.name == u"int"_s) && expr.args.size() == 1) {
        const QString name = expr.name == u"abs"_s ? expr.name : u"floor"_s;
        return {name + u'(' + Number_Of(Expression(*expr.args[0], scope)) + u')', Value_Type::Number, 0, {}, false};
    }
    if (expr.name == u"iif"_s && expr.args.size() == 3) {
        const QString test = Condition(*expr.args[0], scope);
        const Sql_Piece yes = Expression(*expr.args[1], scope);
        const Sql_Piece no = Expression(*expr.args[2], scope);
        const bool either = yes.type == Value_Type::Null || no.type == Value_Type::Null;
        const bool asTexts = !either && Is_Texts_Like(yes.type) != Is_Texts_Like(no.type);
        const Value_Type type = asTexts ? Value_Type::Memo : yes.type == Value_Type::Null ? no.type : yes.type;
        return {u"(CASE WHEN "_s + test + u" THEN "_s + (asTexts ? Text_Of(yes) : yes.text) + u" ELSE "_s +
                    (asTexts ? Text_Of(no) : no.text) + u" END)"_s,
                type,
                std::max(yes.size, no.size),
                {},
                false};
    }
    return Translator::Function(expr, scope);
}

Sql_Piece Server_Translator::Aggregate(const Expr &expr, const Sql_Scope &scope)
{
    if (expr.args.size() != 1 || expr.args[0]->kind == Expr_Kind::Star) {
        return Translator::Aggregate(expr, scope);
    }
    const bool nested = std::exchange(m_inAggregate, true);
    const Sql_Piece of = Expression(*expr.args[0], scope);
    m_inAggregate = nested;
    m_aggregate = true;
    const QString told = Server_Text::Told(of.text, of.type);
    const QString distinct = expr.negated ? u"(DISTINCT "_s : u"("_s;
    if (expr.name == u"count"_s) {
        return {u"count"_s + distinct + (expr.negated ? told : of.text) + u')', Value_Type::Count, 0, {}, false};
    }
    if (expr.name == u"min"_s || expr.name == u"max"_s) {
        const QString order = expr.name == u"min"_s ? u" NULLS LAST))[1]"_s : u" DESC NULLS LAST))[1]"_s;
        return {Is_Text(of.type) ? u"(array_agg("_s + of.text + u" ORDER BY "_s + told + order
                                 : expr.name + u'(' + of.text + u')',
                of.type,
                of.size,
                {},
                false};
    }
    return {expr.name + distinct + Number_Of(of) + u")::double precision"_s, Value_Type::Number, 0, {}, false};
}
