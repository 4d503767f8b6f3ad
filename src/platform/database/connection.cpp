// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/connection.h"

#include "platform/database/bound_value.h"
#include "platform/database/connection_pool.h"
#include "platform/database/ddl.h"
#include "platform/database/engine_error.h"
#include "platform/database/file_layer.h"
#include "platform/database/index_worker.h"
#include "platform/database/key_query.h"
#include "platform/database/long_rows.h"
#include "platform/database/sql_functions.h"
#include "platform/database/sql_parser.h"
#include "platform/database/sqlite_cells.h"
#include "platform/database/sqlite_cursor.h"
#include "platform/database/text_fold.h"
#include "platform/database/watched_query.h"

#include <algorithm>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace
{
/// A value of 256 MB, and what stands beside it; longer ones are refused before they are read as a whole.
constexpr int Longest_Row = 288 << 20;
} // namespace

Connection::Connection(const QString &path) : m_path(path), m_hold(path) {}

std::shared_ptr<Connection> Connection::Open(const QString &nativePath)
{
    auto connection = std::make_shared<Connection>(nativePath);
    connection->m_readOnly = connection->m_hold.Is_Read_Only();
    connection->Open_File(Watched_Query::Wait_For_Lock);
    connection->Tables();
    Watched_Query::Follow(connection->m_db);
    return connection;
}

std::shared_ptr<Connection> Connection::Open_For_Indexes(const QString &nativePath)
{
    std::shared_ptr<Connection> connection = Open(nativePath);
    connection->Execute("PRAGMA cache_spill = OFF; PRAGMA temp_store = FILE");
    return connection;
}

void Connection::Look_For_Missing_Indexes()
{
    if (!m_readOnly && m_indexWorker == nullptr && Ddl::Misses_Indexes(*this)) {
        m_indexWorker = std::make_unique<Index_Worker>(m_path);
    }
}

void Connection::Stop_Work()
{
    m_indexWorker.reset();
}

std::shared_ptr<Connection> Connection::Open_Beside(const Connection &other)
{
    auto connection = std::make_shared<Connection>(other.m_path);
    connection->m_readOnly = true;
    connection->Open_File(nullptr);
    return connection;
}

void Connection::Open_File(int (*waitForLock)(void *, int))
{
    const int flags = (m_readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(m_path.toUtf8().constData(), &m_db, flags, File_Layer::Name()) != SQLITE_OK) {
        Fail();
    }
    sqlite3_busy_handler(m_db, waitForLock, nullptr);
    m_readOnly = sqlite3_db_readonly(m_db, "main") == 1;
    Configure();
}

/// The file is not trusted: nothing in its schema may run code, and nothing may write the schema by itself.
void Connection::Configure()
{
    sqlite3_extended_result_codes(m_db, 1);
    for (const int on : {SQLITE_DBCONFIG_DEFENSIVE}) {
        sqlite3_db_config(m_db, on, 1, nullptr);
    }
    for (const int off : {SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_TRUSTED_SCHEMA,
                          SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION}) {
        sqlite3_db_config(m_db, off, 0, nullptr);
    }
    sqlite3_limit(m_db, SQLITE_LIMIT_LENGTH, Longest_Row);
    sqlite3_limit(m_db, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(m_db, SQLITE_LIMIT_TRIGGER_DEPTH, 1);
    Register_Functions(m_db, m_functionError);
    Execute("PRAGMA foreign_keys = OFF; PRAGMA synchronous = FULL; PRAGMA cell_size_check = ON; "
            "PRAGMA recursive_triggers = OFF; PRAGMA temp_store = MEMORY");
}

void Connection::Settle()
{
    if (m_readOnly) {
        return;
    }
    if (m_hold.Has_Log()) {
        Execute("PRAGMA journal_mode = DELETE");
    }
    Look_For_Missing_Indexes();
}

Connection::~Connection()
{
    Stop_Work();
    m_statements.Clear();
    sqlite3_close_v2(m_db);
}

Run_Time_Error Connection::Error()
{
    if (m_functionError) {
        Run_Time_Error error = *m_functionError;
        m_functionError.reset();
        return error;
    }
    return Engine_Error::From_Sqlite(m_db, m_path);
}

void Connection::Fail()
{
    throw Error();
}

void Connection::Execute(const QByteArray &sql)
{
    if (sqlite3_exec(m_db, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        Fail();
    }
}

qint64 Connection::Last_Rowid() const
{
    return sqlite3_last_insert_rowid(m_db);
}

const Catalog &Connection::Tables()
{
    if (m_catalogVersion < 0) {
        Row row;
        Read_Row("PRAGMA main.schema_version", {}, row);
        m_catalog.Load(m_db, m_path);
        m_catalogVersion = std::get<qint64>(row.at(0));
    }
    return m_catalog;
}

bool Connection::Tables_Are_Stale()
{
    Row row;
    Read_Row("PRAGMA main.schema_version", {}, row);
    return m_catalogVersion != std::get<qint64>(row.at(0));
}

void Connection::Forget_Tables()
{
    m_statements.Clear();
    m_catalogVersion = -1;
}

std::shared_ptr<Prepared_Statement> Connection::Cached(const QString &key)
{
    std::shared_ptr<Prepared_Statement> kept = m_statements.Find(key);
    if (kept == nullptr || !kept->busy) {
        return kept;
    }
    auto second = std::make_shared<Prepared_Statement>(kept->plan);
    Compile(*second);
    return second;
}

void Connection::Compile(Prepared_Statement &statement)
{
    const QByteArray &sql = statement.plan->sql;
    if (sqlite3_prepare_v3(m_db, sql.constData(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                           &statement.handle, nullptr) != SQLITE_OK) {
        Fail();
    }
}

namespace
{
/// A plan for the rows behind the first `skip` ones. A limit at its end counts from the first row.
std::shared_ptr<const Plan> Behind(const Plan &plan, qint64 skip)
{
    auto behind = std::make_shared<Plan>(plan);
    behind->reusable = false;
    const QByteArray limit = QByteArrayLiteral(" LIMIT ");
    const qsizetype at = plan.sql.lastIndexOf(limit);
    const bool limited = at >= 0 && !plan.sql.mid(at).contains(')');
    behind->sql = limited ? plan.sql.left(at) + " LIMIT max(0, " + plan.sql.mid(at + limit.size()) + " - " +
                                QByteArray::number(skip) + ")"
                          : plan.sql + " LIMIT -1";
    behind->sql += " OFFSET " + QByteArray::number(skip);
    return behind;
}
} // namespace

std::shared_ptr<Prepared_Statement> Connection::Prepare(const std::vector<Token> &tokens, bool updatable, qint64 skip,
                                                        bool &ranAsDdl)
{
    std::shared_ptr<Prepared_Statement> prepared = Prepare_As_Is(tokens, updatable, skip, ranAsDdl);
    while (prepared != nullptr && !Holds(*prepared->plan)) {
        prepared.reset();
        m_statements.Clear();
        prepared = Prepare_As_Is(tokens, updatable, skip, ranAsDdl);
    }
    return prepared;
}

bool Connection::Holds(const Plan &plan)
{
    for (const Column_Pair &pair : plan.asciiPairs) {
        if (Is_Known_Ascii(pair.first) || Is_Known_Ascii(pair.second)) {
            continue;
        }
        const bool secondIsShorter = Size_Of(pair.second.table) < Size_Of(pair.first.table);
        if (!Is_Ascii(secondIsShorter ? pair.second : pair.first) &&
            !Is_Ascii(secondIsShorter ? pair.first : pair.second)) {
            m_catalog.Set_Beyond_Ascii(pair);
            return false;
        }
    }
    return true;
}

bool Connection::Is_Known_Ascii(const Column_Name &column)
{
    return m_asciiAt.value(column.table + QChar(0) + column.column, {-1, -1}) == Data_Version();
}

/// About the number of its rows.
qint64 Connection::Size_Of(const QString &table)
{
    Row row;
    Read_Row((u"SELECT max(rowid) FROM "_s + Quoted_Name(table)).toUtf8(), {}, row);
    const auto *size = std::get_if<qint64>(&row.at(0));
    return size == nullptr ? 0 : *size;
}

bool Connection::Is_Ascii(const Column_Name &column)
{
    Row row;
    const bool beyond = Read_Row((u"SELECT 1 FROM "_s + Quoted_Name(column.table) + u" WHERE "_s +
                                  Quoted_Name(column.column) + u" GLOB '*[^\x01-\x7F]*' LIMIT 1"_s)
                                     .toUtf8(),
                                 {}, row);
    if (!beyond) {
        m_asciiAt.insert(column.table + QChar(0) + column.column, Data_Version());
    }
    return !beyond;
}

std::shared_ptr<Prepared_Statement> Connection::Prepare_As_Is(const std::vector<Token> &tokens, bool updatable,
                                                              qint64 skip, bool &ranAsDdl)
{
    const QString key = (updatable ? u'u' : u'r') + Statement_Shape(tokens);
    std::shared_ptr<Prepared_Statement> prepared = skip > 0 ? nullptr : Cached(key);
    if (prepared == nullptr) {
        const Sql_Ast::Statement tree = Parse_Statement(tokens);
        if (Ddl::Run(*this, tree)) {
            ranAsDdl = true;
            Look_For_Missing_Indexes();
            return nullptr;
        }
        std::shared_ptr<const Plan> plan;
        try {
            plan = std::make_shared<Plan>(Translate(tree, Tables(), updatable));
        } catch (const Run_Time_Error &) {
            if (!Tables_Are_Stale()) {
                throw;
            }
            Forget_Tables();
            plan = std::make_shared<Plan>(Translate(tree, Tables(), updatable));
        }
        if (skip > 0 && !plan->write) {
            plan = Behind(*plan, skip);
        }
        prepared = std::make_shared<Prepared_Statement>(plan);
        Compile(*prepared);
        m_statements.Keep(key, prepared);
    }
    Bind(*prepared, tokens);
    return prepared;
}

std::shared_ptr<Prepared_Statement> Connection::Prepare_Own(const QByteArray &sql)
{
    const QString key = u'!' + QString::fromUtf8(sql);
    std::shared_ptr<Prepared_Statement> prepared = Cached(key);
    if (prepared == nullptr) {
        auto plan = std::make_shared<Plan>();
        plan->sql = sql;
        prepared = std::make_shared<Prepared_Statement>(plan);
        Compile(*prepared);
        m_statements.Keep(key, prepared);
    }
    return prepared;
}

void Connection::Bind(Prepared_Statement &statement, const std::vector<Token> &tokens)
{
    std::vector<const Token *> literals;
    for (const Token &token : tokens) {
        if (token.Is_Literal()) {
            literals.push_back(&token);
        }
    }
    int at = 0;
    for (const Parameter &parameter : statement.plan->parameters) {
        const Cell value = Bound_Value(*literals.at(static_cast<size_t>(parameter.literal)), parameter);
        if (Sqlite_Cells::Bind_Cell(statement.handle, ++at, value) != SQLITE_OK) {
            Fail();
        }
    }
}

void Connection::Make_Ready(Prepared_Statement &statement, const std::vector<Token> &tokens)
{
    Compile(statement);
    Bind(statement, tokens);
}

void Connection::Collect_Rows(Prepared_Statement &statement, std::vector<qint64> &rows)
{
    For_Each_Row(statement, [&rows](sqlite3_stmt *at) { rows.push_back(sqlite3_column_int64(at, 0)); });
}

void Connection::For_Each_Row(Prepared_Statement &statement, const std::function<void(sqlite3_stmt *)> &body)
{
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(statement.handle)) == SQLITE_ROW) {
        body(statement.handle);
    }
    if (code != SQLITE_DONE) {
        const Run_Time_Error error = Error();
        sqlite3_reset(statement.handle);
        throw error;
    }
    sqlite3_reset(statement.handle);
}

std::pair<qint64, qint64> Connection::Data_Version()
{
    Row row;
    Read_Row("PRAGMA main.data_version", {}, row);
    return {sqlite3_total_changes64(m_db), std::get<qint64>(row.at(0))};
}

bool Connection::Has_Written() const
{
    return sqlite3_txn_state(m_db, "main") == SQLITE_TXN_WRITE;
}

/// The rows of a query by their numbers; null where it must be run as it stands.
std::unique_ptr<Sqlite_Cursor> Connection::Run_By_Keys(const Plan &plan, const std::vector<Token> &tokens, qint64 skip,
                                                       const Early_Rows &early)
{
    Key_Query query(*this, *plan.keys, tokens);
    if (early) {
        query.Tell_Ahead([&](std::vector<qint64> rows) { early(Rows_By_Number(plan, std::move(rows))); });
    }
    std::optional<std::vector<qint64>> rows = query.Rows(skip);
    return rows ? Rows_By_Number(plan, *std::move(rows)) : nullptr;
}

std::unique_ptr<Sqlite_Cursor> Connection::Rows_By_Number(const Plan &plan, std::vector<qint64> rows)
{
    const std::shared_ptr<Prepared_Statement> row = Prepare_Own(plan.keys->row);
    row->busy = true;
    return std::make_unique<Sqlite_Cursor>(shared_from_this(), row, std::make_shared<Plan>(plan), std::move(rows));
}

std::unique_ptr<Row_Source> Connection::Run(const QString &statement, bool updatable, QString *baseTable, qint64 skip,
                                            const Early_Rows &early)
{
    bool ranAsDdl = false;
    const std::vector<Token> tokens = Tokenize(statement);
    std::shared_ptr<Prepared_Statement> prepared = Prepare(tokens, updatable, 0, ranAsDdl);
    if (ranAsDdl) {
        return nullptr;
    }
    if (prepared->plan->write) {
        Before_Write(prepared->plan->tables.front());
        Run_Write(*prepared, tokens);
        return nullptr;
    }
    std::unique_ptr<Sqlite_Cursor> cursor;
    if (prepared->plan->keys != nullptr && (skip > 0 || prepared->plan->keys->always)) {
        if (Tables_Are_Stale()) {
            Forget_Tables();
            return Run(statement, updatable, baseTable, skip, early);
        }
        cursor = Run_By_Keys(*prepared->plan, tokens, skip, early);
    }
    if (cursor != nullptr) {
        cursor->Start();
        return cursor;
    }
    if (skip > 0) {
        prepared = Prepare(tokens, updatable, skip, ranAsDdl);
    }
    prepared->busy = true;
    Watched_Query::Begin(Watched_Query::Of_Statement(prepared));
    // A change of tables by another program shows when the first step has to compile the statement anew.
    cursor = std::make_unique<Sqlite_Cursor>(shared_from_this(), prepared, prepared->plan);
    cursor->Start();
    if (sqlite3_stmt_status(prepared->handle, SQLITE_STMTSTATUS_REPREPARE, 1) > 0) {
        cursor.reset();
        prepared.reset();
        Forget_Tables();
        return Run(statement, updatable, baseTable, skip, early);
    }
    if (baseTable != nullptr) {
        *baseTable = prepared->plan->baseTable;
    }
    return cursor;
}

void Connection::Run_To_End(Prepared_Statement &statement)
{
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW) {
        code = sqlite3_step(statement.handle);
    }
    if (code == SQLITE_DONE && sqlite3_stmt_status(statement.handle, SQLITE_STMTSTATUS_REPREPARE, 1) > 0) {
        m_catalogVersion = -1;
    }
    if (code == SQLITE_DONE) {
        sqlite3_reset(statement.handle);
        return;
    }
    const Run_Time_Error error = Error();
    sqlite3_reset(statement.handle);
    throw error;
}

/// A write that changes nothing of what the kept order was found by leaves it as it is.
void Connection::Run_Write(Prepared_Statement &statement, const std::vector<Token> &tokens)
{
    const QByteArrayList &changes = statement.plan->changes;
    const bool stays = std::none_of(changes.begin(), changes.end(),
                                    [this](const QByteArray &name) { return m_kept.sql.contains(name); }) &&
                       !m_kept.statement.isEmpty() && m_kept.version == Data_Version();
    Run_Keyed(statement, tokens);
    // Further changes would be those of a trigger.
    if (stays && sqlite3_total_changes64(m_db) == m_kept.version.first + sqlite3_changes64(m_db)) {
        m_kept.version.first = sqlite3_total_changes64(m_db);
    }
}

/// Runs a write, and looks at the keys that it sets where they go beyond ASCII.
void Connection::Run_Keyed(Prepared_Statement &statement, const std::vector<Token> &tokens)
{
    const Plan &plan = *statement.plan;
    const Catalog_Table *table = plan.tables.empty() ? nullptr : m_catalog.Find(plan.tables.front());
    std::optional<Long_Rows> longRows;
    if (table != nullptr && table->Has_Bytes_Last()) {
        longRows.emplace(m_db);
    }
    QStringList keys;
    for (const Token &token : tokens) {
        for (const Parameter &parameter : plan.parameters) {
            const bool set = token.Is_Literal() && parameter.literal == token.literal && !plan.key.isEmpty() &&
                             parameter.column == plan.key;
            if (set && !Text_Fold::Is_Ascii(token.raw)) {
                keys << Sql_Value::To_Text(Bound_Value(token, parameter));
            }
        }
    }
    if (keys.isEmpty()) {
        Run_To_End(statement);
        return;
    }
    Whole([&] {
        Run_To_End(statement);
        for (const QString &key : keys) {
            Check_Key(plan.tables.front(), plan.key, key);
        }
    });
}

void Connection::Check_Key(const QString &table, const QString &column, const QString &key)
{
    Row row;
    Read_Row((u"SELECT count(*) FROM (SELECT 1 FROM "_s + Quoted_Name(table) + u" WHERE "_s + Quoted_Name(column) +
              u" = ?1 COLLATE zelqor_text LIMIT 2)"_s)
                 .toUtf8(),
             {key}, row);
    if (std::get<qint64>(row.at(0)) > 1) {
        throw Engine_Error::Duplicate(table + u'.' + column);
    }
}

void Connection::Whole(const std::function<void()> &body)
{
    Execute("SAVEPOINT zelqor_whole");
    try {
        body();
        Execute("RELEASE zelqor_whole");
    } catch (...) {
        if (sqlite3_get_autocommit(m_db) == 0) {
            sqlite3_exec(m_db, "ROLLBACK TO zelqor_whole; RELEASE zelqor_whole", nullptr, nullptr, nullptr);
        }
        throw;
    }
}

qint64 Connection::Change(const QByteArray &sql, const std::vector<Cell> &values)
{
    const std::shared_ptr<Prepared_Statement> statement = Prepare_Own(sql);
    for (size_t i = 0; i < values.size(); ++i) {
        if (Sqlite_Cells::Bind_Cell(statement->handle, static_cast<int>(i) + 1, values[i]) != SQLITE_OK) {
            Fail();
        }
    }
    Run_To_End(*statement);
    sqlite3_clear_bindings(statement->handle);
    return sqlite3_changes64(m_db);
}

bool Connection::Read_Row(const QByteArray &sql, const std::vector<Cell> &values, Row &row)
{
    const std::shared_ptr<Prepared_Statement> statement = Prepare_Own(sql);
    for (size_t i = 0; i < values.size(); ++i) {
        Sqlite_Cells::Bind_Cell(statement->handle, static_cast<int>(i) + 1, values[i]);
    }
    const int code = sqlite3_step(statement->handle);
    row.clear();
    for (int i = 0; code == SQLITE_ROW && i < sqlite3_column_count(statement->handle); ++i) {
        row.push_back(Sqlite_Cells::Column(statement->handle, i));
    }
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        const Run_Time_Error error = Error();
        sqlite3_reset(statement->handle);
        throw error;
    }
    sqlite3_reset(statement->handle);
    return code == SQLITE_ROW;
}

void Connection::Before_Write(const QString &table)
{
    for (Sqlite_Cursor *cursor : m_cursors) {
        if (cursor->Reads(table)) {
            cursor->Drain();
        }
    }
    if (m_groupDepth == 0 || m_readOnly) {
        return;
    }
    const bool inTransaction = sqlite3_get_autocommit(m_db) == 0;
    if (m_groupBegun && !inTransaction) {
        throw Engine_Error::Failed(u"An earlier failure undid the whole action; nothing more is written."_s);
    }
    if (!inTransaction) {
        Execute("BEGIN IMMEDIATE");
        m_groupBegun = true;
    }
}

void Connection::Drain_All()
{
    for (Sqlite_Cursor *cursor : m_cursors) {
        cursor->Drain();
    }
}

void Connection::End_Group()
{
    if (--m_groupDepth > 0) {
        return;
    }
    const bool begun = std::exchange(m_groupBegun, false);
    if (!begun) {
        return;
    }
    if (sqlite3_get_autocommit(m_db) != 0) {
        throw Engine_Error::Failed(u"The action was undone by an earlier failure; nothing of it was written."_s);
    }
    try {
        Execute("COMMIT");
    } catch (...) {
        if (sqlite3_get_autocommit(m_db) == 0) {
            sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
        }
        Forget_Tables(); // tables changed in the group are as before
        throw;
    }
}
