// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/sql_text.h"

#include "platform/database/engine_error.h"
#include "platform/database/sql_tokens.h"

#include <QHash>
#include <algorithm>
#include <memory>

namespace
{
/// A place of a statement: where it stands, and which value goes there.
struct Place {
    qsizetype at;
    size_t value;
};

/// A statement with a "0" in each place, in tokens: what every joining of it must look like.
struct Template {
    QString text;
    std::vector<Place> places;
    std::vector<Token> tokens; ///< of the text
    bool changes = false;      ///< rows that a pattern finds
};

constexpr qsizetype Shown_Characters = 40;
const QString Wildcards = QStringLiteral("%_[");
const QString Date_Characters = QStringLiteral("0123456789-/.: ");

Template Read_Template(QStringView statement)
{
    Template read;
    for (qsizetype i = 0; i < statement.size(); ++i) {
        const int digit = i + 1 < statement.size() ? statement[i + 1].unicode() - u'0' : 0;
        if (statement[i] == u'%' && digit >= 1 && digit <= 9) {
            read.places.push_back({read.text.size(), static_cast<size_t>(digit - 1)});
            read.text += u'0';
            ++i;
        } else {
            read.text += statement[i];
        }
    }
    read.tokens = Tokenize(read.text);
    read.changes =
        read.tokens.front().Is(QLatin1StringView("delete")) || read.tokens.front().Is(QLatin1StringView("update"));
    return read;
}

/// The statements are few and stand in the program, so that they are read once.
const Template &Template_Of(QStringView statement)
{
    static thread_local QHash<QString, std::shared_ptr<const Template>> read;
    auto found = read.constFind(QString::fromRawData(statement.data(), statement.size()));
    if (found == read.constEnd())
        found = read.insert(statement.toString(), std::make_shared<Template>(Read_Template(statement)));
    return **found;
}

/// One statement and the values of this joining.
class Joining
{
public:
    Joining(const Template &statement, std::span<const Sql_Argument> values) : m_template(statement), m_values(values)
    {
        qsizetype from = 0;
        for (const Place &place : m_template.places) {
            m_text += QStringView(m_template.text).mid(from, place.at - from);
            m_text += Value(place).text;
            from = place.at + 1;
        }
        m_text += QStringView(m_template.text).mid(from);
    }

    QString Text()
    {
        m_tokens = Tokens();
        auto place = m_template.places.begin();
        qsizetype moved = 0;
        for (const Token &token : m_template.tokens) {
            const qsizetype from = token.raw.data() - m_template.text.constData();
            const qsizetype to = from + token.raw.size();
            const auto first = place;
            const qsizetype start = from + moved;
            for (; place != m_template.places.end() && place->at < to; ++place)
                moved += Value(*place).text.size() - 1;
            if (first != place && token.raw.size() == 1)
                Take_Alone(Value(*first), start, to + moved);
            else
                Take_Same(token, start, to + moved, {first, place});
        }
        return m_text;
    }

private:
    [[nodiscard]] const Sql_Argument &Value(const Place &place) const
    {
        if (place.value >= m_values.size())
            throw Engine_Error::Syntax(QStringLiteral("a value is missing"));
        return m_values[place.value];
    }

    [[nodiscard]] std::vector<Token> Tokens() const
    {
        try {
            return Tokenize(m_text);
        } catch (const Run_Time_Error &) {
            Refuse();
        }
    }

    /// A value that is a token or several of its own.
    void Take_Alone(const Sql_Argument &value, qsizetype start, qsizetype end)
    {
        if (value.kind == Sql_Argument::Kind::Part) {
            while (Ends_Within(end))
                ++m_at;
            return;
        }
        const bool number = value.kind == Sql_Argument::Kind::Number;
        if (number && value.text.startsWith(u'-')) {
            ++m_at;
            ++start;
        }
        const bool fits = number ? m_tokens[m_at].kind == Token_Kind::Number
                                 : value.kind == Sql_Argument::Kind::Name && m_tokens[m_at].kind == Token_Kind::Name;
        if (!fits || !Stands(m_tokens[m_at++], start, end))
            Refuse();
    }

    /// A token of the statement, with or without values in it.
    void Take_Same(const Token &token, qsizetype start, qsizetype end, std::span<const Place> places)
    {
        const Token &joined = m_tokens[m_at];
        const bool same = joined.kind == token.kind && Stands(joined, start, end);
        const bool unfit = std::any_of(places.begin(), places.end(),
                                       [&](const Place &place) { return Is_Unfit(token, Value(place).text); });
        if (!same || unfit)
            Refuse();
        m_at += token.kind == Token_Kind::End ? 0 : 1;
    }

    /// A value that stays in its token, but means more than itself there.
    [[nodiscard]] bool Is_Unfit(const Token &token, const QString &value) const
    {
        const auto has = [&value](auto test) {
            return std::any_of(value.begin(), value.end(), test);
        };
        if (token.kind == Token_Kind::Date) // what a data source takes between number signs is not known
            return has([](QChar c) { return !Date_Characters.contains(c); });
        return m_template.changes && token.pattern != Pattern_Class::None &&
               (value.isEmpty() || has([](QChar c) { return Wildcards.contains(c); }));
    }

    [[nodiscard]] bool Stands(const Token &token, qsizetype start, qsizetype end) const
    {
        const qsizetype from = token.raw.data() - m_text.constData();
        return from == start && from + token.raw.size() == end;
    }

    [[nodiscard]] bool Ends_Within(qsizetype end) const
    {
        const Token &token = m_tokens[m_at];
        return token.kind != Token_Kind::End && token.raw.data() + token.raw.size() - m_text.constData() <= end;
    }

    [[noreturn]] void Refuse() const
    {
        const auto odd = std::find_if(m_values.begin(), m_values.end(), [](const Sql_Argument &value) {
            return value.kind == Sql_Argument::Kind::Text &&
                   std::any_of(value.text.begin(), value.text.end(), [](QChar c) { return !c.isLetterOrNumber(); });
        });
        const QString value = odd == m_values.end() ? QString() : odd->text.left(Shown_Characters);
        throw Engine_Error::Syntax(QStringLiteral("the value '%1' does not stay in its place").arg(value));
    }

    const Template &m_template;
    std::span<const Sql_Argument> m_values;
    QString m_text;
    std::vector<Token> m_tokens; // of the text
    size_t m_at = 0;             // the next one to be compared
};
} // namespace

Sql_Part Sql_Join(QStringView statement, std::span<const Sql_Argument> values)
{
    if (values.empty())
        return Sql_Part(statement.toString());
    return Sql_Part(Joining(Template_Of(statement), values).Text());
}

Sql_Part Sql_List(QStringList texts)
{
    for (QString &text : texts)
        text.replace(QLatin1Char('\''), QStringLiteral("''"));
    return Sql_Part(QLatin1Char('\'') + texts.join(QStringLiteral("','")) + QLatin1Char('\''));
}
