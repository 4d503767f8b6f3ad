// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/sql_parser.h"

#include "platform/database/expr_parser.h"

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace
{
class Statement_Parser
{
public:
    explicit Statement_Parser(const std::vector<Token> &tokens) : m_tokens(tokens), m_queries(m_tokens) {}

    Statement Whole()
    {
        Statement statement = One();
        m_tokens.Accept(";");
        if (m_tokens.Peek().kind != Token_Kind::End) {
            m_tokens.Fail(u"text after the end of the statement"_s);
        }
        return statement;
    }

private:
    Statement One()
    {
        if (m_tokens.Sees("select")) {
            return m_queries.Query();
        }
        if (m_tokens.Accept("insert")) {
            return Insert();
        }
        if (m_tokens.Accept("update")) {
            return Update();
        }
        if (m_tokens.Accept("delete")) {
            return Delete();
        }
        if (m_tokens.Accept("create")) {
            m_tokens.Expect("table");
            return Create_Table();
        }
        if (m_tokens.Accept("alter")) {
            m_tokens.Expect("table");
            return Alter_Table();
        }
        if (m_tokens.Accept("drop")) {
            m_tokens.Expect("table");
            return Drop_Table{m_tokens.Name()};
        }
        m_tokens.Fail(u"a statement expected"_s);
    }

    struct Insert Insert()
    {
        struct Insert insert;
        m_tokens.Expect("into");
        insert.table = m_tokens.Name();
        if (m_tokens.Sees("(") && !m_tokens.Peek(1).Is("select"_L1)) {
            insert.columns = Names();
        }
        if (m_tokens.Accept("values")) {
            m_tokens.Expect("(");
            do {
                insert.values.push_back(m_queries.Expression());
            } while (m_tokens.Accept(","));
            m_tokens.Expect(")");
            return insert;
        }
        const bool parenthesis = m_tokens.Accept("(");
        insert.query = std::make_unique<Query>(m_queries.Query());
        if (parenthesis) {
            m_tokens.Expect(")");
        }
        return insert;
    }

    std::vector<QString> Names()
    {
        std::vector<QString> names;
        m_tokens.Expect("(");
        do {
            names.push_back(m_tokens.Name());
        } while (m_tokens.Accept(","));
        m_tokens.Expect(")");
        return names;
    }

    QString Table_Alias()
    {
        if (m_tokens.Accept("as") || (m_tokens.Sees_Name() && !Is_Reserved(m_tokens.Peek()))) {
            return m_tokens.Name();
        }
        return {};
    }

    struct Update Update()
    {
        struct Update update;
        update.table = m_tokens.Name();
        update.alias = Table_Alias();
        m_tokens.Expect("set");
        do {
            QString column = m_tokens.Name();
            if (m_tokens.Accept(".")) {
                column = m_tokens.Name();
            }
            m_tokens.Expect("=");
            update.changes.emplace_back(column, m_queries.Expression());
        } while (m_tokens.Accept(","));
        if (m_tokens.Accept("where")) {
            update.where = m_queries.Expression();
        }
        return update;
    }

    struct Delete Delete()
    {
        struct Delete remove;
        if (!m_tokens.Accept("*") && !m_tokens.Sees("from")) {
            remove.target = m_tokens.Name();
            if (m_tokens.Accept(".") && !m_tokens.Accept("*")) {
                remove.target = m_tokens.Name();
            }
        }
        m_tokens.Expect("from");
        remove.table = m_tokens.Name();
        remove.alias = Table_Alias();
        if (m_tokens.Accept("where")) {
            remove.where = m_queries.Expression();
        }
        return remove;
    }

    struct Create_Table Create_Table()
    {
        struct Create_Table create;
        create.table = m_tokens.Name();
        m_tokens.Expect("(");
        do {
            if (m_tokens.Sees("constraint") || m_tokens.Sees("primary")) {
                if (m_tokens.Accept("constraint")) {
                    m_tokens.Name();
                }
                m_tokens.Expect("primary");
                m_tokens.Expect("key");
                create.primaryKey = Names();
            } else {
                create.columns.push_back(Column());
            }
        } while (m_tokens.Accept(","));
        m_tokens.Expect(")");
        return create;
    }

    Column_Definition Column()
    {
        Column_Definition column;
        column.name = m_tokens.Name();
        if (m_tokens.Peek().kind != Token_Kind::Name) {
            m_tokens.Fail(u"a column type expected"_s);
        }
        column.type = m_tokens.Take().raw.toString().toLower();
        if (m_tokens.Accept("(")) {
            bool whole = false;
            column.size = m_tokens.Take().raw.toInt(&whole);
            if (!whole || column.size < 1) {
                m_tokens.Fail(u"a column size expected"_s);
            }
            m_tokens.Expect(")");
        }
        while (Column_Rule(column)) {
        }
        return column;
    }

    bool Column_Rule(Column_Definition &column)
    {
        if (m_tokens.Accept("null")) {
            return true;
        }
        if (m_tokens.Accept("not")) {
            m_tokens.Expect("null");
            column.notNull = true;
            return true;
        }
        if (m_tokens.Accept("constraint")) {
            m_tokens.Name();
            return true;
        }
        if (m_tokens.Accept("unique")) {
            column.unique = true;
            return true;
        }
        if (m_tokens.Accept("primary")) {
            m_tokens.Expect("key");
            column.primaryKey = true;
            return true;
        }
        if (m_tokens.Accept("default")) {
            Default(column);
            return true;
        }
        return false;
    }

    void Default(Column_Definition &column)
    {
        column.defaultNegative = m_tokens.Accept("-");
        const bool function = m_tokens.Sees("now") || m_tokens.Sees("date");
        if (!function && !m_tokens.Peek().Is_Literal() && !m_tokens.Sees("null")) {
            m_tokens.Fail(u"a default value expected"_s);
        }
        column.defaultValue = m_tokens.Take();
        if (function && m_tokens.Accept("(")) {
            m_tokens.Expect(")");
        }
    }

    struct Alter_Table Alter_Table()
    {
        using Action = Alter_Table::Action;
        struct Alter_Table alter;
        alter.table = m_tokens.Name();
        if (m_tokens.Accept("add")) {
            alter.action = Action::Add;
        } else if (m_tokens.Accept("alter")) {
            alter.action = Action::Alter;
        } else if (m_tokens.Accept("drop")) {
            alter.action = Action::Drop;
        } else {
            m_tokens.Fail(u"'add', 'alter' or 'drop' expected"_s);
        }
        do {
            m_tokens.Accept("column");
            if (alter.action == Action::Drop) {
                alter.columns.emplace_back().name = m_tokens.Name();
            } else {
                alter.columns.push_back(Column());
            }
        } while (m_tokens.Accept(","));
        return alter;
    }

    Token_Stream m_tokens;
    Query_Parser m_queries;
};
} // namespace

Statement Parse_Statement(const std::vector<Token> &tokens)
{
    return Statement_Parser(tokens).Whole();
}
