// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/sql_ast.h"
#include "platform/database/token_stream.h"

/// The grammar of selects and expressions, by recursive descent.
class Query_Parser
{
public:
    explicit Query_Parser(Token_Stream &tokens) : m_tokens(tokens) {}
    Sql_Ast::Query Query();
    Sql_Ast::Expr_Ptr Expression();

private:
    class Depth;
    static constexpr int Deepest_Nesting = 120; // a tree no deeper than this is safe to walk on any stack
    static constexpr int Deepest_Join = 60;
    Sql_Ast::Select Select();
    Sql_Ast::Select_Item Item();
    std::vector<Sql_Ast::Source> Sources();
    Sql_Ast::Source Joined();
    Sql_Ast::Source Single_Source();
    void Alias(QString &alias);
    std::vector<Sql_Ast::Order_Term> Order();

    Sql_Ast::Expr_Ptr And();
    Sql_Ast::Expr_Ptr Not();
    Sql_Ast::Expr_Ptr Predicate();
    Sql_Ast::Expr_Ptr Is_Null(Sql_Ast::Expr_Ptr subject);
    Sql_Ast::Expr_Ptr In(Sql_Ast::Expr_Ptr subject);
    Sql_Ast::Expr_Ptr Operators(int level);
    Sql_Ast::Expr_Ptr Unary();
    Sql_Ast::Expr_Ptr Primary();
    Sql_Ast::Expr_Ptr Named();
    Sql_Ast::Expr_Ptr Call(const QString &name);

    Token_Stream &m_tokens;
    int m_depth = 0;
};

/// Counts one level of nesting while it lives.
class Query_Parser::Depth
{
public:
    explicit Depth(Query_Parser &parser) : m_parser(parser)
    {
        if (++m_parser.m_depth > Deepest_Nesting) {
            --m_parser.m_depth;
            m_parser.m_tokens.Fail(QStringLiteral("the statement is nested too deeply"));
        }
    }
    ~Depth() { --m_parser.m_depth; }
    Depth(const Depth &) = delete;
    Depth &operator=(const Depth &) = delete;

private:
    Query_Parser &m_parser;
};
