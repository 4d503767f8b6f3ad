// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <memory>
#include <vector>

struct sqlite3;

enum class Value_Type { Null, Text, Memo, Long, Count, Single, Number, Date, Blob, Boolean };

[[nodiscard]] inline bool Is_Text(Value_Type type)
{
    return type == Value_Type::Text || type == Value_Type::Memo;
}
[[nodiscard]] inline bool Is_Number(Value_Type type)
{
    return type == Value_Type::Long || type == Value_Type::Count || type == Value_Type::Single ||
           type == Value_Type::Number || type == Value_Type::Boolean;
}

/// A column as the file declares it.
struct Catalog_Column {
    QString name;
    QString declared; ///< the type's words in the file
    Value_Type type = Value_Type::Text;
    int size = 0; ///< characters of Text(n), else 0
    bool notNull = false;
    QString defaultSql; ///< as the file has it, "" for none
    int keyPlace = 0;   ///< 1 for the first column of the primary key, 0 outside of it
    bool noCase = false;
    bool autoIncrement = false; ///< the alias of the rowid
};

struct Catalog_Table {
    QString name;
    QString sql;
    std::vector<Catalog_Column> columns;
    bool hasRowid = true;
    QString rowColumn; ///< of a server: the column that numbers its rows; "" in a file, which has rowids

    [[nodiscard]] const Catalog_Column *Find(const QString &column) const;
    /// Numbered rows with bytes at their end, which can be written piece by piece.
    [[nodiscard]] bool Has_Bytes_Last() const;
    /// The only column of the primary key, or null.
    [[nodiscard]] const Catalog_Column *Single_Key() const;
};

/// A column and its table.
struct Column_Name {
    QString table;
    QString column;
};
using Column_Pair = std::pair<Column_Name, Column_Name>;

/// @throws Run_Time_Error when the table has no such column.
const Catalog_Column &Existing_Column(const Catalog_Table &table, const QString &name);

/// The tables of a connection: ordinary ones only, neither views nor the engine's own.
class Catalog
{
public:
    /// Reads everything anew. @throws Run_Time_Error.
    void Load(sqlite3 *db, const QString &path);
    void Clear();
    /// A server's catalog is put together by who asked it for its tables.
    void Add(std::unique_ptr<Catalog_Table> table);
    void Add_Index(const QString &name);
    [[nodiscard]] const Catalog_Table *Find(const QString &table) const;
    [[nodiscard]] const std::vector<std::unique_ptr<Catalog_Table>> &Tables() const { return m_tables; }
    [[nodiscard]] bool Has_Index(const QString &name) const;
    /// Both columns hold texts beyond ASCII, as far as is known since the last Load.
    [[nodiscard]] bool Is_Beyond_Ascii(const Column_Pair &pair) const { return m_beyondAscii.contains(Name_Of(pair)); }
    void Set_Beyond_Ascii(const Column_Pair &pair) { m_beyondAscii.insert(Name_Of(pair)); }

private:
    static QString Name_Of(const Column_Pair &pair)
    {
        const auto &[a, b] = pair;
        return QStringList{a.table, a.column, b.table, b.column}.join(QChar(0));
    }

    std::vector<std::unique_ptr<Catalog_Table>> m_tables;
    QHash<QString, Catalog_Table *> m_byName; // lower case
    QHash<QString, bool> m_indexes;
    QSet<QString> m_beyondAscii;
};

/// A name as SQLite text: in double quotes, so that it can never be taken for a string or a keyword.
QString Quoted_Name(const QString &name);
/// The name of the index that the engine keeps of its own on a column.
QString Index_Name(const QString &table, const QString &column);
/// A text as an SQLite literal.
QString Quoted_Text(const QString &text);
/// The type that a declaration means, with the size of Text(n).
Value_Type Type_Of_Declaration(const QString &declared, int &size);
