// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/ddl_columns.h"

#include "platform/database/engine_error.h"
#include "platform/database/sql_values.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace Ddl_Columns
{
namespace
{
constexpr int Text_Without_Size = 255;
constexpr auto Now_Sql = "(datetime('now', 'localtime'))";
constexpr auto Today_Sql = "(date('now', 'localtime'))";
constexpr auto Text_Rule = " COLLATE NOCASE";

enum class Kind { Text, Memo, Bytes, Long, Single, Date, Auto };

struct Type_Word {
    const char *word;
    Kind kind;
};

constexpr std::array Type_Words{
    Type_Word{"text", Kind::Text},          Type_Word{"char", Kind::Text},        Type_Word{"varchar", Kind::Text},
    Type_Word{"memo", Kind::Memo},          Type_Word{"longtext", Kind::Memo},    Type_Word{"note", Kind::Memo},
    Type_Word{"oleobject", Kind::Bytes},    Type_Word{"longbinary", Kind::Bytes}, Type_Word{"image", Kind::Bytes},
    Type_Word{"long", Kind::Long},          Type_Word{"integer", Kind::Long},     Type_Word{"int", Kind::Long},
    Type_Word{"short", Kind::Long},         Type_Word{"byte", Kind::Long},        Type_Word{"smallint", Kind::Long},
    Type_Word{"single", Kind::Single},      Type_Word{"double", Kind::Single},    Type_Word{"real", Kind::Single},
    Type_Word{"float", Kind::Single},       Type_Word{"datetime", Kind::Date},    Type_Word{"date", Kind::Date},
    Type_Word{"autoincrement", Kind::Auto}, Type_Word{"counter", Kind::Auto},
};

Kind Kind_Of(const Column_Definition &column)
{
    const auto *const found = std::find_if(Type_Words.begin(), Type_Words.end(), [&column](const Type_Word &word) {
        return column.type == QLatin1StringView(word.word);
    });
    if (found == Type_Words.end()) {
        throw Engine_Error::Syntax(u"there is no column type '%1'"_s.arg(column.type));
    }
    return found->kind;
}
} // namespace

bool Is_Auto(const Column_Definition &column)
{
    return Kind_Of(column) == Kind::Auto;
}

QString Type_Sql(const Column_Definition &column)
{
    switch (Kind_Of(column)) {
    case Kind::Text:
        return u"TEXT("_s + QString::number(column.size > 0 ? column.size : Text_Without_Size) + u')';
    case Kind::Memo:
        return u"LONGTEXT"_s;
    case Kind::Bytes:
        return u"LONGBLOB"_s;
    case Kind::Long:
    case Kind::Auto:
        return u"INTEGER"_s;
    case Kind::Single:
        return u"REAL"_s;
    case Kind::Date:
        return u"DATETIME_TEXT"_s;
    }
    return {};
}

std::optional<QString> Default_Sql(const Column_Definition &column)
{
    if (!column.defaultValue || column.defaultValue->Is("null"_L1)) {
        return std::nullopt;
    }
    const Token &token = *column.defaultValue;
    if (token.Is("now"_L1)) {
        return QString::fromLatin1(Now_Sql);
    }
    if (token.Is("date"_L1)) {
        return QString::fromLatin1(Today_Sql);
    }
    const Cell value = (column.defaultNegative ? u"-"_s : QString()) + token.Value();
    switch (Kind_Of(column)) {
    case Kind::Long:
        return Sql_Value::To_Text(Sql_Value::As_Long(value, column.name));
    case Kind::Single:
        return Sql_Value::To_Text(Sql_Value::As_Single(value, column.name));
    case Kind::Date:
        return Quoted_Text(Sql_Value::To_Text(Sql_Value::As_Date(value, column.name)));
    default:
        return Quoted_Text(Sql_Value::To_Text(Sql_Value::As_Text(value, column.size, column.name)));
    }
}

QString Column_Sql(const Column_Definition &column, bool key)
{
    const Kind kind = Kind_Of(column);
    QString sql = Quoted_Name(column.name) + u' ' + Type_Sql(column);
    if (kind == Kind::Auto) {
        return sql + u" PRIMARY KEY AUTOINCREMENT"_s;
    }
    if (kind == Kind::Text || kind == Kind::Memo) {
        sql += QLatin1StringView(Text_Rule);
    }
    if (const auto value = Default_Sql(column)) {
        sql += u" DEFAULT "_s + *value;
    }
    sql += column.notNull || key || column.primaryKey ? u" NOT NULL"_s : QString();
    sql += key ? u" PRIMARY KEY"_s : column.unique || column.primaryKey ? u" UNIQUE"_s : QString();
    return sql;
}

namespace
{
/// The bytes of a numbered row stand last in it: only there can they be made and written piece by piece, and the
/// columns before them are read without going through them.
void Put_Bytes_Last(std::vector<Column_Definition> &columns)
{
    if (std::any_of(columns.begin(), columns.end(), Is_Auto))
        std::stable_partition(columns.begin(), columns.end(),
                              [](const Column_Definition &column) { return Kind_Of(column) != Kind::Bytes; });
}
} // namespace

/// The numbered column must be SQLite's key to be numbered at all; another key then becomes unique and not null,
/// which is the same rule.
QString Create_Table_Sql(const Create_Table &create)
{
    std::vector<Column_Definition> columns = create.columns;
    std::vector<QString> keys = create.primaryKey;
    if (columns.empty()) {
        throw Engine_Error::Syntax(u"a table needs a column"_s);
    }
    for (const Column_Definition &column : columns) {
        if (column.primaryKey) {
            keys.push_back(column.name);
        }
    }
    const auto autos = std::count_if(columns.begin(), columns.end(), Is_Auto);
    if (autos > 1) {
        throw Engine_Error::Failed(u"A table can have one numbered column only."_s);
    }
    Put_Bytes_Last(columns);
    QStringList parts;
    for (Column_Definition &column : columns) {
        const auto isSame = [&column](const QString &name) {
            return name.compare(column.name, Qt::CaseInsensitive) == 0;
        };
        const bool inKey = std::any_of(keys.begin(), keys.end(), isSame);
        column.notNull = column.notNull || inKey;
        column.primaryKey = inKey && keys.size() == 1 && !Is_Auto(column);
        parts.append(Column_Sql(column, column.primaryKey && autos == 0));
    }
    QStringList names;
    for (const QString &name : keys) {
        const bool known = std::any_of(columns.begin(), columns.end(), [&name](const Column_Definition &column) {
            return column.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (!known) {
            throw Engine_Error::Missing_Column(name);
        }
        names.append(Quoted_Name(name));
    }
    if (keys.size() > 1) {
        parts.append((autos == 0 ? u"PRIMARY KEY ("_s : u"UNIQUE ("_s) + names.join(u", "_s) + u')');
    }
    return u"CREATE TABLE "_s + Quoted_Name(create.table) + u" ("_s + parts.join(u", "_s) + u')';
}

bool Can_Be_Added(const Column_Definition &column)
{
    const bool function =
        column.defaultValue && (column.defaultValue->Is("now"_L1) || column.defaultValue->Is("date"_L1));
    return !column.primaryKey && !column.unique && !function && !(column.notNull && !Default_Sql(column));
}

QString Definition_Of(const Catalog_Table &table)
{
    const bool singleKey = table.Single_Key() != nullptr;
    QStringList parts;
    for (const Catalog_Column &column : table.columns) {
        QString sql = Quoted_Name(column.name) + u' ' + column.declared;
        sql += column.noCase ? QString::fromLatin1(Text_Rule) : QString();
        if (column.autoIncrement) {
            sql += u" PRIMARY KEY AUTOINCREMENT"_s;
        } else {
            sql += column.defaultSql.isEmpty() ? QString() : u" DEFAULT ("_s + column.defaultSql + u')';
            sql += column.notNull ? u" NOT NULL"_s : QString();
            sql += singleKey && column.keyPlace == 1 ? u" PRIMARY KEY"_s : QString();
        }
        parts.append(sql);
    }
    return parts.join(u", "_s);
}

QString Key_Sql(const Catalog_Table &table)
{
    std::vector<const Catalog_Column *> keys;
    for (const Catalog_Column &column : table.columns) {
        if (column.keyPlace > 0) {
            keys.push_back(&column);
        }
    }
    if (keys.size() < 2) {
        return {};
    }
    std::sort(keys.begin(), keys.end(), [](const auto *a, const auto *b) { return a->keyPlace < b->keyPlace; });
    QStringList names;
    for (const Catalog_Column *key : keys) {
        names.append(Quoted_Name(key->name));
    }
    return u", PRIMARY KEY ("_s + names.join(u", "_s) + u')';
}

QString With_Type(const QString &createSql, const QString &column, const QString &type)
{
    std::vector<Token> tokens;
    try {
        tokens = Tokenize(createSql);
    } catch (const Run_Time_Error &) {
        return {}; // written by another program, in words that this dialect does not have
    }
    int depth = 0;
    bool itemBegins = false;
    for (size_t i = 0; i + 1 < tokens.size(); ++i) {
        const Token &token = tokens[i];
        if (itemBegins && depth == 1 && token.Value().compare(column, Qt::CaseInsensitive) == 0 &&
            tokens[i + 1].kind == Token_Kind::Name) {
            size_t end = i + 1;
            if (tokens[end + 1].Is("("_L1)) {
                while (end + 1 < tokens.size() && !tokens[end].Is(")"_L1)) {
                    ++end;
                }
            }
            const qsizetype from = tokens[i + 1].raw.data() - QStringView(createSql).data();
            const qsizetype to = tokens[end].raw.data() + tokens[end].raw.size() - QStringView(createSql).data();
            return createSql.left(from) + type + createSql.mid(to);
        }
        depth += token.Is("("_L1) ? 1 : token.Is(")"_L1) ? -1 : 0;
        itemBegins = (token.Is("("_L1) || token.Is(","_L1)) && depth == 1;
    }
    return {};
}

QString Converted(const QString &value, const Catalog_Column &from, const Catalog_Column &to)
{
    const QString name = u", "_s + Quoted_Text(to.name) + u')';
    switch (to.type) {
    case Value_Type::Text:
        return u"zelqor_as_text("_s + (from.type == Value_Type::Date ? u"zelqor_short("_s + value + u')' : value) +
               u", "_s + QString::number(to.size) + name;
    case Value_Type::Memo:
        return u"zelqor_as_text("_s + value + u", 0"_s + name;
    case Value_Type::Long:
        return u"zelqor_as_long("_s + value + name;
    case Value_Type::Single:
        return u"zelqor_as_single("_s + value + name;
    case Value_Type::Date:
        return u"zelqor_as_date("_s + value + name;
    default:
        return value;
    }
}
} // namespace Ddl_Columns
