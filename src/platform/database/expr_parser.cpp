// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/expr_parser.h"

#include <array>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace
{
constexpr int Longest_Chain = 200; // of operators that nest to the left

Expr_Ptr Make(Expr_Kind kind)
{
    auto expr = std::make_unique<Expr>();
    expr->kind = kind;
    return expr;
}

template <typename... Args>
Expr_Ptr Make(Expr_Kind kind, Args... args)
{
    auto expr = Make(kind);
    (expr->args.push_back(std::move(args)), ...);
    return expr;
}
} // namespace

Expr_Ptr Query_Parser::Expression()
{
    const Depth depth(*this);
    Expr_Ptr first = And();
    if (!m_tokens.Sees("or")) {
        return first;
    }
    Expr_Ptr all = Make(Expr_Kind::Or, std::move(first));
    while (m_tokens.Accept("or")) {
        all->args.push_back(And());
    }
    return all;
}

Expr_Ptr Query_Parser::And()
{
    Expr_Ptr first = Not();
    if (!m_tokens.Sees("and")) {
        return first;
    }
    Expr_Ptr all = Make(Expr_Kind::And, std::move(first));
    while (m_tokens.Accept("and")) {
        all->args.push_back(Not());
    }
    return all;
}

Expr_Ptr Query_Parser::Not()
{
    if (!m_tokens.Accept("not")) {
        return Predicate();
    }
    const Depth depth(*this);
    return Make(Expr_Kind::Not, Not());
}

Expr_Ptr Query_Parser::Predicate()
{
    static constexpr std::array comparisons{"=", "<>", "!=", "<", "<=", ">", ">="};
    Expr_Ptr subject = Operators(0);
    for (const char *sign : comparisons) {
        if (m_tokens.Accept(sign)) {
            Expr_Ptr compare = Make(Expr_Kind::Compare, std::move(subject), Operators(0));
            compare->name = qstrcmp(sign, "!=") == 0 ? u"<>"_s : QString::fromLatin1(sign);
            return compare;
        }
    }
    if (m_tokens.Sees("is")) {
        return Is_Null(std::move(subject));
    }
    const bool negated = m_tokens.Accept("not");
    Expr_Ptr test;
    if (m_tokens.Accept("like")) {
        test = Make(Expr_Kind::Like, std::move(subject), Operators(0));
    } else if (m_tokens.Accept("between")) {
        Expr_Ptr low = Operators(0);
        m_tokens.Expect("and");
        test = Make(Expr_Kind::Between, std::move(subject), std::move(low), Operators(0));
    } else if (m_tokens.Accept("in")) {
        test = In(std::move(subject));
    } else if (negated) {
        m_tokens.Fail(u"'like', 'between' or 'in' expected"_s);
    } else {
        return subject;
    }
    test->negated = negated;
    return test;
}

Expr_Ptr Query_Parser::Is_Null(Expr_Ptr subject)
{
    m_tokens.Expect("is");
    Expr_Ptr test = Make(Expr_Kind::Is_Null, std::move(subject));
    test->negated = m_tokens.Accept("not");
    m_tokens.Expect("null");
    return test;
}

Expr_Ptr Query_Parser::In(Expr_Ptr subject)
{
    m_tokens.Expect("(");
    Expr_Ptr test;
    if (m_tokens.Sees("select")) {
        test = Make(Expr_Kind::In_Query, std::move(subject));
        test->query = std::make_unique<Sql_Ast::Query>(Query());
    } else {
        test = Make(Expr_Kind::In_List, std::move(subject));
        do {
            test->args.push_back(Expression());
        } while (m_tokens.Accept(","));
    }
    m_tokens.Expect(")");
    return test;
}

/// Binary operators by rising precedence: "&", then + and -, mod, "\", then * and /, "^".
Expr_Ptr Query_Parser::Operators(int level)
{
    static constexpr std::array<std::array<const char *, 2>, 6> levels{
        {{"&", "&"}, {"+", "-"}, {"mod", "mod"}, {"\\", "\\"}, {"*", "/"}, {"^", "^"}}};
    if (level == static_cast<int>(levels.size())) {
        return Unary();
    }
    Expr_Ptr left = Operators(level + 1);
    for (int length = 0;; ++length) {
        const char *sign = nullptr;
        for (const char *candidate : levels[static_cast<size_t>(level)]) {
            if (sign == nullptr && m_tokens.Accept(candidate)) {
                sign = candidate;
            }
        }
        if (sign == nullptr) {
            return left;
        }
        if (length > Longest_Chain) {
            m_tokens.Fail(u"the expression is too long"_s);
        }
        left = Make(Expr_Kind::Arithmetic, std::move(left), Operators(level + 1));
        left->name = QString::fromLatin1(sign);
    }
}

Expr_Ptr Query_Parser::Unary()
{
    const Depth depth(*this);
    if (m_tokens.Accept("-")) {
        return Make(Expr_Kind::Negate, Unary());
    }
    return m_tokens.Accept("+") ? Unary() : Primary();
}

Expr_Ptr Query_Parser::Primary()
{
    if (m_tokens.Peek().Is_Literal()) {
        Expr_Ptr literal = Make(Expr_Kind::Literal);
        literal->token = m_tokens.Take();
        return literal;
    }
    if (m_tokens.Accept("null")) {
        return Make(Expr_Kind::Null);
    }
    if (m_tokens.Accept("exists")) {
        m_tokens.Expect("(");
        Expr_Ptr exists = Make(Expr_Kind::Exists);
        exists->query = std::make_unique<Sql_Ast::Query>(Query());
        m_tokens.Expect(")");
        return exists;
    }
    if (m_tokens.Accept("(")) {
        Expr_Ptr inner;
        if (m_tokens.Sees("select")) {
            inner = Make(Expr_Kind::Scalar_Query);
            inner->query = std::make_unique<Sql_Ast::Query>(Query());
        } else {
            inner = Expression();
        }
        m_tokens.Expect(")");
        return inner;
    }
    return Named();
}

Expr_Ptr Query_Parser::Named()
{
    const bool bare = m_tokens.Peek().kind == Token_Kind::Name;
    if (bare && m_tokens.Peek(1).Is("("_L1)) {
        return Call(m_tokens.Take().raw.toString().toLower());
    }
    Expr_Ptr column = Make(Expr_Kind::Column);
    column->name = m_tokens.Name();
    if (m_tokens.Accept(".")) {
        column->qualifier = column->name;
        column->name = m_tokens.Name();
    }
    return column;
}

Expr_Ptr Query_Parser::Call(const QString &name)
{
    Expr_Ptr call = Make(Expr_Kind::Function);
    call->name = name;
    m_tokens.Expect("(");
    if (m_tokens.Accept(")")) {
        return call;
    }
    do {
        if (m_tokens.Accept("*")) {
            call->args.push_back(Make(Expr_Kind::Star));
        } else {
            call->negated = m_tokens.Accept("distinct") || call->negated;
            call->args.push_back(Expression());
        }
    } while (m_tokens.Accept(","));
    m_tokens.Expect(")");
    return call;
}
