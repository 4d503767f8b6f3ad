// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/engine_error.h"
#include "platform/database/sql_tokens.h"

/// The tokens of a statement as a parser goes through them.
class Token_Stream
{
public:
    explicit Token_Stream(const std::vector<Token> &tokens) : m_tokens(tokens) {}

    [[nodiscard]] const Token &Peek(size_t ahead = 0) const
    {
        return m_tokens[std::min(m_at + ahead, m_tokens.size() - 1)];
    }
    [[nodiscard]] bool Sees(const char *word) const { return Peek().Is(QLatin1StringView(word)); }
    const Token &Take()
    {
        const Token &token = Peek();
        if (token.kind != Token_Kind::End) {
            ++m_at;
        }
        return token;
    }
    bool Accept(const char *word)
    {
        const bool sees = Sees(word);
        m_at += sees ? 1 : 0;
        return sees;
    }
    void Expect(const char *word)
    {
        if (!Accept(word)) {
            Fail(QStringLiteral("'%1' expected").arg(QLatin1StringView(word)));
        }
    }
    [[nodiscard]] bool Sees_Name() const
    {
        return Peek().kind == Token_Kind::Name || Peek().kind == Token_Kind::Bracketed;
    }
    /// A name of a table or column.
    QString Name();
    [[noreturn]] void Fail(const QString &what) const
    {
        const QString found =
            Peek().kind == Token_Kind::End ? QStringLiteral("the end") : Peek().raw.left(40).toString();
        throw Engine_Error::Syntax(QStringLiteral("%1 at '%2'").arg(what, found));
    }

private:
    const std::vector<Token> &m_tokens;
    size_t m_at = 0;
};

/// A word that cannot be a name or an alias unless it stands in brackets.
bool Is_Reserved(const Token &token);
