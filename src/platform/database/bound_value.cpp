// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/bound_value.h"

#include "platform/database/dates.h"
#include "platform/database/engine_error.h"
#include "platform/database/server_text.h"
#include "platform/database/sql_translator.h"

using namespace Qt::StringLiterals;

namespace
{
Cell Value_Of(const Token &token)
{
    if (token.kind != Token_Kind::Number) {
        return token.Value();
    }
    bool whole = false;
    const qint64 number = token.raw.toLongLong(&whole);
    return whole ? Cell(number) : Cell(token.raw.toDouble());
}

QString Digits_Of(const QString &pattern)
{
    qsizetype length = 0;
    while (length < pattern.size() && pattern[length] >= u'0' && pattern[length] <= u'9') {
        ++length;
    }
    return pattern.left(length);
}

/// The text behind all texts that begin with `prefix`, which ends in a digit or a separator.
QString Upper_End(QString prefix)
{
    QChar &last = prefix.back();
    last = QChar(last.unicode() + 1);
    return prefix;
}
} // namespace

Cell Bound_Value(const Token &token, const Parameter &parameter)
{
    Cell value = Value_Of(token);
    const QString date =
        token.kind == Token_Kind::Date ? Stored_Date::From_Text(token.Value()).value_or(QString()) : QString();
    if (token.kind == Token_Kind::Date && date.isEmpty()) {
        throw Engine_Error::Syntax(u"'%1' between number signs is no date"_s.arg(token.Value()));
    }
    switch (parameter.bind) {
    case Bind::Plain:
        return value;
    case Bind::Text:
        return date.isEmpty() ? Sql_Value::To_Text(value) : Stored_Date::To_Short(date);
    case Bind::Number:
        return Sql_Value::As_Number(value);
    case Bind::Date:
    case Bind::As_Date:
        return date.isEmpty() ? Sql_Value::As_Date(value, parameter.column) : Cell(date);
    case Bind::Prefix_Low:
        return Digits_Of(token.Value());
    case Bind::Prefix_High:
        return Upper_End(Digits_Of(token.Value()));
    case Bind::Date_Low:
    case Bind::Date_High: {
        QString prefix = token.Value().chopped(1);
        prefix.replace(Stored_Date::Separator(), u'-');
        return parameter.bind == Bind::Date_Low ? prefix : Upper_End(prefix);
    }
    case Bind::Like_Text:
        return Server_Text::Like_Text(token.Value());
    case Bind::Like_Classes:
        return Server_Text::Like_Classes(token.Value());
    case Bind::As_Text:
        return Sql_Value::As_Text(date.isEmpty() ? value : Cell(Stored_Date::To_Short(date)), parameter.size,
                                  parameter.column);
    case Bind::As_Long:
        return Sql_Value::As_Long(value, parameter.column);
    case Bind::As_Single:
        return Sql_Value::As_Single(value, parameter.column);
    }
    return {};
}
