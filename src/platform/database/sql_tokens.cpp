// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/sql_tokens.h"

#include "platform/database/dates.h"
#include "platform/database/engine_error.h"
#include "platform/database/text_fold.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
bool Is_Digit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool Begins_Name(QChar c)
{
    return c == u'_' || c.isLetter() || c.isSurrogate();
}

bool Continues_Name(QChar c)
{
    return Begins_Name(c) || Is_Digit(c) || c == u'$' || c.isDigit() || c.isMark();
}

/// "2023-05" and longer: a prefix of the short form that goes beyond the year.
bool Is_Date_Prefix(QStringView text)
{
    const QChar separator = Stored_Date::Separator();
    if (text.size() < 5 || text.size() > 10) {
        return false;
    }
    for (qsizetype i = 0; i < text.size(); ++i) {
        if ((i == 4 || i == 7) ? text[i] != separator : !Is_Digit(text[i])) {
            return false;
        }
    }
    return true;
}

Pattern_Class Classify_Pattern(const QString &pattern)
{
    if (pattern == u"%"_s) {
        return Pattern_Class::Everything;
    }
    const auto digits = std::find_if_not(pattern.begin(), pattern.end(), Is_Digit) - pattern.begin();
    const bool oneAtEnd = pattern.indexOf(u'%') == pattern.size() - 1 && pattern.endsWith(u'%');
    if (digits > 0 && oneAtEnd && digits == pattern.size() - 1) {
        return Pattern_Class::Digits_Prefix;
    }
    if (oneAtEnd && Is_Date_Prefix(QStringView(pattern).chopped(1))) {
        return Pattern_Class::Date_Prefix;
    }
    return digits > 0 ? Pattern_Class::Digits_Other : Pattern_Class::Other;
}

class Tokenizer
{
public:
    explicit Tokenizer(QStringView text) : m_text(text) {}

    std::vector<Token> All()
    {
        std::vector<Token> tokens;
        tokens.reserve(static_cast<size_t>(m_text.size()) / 4 + 2);
        int literals = 0;
        bool behindLike = false;
        for (;;) {
            while (m_at < m_text.size() && m_text[m_at].isSpace()) {
                ++m_at;
            }
            const qsizetype start = m_at;
            Token token;
            token.kind = Next();
            token.raw = m_text.mid(start, m_at - start);
            if (token.kind == Token_Kind::Text || token.kind == Token_Kind::Number || token.kind == Token_Kind::Date) {
                token.literal = literals++;
            }
            if (token.kind == Token_Kind::Text && behindLike) {
                token.pattern = Classify_Pattern(token.Value());
            }
            behindLike = token.Is("like"_L1) || (behindLike && token.Is("("_L1));
            tokens.push_back(token);
            if (token.kind == Token_Kind::End) {
                return tokens;
            }
        }
    }

private:
    [[nodiscard]] QChar At(qsizetype at) const { return at < m_text.size() ? m_text[at] : QChar(u'\0'); }

    Token_Kind Next()
    {
        if (m_at >= m_text.size()) {
            return Token_Kind::End;
        }
        const QChar c = m_text[m_at];
        if (Begins_Name(c)) {
            while (m_at < m_text.size() && Continues_Name(m_text[m_at])) {
                ++m_at;
            }
            return Token_Kind::Name;
        }
        if (Is_Digit(c) || (c == u'.' && Is_Digit(At(m_at + 1)))) {
            return Number();
        }
        switch (c.unicode()) {
        case u'\'':
        case u'"':
            return Quoted(c);
        case u'[':
            return Until(u']', Token_Kind::Bracketed, "a name in brackets is not closed");
        case u'#':
            return Until(u'#', Token_Kind::Date, "a date between number signs is not closed");
        default:
            return Symbol();
        }
    }

    Token_Kind Number()
    {
        const auto digits = [this] {
            while (Is_Digit(At(m_at))) {
                ++m_at;
            }
        };
        digits();
        if (At(m_at) == u'.') {
            ++m_at;
            digits();
        }
        if (At(m_at).toLower() == u'e') {
            const qsizetype sign = At(m_at + 1) == u'-' || At(m_at + 1) == u'+' ? 1 : 0;
            if (Is_Digit(At(m_at + 1 + sign))) {
                m_at += 1 + sign;
                digits();
            }
        }
        return Token_Kind::Number;
    }

    Token_Kind Quoted(QChar quote)
    {
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at] != quote) {
                continue;
            }
            if (At(m_at + 1) != quote) {
                ++m_at;
                return Token_Kind::Text;
            }
            ++m_at;
        }
        throw Engine_Error::Syntax(u"a text in quotes is not closed"_s);
    }

    Token_Kind Until(QChar end, Token_Kind kind, const char *complaint)
    {
        const qsizetype found = m_text.indexOf(end, m_at + 1);
        if (found < 0) {
            throw Engine_Error::Syntax(QString::fromLatin1(complaint));
        }
        m_at = found + 1;
        return kind;
    }

    Token_Kind Symbol()
    {
        const QStringView pair = m_text.mid(m_at, 2);
        if (pair == u"<>"_s || pair == u"<="_s || pair == u">="_s || pair == u"!="_s) {
            m_at += 2;
            return Token_Kind::Symbol;
        }
        const QChar c = m_text[m_at++];
        if (!u"()+-*/\\^&=<>,.;"_s.contains(c)) {
            throw Engine_Error::Syntax(u"unexpected character '%1'"_s.arg(c));
        }
        return Token_Kind::Symbol;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};
} // namespace

bool Token::Is(QLatin1StringView word) const
{
    return (kind == Token_Kind::Name || kind == Token_Kind::Symbol) && raw.compare(word, Qt::CaseInsensitive) == 0;
}

QString Token::Value() const
{
    if (kind == Token_Kind::Bracketed || kind == Token_Kind::Date) {
        return raw.mid(1, raw.size() - 2).trimmed().toString();
    }
    if (kind != Token_Kind::Text) {
        return raw.toString();
    }
    const QChar quote = raw[0];
    QString value = raw.mid(1, raw.size() - 2).toString();
    if (value.contains(quote)) {
        value.replace(QString(2, quote), QString(quote));
    }
    return value;
}

std::vector<Token> Tokenize(QStringView statement)
{
    return Tokenizer(statement).All();
}

QString Statement_Shape(const std::vector<Token> &tokens)
{
    QString shape;
    shape.reserve(256);
    for (const Token &token : tokens) {
        shape += u' ';
        if (token.pattern != Pattern_Class::None) {
            shape += QChar(u'0' + static_cast<int>(token.pattern));
        } else if (token.kind == Token_Kind::Text) {
            shape += Text_Fold::Is_Ascii(token.raw) ? u'\'' : u'"';
        } else if (token.kind == Token_Kind::Number) {
            shape += token.raw.contains(u'.') ? u'%' : u'?';
        } else if (token.kind == Token_Kind::Date) {
            shape += u'#';
        } else {
            shape += token.raw;
        }
    }
    return shape;
}
