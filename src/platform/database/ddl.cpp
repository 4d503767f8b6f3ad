// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/ddl.h"

#include "platform/database/database.h"
#include "platform/database/ddl_columns.h"
#include "platform/database/engine_error.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;
using namespace Sql_Ast;

namespace
{
/// A change that takes hold as a whole, also inside the transaction of a group.
class Savepoint
{
public:
    explicit Savepoint(Connection &connection) : m_connection(connection)
    {
        connection.Drain_All();
        connection.Before_Write({});
        connection.Execute("SAVEPOINT zelqor_ddl");
    }
    ~Savepoint()
    {
        if (!m_released && sqlite3_get_autocommit(m_connection.Handle()) == 0) {
            sqlite3_exec(m_connection.Handle(), "ROLLBACK TO zelqor_ddl; RELEASE zelqor_ddl", nullptr, nullptr,
                         nullptr);
        }
        m_connection.Forget_Tables();
    }
    Savepoint(const Savepoint &) = delete;
    Savepoint &operator=(const Savepoint &) = delete;
    void Release()
    {
        m_connection.Execute("RELEASE zelqor_ddl");
        m_released = true;
    }

private:
    Connection &m_connection;
    bool m_released = false;
};

/// Lifts the protection of the schema table for one edit.
class Schema_Edit
{
public:
    explicit Schema_Edit(Connection &connection) : m_connection(connection)
    {
        sqlite3_db_config(connection.Handle(), SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
        sqlite3_exec(connection.Handle(), "PRAGMA writable_schema = ON", nullptr, nullptr, nullptr);
    }
    ~Schema_Edit()
    {
        sqlite3_exec(m_connection.Handle(), "PRAGMA writable_schema = RESET", nullptr, nullptr, nullptr);
        sqlite3_db_config(m_connection.Handle(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    }
    Schema_Edit(const Schema_Edit &) = delete;
    Schema_Edit &operator=(const Schema_Edit &) = delete;

private:
    Connection &m_connection;
};

/// The columns that lists are ordered by; other threads read them.
QStringList Ordered_Columns;

using Ddl::Indexed_Column;
using Ddl::Missing_Indexes;

QByteArray Create_Index_Sql(const Indexed_Column &column)
{
    const QString name = Index_Name(column.table, column.column);
    return (u"CREATE INDEX IF NOT EXISTS "_s + Quoted_Name(name) + u" ON "_s + Quoted_Name(column.table) + u" ("_s +
            Quoted_Name(column.column) + u')')
        .toUtf8();
}

/// Makes what is missing on tables without rows, which costs nothing, inside a change of tables.
void Make_Indexes(Connection &connection)
{
    connection.Forget_Tables();
    const std::vector<Indexed_Column> missing = Missing_Indexes(connection.Tables());
    for (const Indexed_Column &column : missing) {
        Row row;
        if (!connection.Read_Row((u"SELECT 1 FROM "_s + Quoted_Name(column.table) + u" LIMIT 1"_s).toUtf8(), {}, row)) {
            connection.Execute(Create_Index_Sql(column));
        }
    }
}

const Catalog_Table &Existing(Connection &connection, const QString &name)
{
    const Catalog_Table *table = connection.Tables().Find(name);
    if (table == nullptr) {
        connection.Forget_Tables();
        table = connection.Tables().Find(name);
    }
    if (table == nullptr) {
        throw Engine_Error::Missing_Table(name);
    }
    return *table;
}

void Create(Connection &connection, const Create_Table &create)
{
    if (connection.Tables().Find(create.table) != nullptr) {
        throw Engine_Error::Failed(u"The table '%1' exists already."_s.arg(create.table));
    }
    const QByteArray sql = Ddl_Columns::Create_Table_Sql(create).toUtf8();
    Savepoint savepoint(connection);
    connection.Execute(sql);
    Make_Indexes(connection);
    savepoint.Release();
}

/// Copies a table into one of another definition, which takes its name.
/// @param definition  the column definitions and constraints between the parentheses
/// @param values      per new column: its name and the SQLite expression over the old table that fills it
void Rebuild(Connection &connection, const Catalog_Table &table, const QString &definition,
             const std::vector<std::pair<QString, QString>> &values)
{
    const QString scratch = u"zelqor rebuild "_s + table.name;
    QStringList names;
    QStringList sources;
    for (const auto &[name, source] : values) {
        names.append(Quoted_Name(name));
        sources.append(source);
    }
    const QString old = Quoted_Name(table.name);
    const QString fresh = Quoted_Name(scratch);
    const bool counted = table.sql.contains("AUTOINCREMENT"_L1, Qt::CaseInsensitive);
    Row sequence;
    const bool hasSequence =
        counted && connection.Read_Row("SELECT seq FROM sqlite_sequence WHERE name = ?1", {table.name}, sequence);
    connection.Execute((u"CREATE TABLE "_s + fresh + u" ("_s + definition + u')').toUtf8());
    connection.Execute((u"INSERT INTO "_s + fresh + u" ("_s + names.join(u", "_s) + u") SELECT "_s +
                        sources.join(u", "_s) + u" FROM "_s + old)
                           .toUtf8());
    connection.Execute((u"DROP TABLE "_s + old + u"; ALTER TABLE "_s + fresh + u" RENAME TO "_s + old).toUtf8());
    if (hasSequence) {
        connection.Execute((u"UPDATE sqlite_sequence SET seq = max(seq, "_s + Sql_Value::To_Text(sequence.at(0)) +
                            u") WHERE name = "_s + Quoted_Text(table.name))
                               .toUtf8());
    }
}

void Add_Columns(Connection &connection, const Alter_Table &alter)
{
    const Catalog_Table table = Existing(connection, alter.table);
    for (const Column_Definition &column : alter.columns) {
        if (table.Find(column.name) != nullptr) {
            throw Engine_Error::Failed(u"The table '%1' has a column '%2' already."_s.arg(table.name, column.name));
        }
        if (Ddl_Columns::Is_Auto(column)) {
            throw Engine_Error::Failed(u"A numbered column can only be made with its table."_s);
        }
    }
    Savepoint savepoint(connection);
    std::vector<Column_Definition> rebuilt;
    for (const Column_Definition &column : alter.columns) {
        if (Ddl_Columns::Can_Be_Added(column)) {
            connection.Execute((u"ALTER TABLE "_s + Quoted_Name(table.name) + u" ADD COLUMN "_s +
                                Ddl_Columns::Column_Sql(column, false))
                                   .toUtf8());
        } else {
            rebuilt.push_back(column);
        }
    }
    if (!rebuilt.empty()) {
        connection.Forget_Tables();
        const Catalog_Table grown = Existing(connection, alter.table);
        QString definition = Ddl_Columns::Definition_Of(grown);
        std::vector<std::pair<QString, QString>> values;
        for (const Catalog_Column &column : grown.columns) {
            values.emplace_back(column.name, Quoted_Name(column.name));
        }
        QString columns;
        for (const Column_Definition &column : rebuilt) {
            columns += u", "_s + Ddl_Columns::Column_Sql(column, false);
            values.emplace_back(column.name, Ddl_Columns::Default_Sql(column).value_or(u"NULL"_s));
        }
        Rebuild(connection, grown, definition + columns + Ddl_Columns::Key_Sql(grown), values);
    }
    Make_Indexes(connection);
    savepoint.Release();
}

/// A text column that only grows is changed in the schema alone; its rows are not touched.
bool Widen(Connection &connection, const Catalog_Table &table, const Catalog_Column &column,
           const Column_Definition &wanted)
{
    int size = 0;
    const Value_Type type = Type_Of_Declaration(Ddl_Columns::Type_Sql(wanted), size);
    const bool grows = Is_Text(column.type) && Is_Text(type) &&
                       (type == Value_Type::Memo || (column.type == Value_Type::Text && size >= column.size));
    const QString sql =
        grows ? Ddl_Columns::With_Type(table.sql, column.name, Ddl_Columns::Type_Sql(wanted)) : QString();
    if (sql.isEmpty()) {
        return false;
    }
    const Schema_Edit edit(connection);
    Row version;
    connection.Read_Row("PRAGMA main.schema_version", {}, version);
    connection.Change("UPDATE main.sqlite_schema SET sql = ?1 WHERE type = 'table' AND name = ?2", {sql, table.name});
    connection.Execute("PRAGMA main.schema_version = " + QByteArray::number(std::get<qint64>(version.at(0)) + 1));
    return true;
}

void Alter_Column(Connection &connection, const QString &tableName, const Column_Definition &wanted)
{
    const Catalog_Table table = Existing(connection, tableName);
    const Catalog_Column &column = Existing_Column(table, wanted.name);
    if (Widen(connection, table, column, wanted)) {
        return;
    }
    Catalog_Table changed = table;
    std::vector<std::pair<QString, QString>> values;
    for (Catalog_Column &one : changed.columns) {
        QString value = Quoted_Name(one.name);
        if (one.name == column.name) {
            one.declared = Ddl_Columns::Type_Sql(wanted);
            one.type = Type_Of_Declaration(one.declared, one.size);
            one.noCase = Is_Text(one.type);
            value = Ddl_Columns::Converted(value, column, one);
        }
        values.emplace_back(one.name, value);
    }
    Rebuild(connection, table, Ddl_Columns::Definition_Of(changed) + Ddl_Columns::Key_Sql(changed), values);
}

void Drop_Column(Connection &connection, const QString &tableName, const QString &name)
{
    const Catalog_Table table = Existing(connection, tableName);
    const QString column = Existing_Column(table, name).name;
    const QString index = Index_Name(table.name, column);
    connection.Execute((u"DROP INDEX IF EXISTS "_s + Quoted_Name(index)).toUtf8());
    connection.Execute(
        (u"ALTER TABLE "_s + Quoted_Name(table.name) + u" DROP COLUMN "_s + Quoted_Name(column)).toUtf8());
}

void Alter(Connection &connection, const Alter_Table &alter)
{
    if (alter.action == Alter_Table::Action::Add) {
        Add_Columns(connection, alter);
        return;
    }
    Existing(connection, alter.table);
    Savepoint savepoint(connection);
    for (const Column_Definition &column : alter.columns) {
        connection.Forget_Tables();
        if (alter.action == Alter_Table::Action::Alter) {
            Alter_Column(connection, alter.table, column);
        } else {
            Drop_Column(connection, alter.table, column.name);
        }
    }
    Make_Indexes(connection);
    savepoint.Release();
}

void Drop(Connection &connection, const Drop_Table &drop)
{
    const QString name = Existing(connection, drop.table).name;
    Savepoint savepoint(connection);
    connection.Execute((u"DROP TABLE "_s + Quoted_Name(name)).toUtf8());
    savepoint.Release();
}
} // namespace

namespace Ddl
{
std::vector<Indexed_Column> Missing_Indexes(const Catalog &catalog)
{
    std::vector<Indexed_Column> missing;
    for (const auto &keyTable : catalog.Tables()) {
        const Catalog_Column *key = keyTable->Single_Key();
        if (key == nullptr || key->type != Value_Type::Text) {
            continue;
        }
        for (const auto &table : catalog.Tables()) {
            const Catalog_Column *column = table == keyTable ? nullptr : table->Find(key->name);
            if (column != nullptr && column->type == Value_Type::Text && column->keyPlace == 0 &&
                !catalog.Has_Index(Index_Name(table->name, column->name))) {
                missing.push_back({table->name, column->name, false});
            }
        }
    }
    // Lists of such rows are ordered by their dates, of which the newest few must not cost a sort of all, and by texts,
    // which may stand behind a long one in each row.
    for (const auto &table : catalog.Tables()) {
        const Catalog_Column *key = table->Single_Key();
        if (key == nullptr || key->type != Value_Type::Text) {
            continue;
        }
        for (const Catalog_Column &column : table->columns) {
            const bool ordered = column.type == Value_Type::Text && column.keyPlace == 0 &&
                                 Ordered_Columns.contains(column.name, Qt::CaseInsensitive);
            if ((column.type == Value_Type::Date || ordered) &&
                !catalog.Has_Index(Index_Name(table->name, column.name))) {
                missing.push_back({table->name, column.name, ordered});
            }
        }
    }
    return missing;
}

bool Run(Connection &connection, const Statement &statement)
{
    if (const auto *create = std::get_if<Create_Table>(&statement)) {
        Create(connection, *create);
    } else if (const auto *alter = std::get_if<Alter_Table>(&statement)) {
        Alter(connection, *alter);
    } else if (const auto *drop = std::get_if<Drop_Table>(&statement)) {
        Drop(connection, *drop);
    } else {
        return false;
    }
    return true;
}

bool Misses_Indexes(Connection &connection)
{
    return !Missing_Indexes(connection.Tables()).empty();
}

bool Make_Next_Index(Connection &connection)
{
    const std::vector<Indexed_Column> missing = Missing_Indexes(connection.Tables());
    if (missing.empty()) {
        return false;
    }
    connection.Execute(Create_Index_Sql(missing.front()));
    connection.Forget_Tables();
    return true;
}
} // namespace Ddl

void Database_Engine::Keep_In_Order(const QStringList &columns)
{
    Ordered_Columns = columns;
}
