// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/catalog.h"

#include "platform/database/engine_error.h"

#include <algorithm>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

QString Quoted_Name(const QString &name)
{
    QString quoted = name;
    return u'"' + quoted.replace(u'"', u"\"\""_s) + u'"';
}

QString Index_Name(const QString &table, const QString &column)
{
    return u"zelqor_"_s + table + u'_' + column;
}

QString Quoted_Text(const QString &text)
{
    QString quoted = text;
    return u'\'' + quoted.replace(u'\'', u"''"_s) + u'\'';
}

Value_Type Type_Of_Declaration(const QString &declared, int &size)
{
    const QString type = declared.toUpper();
    size = 0;
    if (type.contains("DATE"_L1)) {
        return Value_Type::Date;
    }
    if (type.contains("INT"_L1)) {
        return Value_Type::Long;
    }
    if (type.contains("CHAR"_L1) || type.contains("CLOB"_L1) || type.contains("TEXT"_L1)) {
        const qsizetype open = type.indexOf(u'(');
        size = open < 0 ? 0 : type.mid(open + 1, type.indexOf(u')') - open - 1).trimmed().toInt();
        return size > 0 ? Value_Type::Text : Value_Type::Memo;
    }
    if (type.isEmpty() || type.contains("BLOB"_L1)) {
        return Value_Type::Blob;
    }
    return Value_Type::Single;
}

const Catalog_Column *Catalog_Table::Find(const QString &column) const
{
    const auto found = std::find_if(columns.begin(), columns.end(), [&column](const Catalog_Column &c) {
        return c.name.compare(column, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? nullptr : &*found;
}

bool Catalog_Table::Has_Bytes_Last() const
{
    const Catalog_Column *key = Single_Key();
    return key != nullptr && key->autoIncrement && columns.back().type == Value_Type::Blob;
}

const Catalog_Column *Catalog_Table::Single_Key() const
{
    const Catalog_Column *key = nullptr;
    for (const Catalog_Column &column : columns) {
        if (column.keyPlace > 1) {
            return nullptr;
        }
        key = column.keyPlace == 1 ? &column : key;
    }
    return key;
}

namespace
{
/// Rows of a plain query as texts.
class Rows
{
public:
    Rows(sqlite3 *db, const QString &path, const QString &sql) : m_db(db), m_path(path)
    {
        if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &m_statement, nullptr) != SQLITE_OK) {
            throw Engine_Error::From_Sqlite(db, path);
        }
    }
    ~Rows() { sqlite3_finalize(m_statement); }
    Rows(const Rows &) = delete;
    Rows &operator=(const Rows &) = delete;

    bool Next()
    {
        const int code = sqlite3_step(m_statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE) {
            throw Engine_Error::From_Sqlite(m_db, m_path);
        }
        return code == SQLITE_ROW;
    }
    [[nodiscard]] QString Text(int column) const
    {
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
        return QString::fromUtf8(text, sqlite3_column_bytes(m_statement, column));
    }
    [[nodiscard]] int Number(int column) const { return sqlite3_column_int(m_statement, column); }

private:
    sqlite3 *m_db;
    QString m_path;
    sqlite3_stmt *m_statement = nullptr;
};

void Load_Columns(sqlite3 *db, const QString &path, Catalog_Table &table)
{
    Rows rows(db, path, u"PRAGMA main.table_info(%1)"_s.arg(Quoted_Name(table.name)));
    int keyColumns = 0;
    while (rows.Next()) {
        Catalog_Column column;
        column.name = rows.Text(1);
        column.declared = rows.Text(2);
        column.type = Type_Of_Declaration(column.declared, column.size);
        column.notNull = rows.Number(3) != 0;
        column.defaultSql = rows.Text(4);
        column.keyPlace = rows.Number(5);
        keyColumns += column.keyPlace > 0 ? 1 : 0;
        const char *collation = nullptr;
        sqlite3_table_column_metadata(db, "main", table.name.toUtf8().constData(), column.name.toUtf8().constData(),
                                      nullptr, &collation, nullptr, nullptr, nullptr);
        column.noCase = collation != nullptr && qstricmp(collation, "NOCASE") == 0;
        table.columns.push_back(std::move(column));
    }
    for (Catalog_Column &column : table.columns) {
        column.autoIncrement = table.hasRowid && keyColumns == 1 && column.keyPlace == 1 &&
                               column.declared.compare("INTEGER"_L1, Qt::CaseInsensitive) == 0;
    }
}
} // namespace

const Catalog_Column &Existing_Column(const Catalog_Table &table, const QString &name)
{
    const Catalog_Column *column = table.Find(name);
    if (column == nullptr)
        throw Engine_Error::Missing_Column(name);
    return *column;
}

void Catalog::Clear()
{
    m_tables.clear();
    m_byName.clear();
    m_indexes.clear();
    m_beyondAscii.clear();
}

void Catalog::Load(sqlite3 *db, const QString &path)
{
    Clear();
    Rows tables(
        db, path,
        u"SELECT s.name, s.sql, l.wr FROM main.sqlite_schema AS s JOIN pragma_table_list AS l ON l.name = s.name "_s
        "AND l.schema = 'main' WHERE s.type = 'table' AND l.type = 'table' AND s.name NOT LIKE 'sqlite\\_%' "
        "ESCAPE '\\'"_s);
    while (tables.Next()) {
        auto table = std::make_unique<Catalog_Table>();
        table->name = tables.Text(0);
        table->sql = tables.Text(1);
        table->hasRowid = tables.Number(2) == 0;
        Load_Columns(db, path, *table);
        Add(std::move(table));
    }
    Rows indexes(db, path, u"SELECT name FROM main.sqlite_schema WHERE type = 'index'"_s);
    while (indexes.Next()) {
        Add_Index(indexes.Text(0));
    }
}

void Catalog::Add(std::unique_ptr<Catalog_Table> table)
{
    m_byName.insert(table->name.toLower(), table.get());
    m_tables.push_back(std::move(table));
}

void Catalog::Add_Index(const QString &name)
{
    m_indexes.insert(name.toLower(), true);
}

const Catalog_Table *Catalog::Find(const QString &table) const
{
    return m_byName.value(table.toLower(), nullptr);
}

bool Catalog::Has_Index(const QString &name) const
{
    return m_indexes.contains(name.toLower());
}
