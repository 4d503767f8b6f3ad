// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/expr_parser.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

bool Is_Reserved(const Token &token)
{
    static constexpr std::array words{
        "select", "from", "where", "group",  "order", "having", "union",   "inner", "left",     "right",  "join",
        "on",     "as",   "set",   "values", "and",   "or",     "not",     "in",    "like",     "is",     "null",
        "by",     "top",  "into",  "delete", "asc",   "desc",   "between", "all",   "distinct", "exists", "mod",
    };
    return token.kind == Token_Kind::Name && std::any_of(words.begin(), words.end(), [&token](const char *word) {
               return token.Is(QLatin1StringView(word));
           });
}

QString Token_Stream::Name()
{
    if (!Sees_Name() || Is_Reserved(Peek())) {
        Fail(u"a name expected"_s);
    }
    QString name = Take().Value();
    if (name.isEmpty()) {
        Fail(u"an empty name"_s);
    }
    return name;
}

Query Query_Parser::Query()
{
    struct Query query;
    query.parts.push_back(Select());
    while (m_tokens.Accept("union")) {
        query.keepDuplicates.push_back(m_tokens.Accept("all"));
        query.parts.push_back(Select());
    }
    return query;
}

Select Query_Parser::Select()
{
    struct Select select;
    m_tokens.Expect("select");
    select.distinct = m_tokens.Accept("distinct") || m_tokens.Accept("distinctrow");
    m_tokens.Accept("all");
    if (m_tokens.Accept("top")) {
        if (m_tokens.Peek().kind != Token_Kind::Number || m_tokens.Peek().raw.contains(u'.')) {
            m_tokens.Fail(u"a whole number expected after 'top'"_s);
        }
        select.top = m_tokens.Take();
    }
    do {
        select.items.push_back(Item());
    } while (m_tokens.Accept(","));
    if (m_tokens.Accept("from")) {
        select.from = Sources();
    }
    if (m_tokens.Accept("where")) {
        select.where = Expression();
    }
    if (m_tokens.Accept("group")) {
        m_tokens.Expect("by");
        do {
            select.groupBy.push_back(Expression());
        } while (m_tokens.Accept(","));
    }
    if (m_tokens.Accept("having")) {
        select.having = Expression();
    }
    if (m_tokens.Accept("order")) {
        m_tokens.Expect("by");
        select.orderBy = Order();
    }
    return select;
}

Select_Item Query_Parser::Item()
{
    Select_Item item;
    if (m_tokens.Accept("*")) {
        item.star = true;
        return item;
    }
    if (m_tokens.Sees_Name() && m_tokens.Peek(1).Is("."_L1) && m_tokens.Peek(2).Is("*"_L1)) {
        item.star = true;
        item.qualifier = m_tokens.Name();
        m_tokens.Take();
        m_tokens.Take();
        return item;
    }
    item.expr = Expression();
    if (m_tokens.Accept("as")) {
        item.alias = m_tokens.Name();
    } else {
        Alias(item.alias);
    }
    return item;
}

std::vector<Source> Query_Parser::Sources()
{
    std::vector<Source> sources;
    do {
        sources.push_back(Joined());
    } while (m_tokens.Accept(","));
    return sources;
}

Source Query_Parser::Joined()
{
    const Depth depth(*this);
    Source left = Single_Source();
    for (int length = 0;; ++length) {
        Join_Kind kind = Join_Kind::Inner;
        if (m_tokens.Accept("left")) {
            kind = Join_Kind::Left;
            m_tokens.Accept("outer");
        } else if (m_tokens.Accept("right")) {
            kind = Join_Kind::Right;
            m_tokens.Accept("outer");
        } else if (!m_tokens.Accept("inner") && !m_tokens.Sees("join")) {
            return left;
        }
        if (length > Deepest_Join) {
            m_tokens.Fail(u"too many joins"_s);
        }
        m_tokens.Expect("join");
        Source join;
        join.join = kind;
        join.left = std::make_unique<Source>(std::move(left));
        join.right = std::make_unique<Source>(Single_Source());
        m_tokens.Expect("on");
        join.on = Expression();
        left = std::move(join);
    }
}

Source Query_Parser::Single_Source()
{
    Source source;
    if (m_tokens.Accept("(")) {
        if (m_tokens.Sees("select")) {
            source.query = std::make_unique<struct Query>(Query());
        } else {
            source = Joined();
        }
        m_tokens.Expect(")");
        if (source.query == nullptr) {
            return source;
        }
    } else {
        source.table = m_tokens.Name();
    }
    Alias(source.alias);
    return source;
}

void Query_Parser::Alias(QString &alias)
{
    if (m_tokens.Accept("as") || (m_tokens.Sees_Name() && !Is_Reserved(m_tokens.Peek()))) {
        alias = m_tokens.Name();
    }
}

std::vector<Order_Term> Query_Parser::Order()
{
    std::vector<Order_Term> terms;
    do {
        Order_Term term;
        term.expr = Expression();
        term.descending = m_tokens.Accept("desc");
        if (!term.descending) {
            m_tokens.Accept("asc");
        }
        terms.push_back(std::move(term));
    } while (m_tokens.Accept(","));
    return terms;
}
