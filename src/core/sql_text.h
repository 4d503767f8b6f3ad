// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <concepts>
#include <initializer_list>
#include <span>

/// SQL text that was joined before and has a place of its own in a statement: a condition, an order, a list of texts.
class Sql_Part
{
public:
    Sql_Part() = default;
    /// A ready-made text; only for what was joined before or holds no value of anybody's.
    explicit Sql_Part(QString text) : m_text(std::move(text)) {}
    [[nodiscard]] const QString &Text() const { return m_text; }
    [[nodiscard]] bool Is_Empty() const { return m_text.isEmpty(); }
    Sql_Part &operator+=(const Sql_Part &other)
    {
        m_text += other.m_text;
        return *this;
    }
    friend Sql_Part operator+(Sql_Part first, const Sql_Part &second) { return first += second; }

private:
    QString m_text;
};

/// The name of a column.
struct Sql_Name {
    QString name;
};

/// A value for a place of a statement. Its type says where that place may be: a text stands between quotes or number
/// signs only, a number also by itself, a name and a part only by themselves.
class Sql_Argument
{
public:
    enum class Kind { Text, Number, Name, Part };
    Sql_Argument(const QString &value) : kind(Kind::Text), text(value) {}                        // NOLINT(*-explicit-*)
    Sql_Argument(std::integral auto value) : kind(Kind::Number), text(QString::number(value)) {} // NOLINT(*-explicit-*)
    Sql_Argument(const Sql_Name &value) : kind(Kind::Name), text(value.name) {}                  // NOLINT(*-explicit-*)
    Sql_Argument(const Sql_Part &value) : kind(Kind::Part), text(value.Text()) {}                // NOLINT(*-explicit-*)

    Kind kind;
    QString text;
};

/// The one place where values meet a statement. They are joined in where %1, %2 ... stand, as they are: nothing is
/// doubled or quoted, and a "%" of the statement that is no place marker stays. What comes out has the tokens of the
/// statement; a value is inside one of them, and in a pattern of a statement that changes rows it is no wildcard.
/// @throws Run_Time_Error Db_Syntax for a value that would end its literal, before anything runs.
Sql_Part Sql_Join(QStringView statement, std::span<const Sql_Argument> values);

/// A named part of a statement with its values, as Sql_Join joins them.
template <class... Values>
Sql_Part Sql_Part_Of(const char16_t *part, const Values &...values)
{
    const std::initializer_list<Sql_Argument> list{values...};
    return Sql_Join(part, {list.begin(), list.size()});
}

/// A named statement with its values.
template <class... Values>
QString Sql_Text(const char16_t *statement, const Values &...values)
{
    return Sql_Part_Of(statement, values...).Text();
}

/// "'a','b','c'" of texts that may hold any character: quotes in them are doubled.
Sql_Part Sql_List(QStringList texts);
