// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/engine_error.h"
#include "platform/database/expr_translator.h"

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace
{
/// A function of the dialect: `shape` has a letter per argument, t for text, n for a number, d for a date, a for
/// any value; `least` of them must be given.
struct Dialect_Function {
    const char *name;
    const char *sql;
    std::string_view shape;
    size_t least;
    Value_Type type;
};

constexpr std::array Functions{
    Dialect_Function{"len", "zelqor_len", "t", 1, Value_Type::Long},
    Dialect_Function{"lcase", "zelqor_lcase", "t", 1, Value_Type::Memo},
    Dialect_Function{"ucase", "zelqor_ucase", "t", 1, Value_Type::Memo},
    Dialect_Function{"left", "zelqor_left", "tn", 2, Value_Type::Memo},
    Dialect_Function{"right", "zelqor_right", "tn", 2, Value_Type::Memo},
    Dialect_Function{"mid", "zelqor_mid", "tnn", 2, Value_Type::Memo},
    Dialect_Function{"trim", "trim", "t", 1, Value_Type::Memo},
    Dialect_Function{"ltrim", "ltrim", "t", 1, Value_Type::Memo},
    Dialect_Function{"rtrim", "rtrim", "t", 1, Value_Type::Memo},
    Dialect_Function{"format", "zelqor_format", "at", 1, Value_Type::Memo},
    Dialect_Function{"now", "zelqor_now", "", 0, Value_Type::Date},
    Dialect_Function{"date", "zelqor_today", "", 0, Value_Type::Date},
    Dialect_Function{"val", "zelqor_val", "t", 1, Value_Type::Number},
    Dialect_Function{"cstr", "zelqor_str", "t", 1, Value_Type::Memo},
    Dialect_Function{"clng", "zelqor_clng", "a", 1, Value_Type::Long},
    Dialect_Function{"cint", "zelqor_clng", "a", 1, Value_Type::Long},
    Dialect_Function{"cdate", "zelqor_cdate", "a", 1, Value_Type::Date},
    Dialect_Function{"year", "zelqor_year", "d", 1, Value_Type::Long},
    Dialect_Function{"month", "zelqor_month", "d", 1, Value_Type::Long},
    Dialect_Function{"day", "zelqor_day", "d", 1, Value_Type::Long},
    Dialect_Function{"abs", "abs", "n", 1, Value_Type::Number},
    Dialect_Function{"int", "floor", "n", 1, Value_Type::Number},
};

bool Is_Aggregate(const QString &name)
{
    static constexpr std::array names{"count", "sum", "min", "max", "avg"};
    return std::any_of(names.begin(), names.end(), [&name](const char *one) { return name == QLatin1StringView(one); });
}

void Check_Count(const Expr &expr, size_t least, size_t most)
{
    if (expr.args.size() < least || expr.args.size() > most) {
        throw Engine_Error::Syntax(u"wrong number of arguments to the function '%1'"_s.arg(expr.name));
    }
}

bool Is_Call_Of(const Expr &expr, QLatin1StringView name)
{
    return expr.kind == Expr_Kind::Function && expr.name == name && expr.args.size() == 1;
}
} // namespace

Sql_Piece Translator::Function(const Expr &expr, const Sql_Scope &scope)
{
    if (Is_Aggregate(expr.name)) {
        return Aggregate(expr, scope);
    }
    if (expr.name == u"instr"_s) {
        return Instr(expr, scope);
    }
    if (expr.name == u"isnull"_s) {
        Check_Count(expr, 1, 1);
        return {u'(' + Expression(*expr.args[0], scope).text + u" IS NULL)"_s, Value_Type::Boolean, 0, {}, false};
    }
    if (expr.name == u"iif"_s) {
        Check_Count(expr, 3, 3);
        const QString test = Condition(*expr.args[0], scope);
        const Sql_Piece yes = Expression(*expr.args[1], scope);
        const Sql_Piece no = Expression(*expr.args[2], scope);
        return {u"(CASE WHEN "_s + test + u" THEN "_s + yes.text + u" ELSE "_s + no.text + u" END)"_s,
                yes.type == Value_Type::Null ? no.type : yes.type,
                std::max(yes.size, no.size),
                {},
                false};
    }
    const auto *const known = std::find_if(Functions.begin(), Functions.end(), [&expr](const Dialect_Function &f) {
        return expr.name == QLatin1StringView(f.name);
    });
    if (known == Functions.end()) {
        throw Engine_Error::Syntax(u"there is no function '%1'"_s.arg(expr.name));
    }
    Check_Count(expr, known->least, known->shape.size());
    QStringList arguments;
    for (size_t i = 0; i < expr.args.size(); ++i) {
        arguments.append(known->shape[i] == 't' ? Text_Argument(*expr.args[i], scope)
                                                : Expression(*expr.args[i], scope).text);
    }
    return {QString::fromLatin1(known->sql) + u'(' + arguments.join(u", "_s) + u')', known->type, 0, {}, false};
}

Sql_Piece Translator::Aggregate(const Expr &expr, const Sql_Scope &scope)
{
    Check_Count(expr, 1, 1);
    m_aggregate = true;
    if (expr.args[0]->kind == Expr_Kind::Star) {
        if (expr.name != u"count"_s) {
            throw Engine_Error::Syntax(u"'*' outside of count"_s);
        }
        return {u"count(*)"_s, Value_Type::Count, 0, {}, false};
    }
    const Sql_Piece of = Expression(*expr.args[0], scope);
    const QString text = expr.name + (expr.negated ? u"(DISTINCT "_s : u"("_s) + of.text + Folding(of.type) + u')';
    if (expr.name == u"count"_s) {
        return {text, Value_Type::Count, 0, {}, false};
    }
    const bool keepsType = expr.name == u"min"_s || expr.name == u"max"_s;
    return {text, keepsType ? of.type : Value_Type::Number, keepsType ? of.size : 0, {}, false};
}

/// instr([start,] text, sought [, compare]). The usual form with lcase around both sides is one search over the
/// stored bytes, without a lower-case copy of them.
Sql_Piece Translator::Instr(const Expr &expr, const Sql_Scope &scope)
{
    Check_Count(expr, 2, 4);
    const bool started = expr.args.size() > 2;
    const Expr &text = *expr.args[started ? 1 : 0];
    const Expr &sought = *expr.args[started ? 2 : 1];
    const QString start = started ? Expression(*expr.args[0], scope).text : u"1"_s;
    if (Is_Call_Of(text, "lcase"_L1) && Is_Call_Of(sought, "lcase"_L1)) {
        const QString in = Text_Argument(*text.args[0], scope);
        const QString key = Text_Argument(*sought.args[0], scope);
        return {u"zelqor_instr("_s + start + u", "_s + in + u", "_s + key + u", 1)"_s, Value_Type::Long, 0, {}, false};
    }
    const QString in = Text_Argument(text, scope);
    const QString key = Text_Argument(sought, scope);
    const QString compare = expr.args.size() > 3 ? Expression(*expr.args[3], scope).text : u"1"_s;
    return {u"zelqor_instr("_s + start + u", "_s + in + u", "_s + key + u", "_s + compare + u')',
            Value_Type::Long,
            0,
            {},
            false};
}
