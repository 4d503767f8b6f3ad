// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/catalog.h"
#include "platform/database/file_hold.h"
#include "platform/database/row_store.h"
#include "platform/database/statement_cache.h"
#include "platform/errors/run_time_error.h"

#include <functional>
#include <memory>
#include <optional>

struct Token;
struct sqlite3;
struct sqlite3_stmt;
class Index_Worker;
class Sqlite_Cursor;

/// A row of a query by row numbers, and which parts of the query it comes from.
struct Ordered_Key {
    qint64 row = 0;
    bool first = false; ///< the first part, which alone may be bounded
    bool other = false;
};

/// The order of the last long list.
struct Kept_Order {
    QString statement;
    std::pair<qint64, qint64> version; ///< of the file for which it holds
    std::vector<Ordered_Key> keys;
    QByteArray sql; ///< what found it
};

/// One open database file with its tables, compiled statements and the state of its group of statements.
class Connection : public Row_Store, public std::enable_shared_from_this<Connection>
{
public:
    /// Opens an existing file and leaves it as it is. @throws Run_Time_Error when it is missing, no database, or cannot
    /// be opened.
    static std::shared_ptr<Connection> Open(const QString &nativePath);
    /// A connection that makes indexes while others read: what it has not committed lies in memory, and a sort in a
    /// file.
    static std::shared_ptr<Connection> Open_For_Indexes(const QString &nativePath);
    /// A connection for reading beside another one's, for a thread of its own. It runs plans and knows no tables.
    static std::shared_ptr<Connection> Open_Beside(const Connection &other);
    explicit Connection(const QString &path);
    ~Connection() override;

    /// Gives the file what the engine keeps in its own ones: a rollback journal in place of a log, and its indexes.
    /// @throws Run_Time_Error when another program has the log.
    void Settle();
    std::unique_ptr<Row_Source> Run(const QString &statement, bool updatable, QString *baseTable, qint64 skip = 0,
                                    const Early_Rows &early = {}) override;
    qint64 Write_Row(const Row_Change &change, const std::vector<Output> &outputs, Row &fresh) override;
    void Remove_Row(const QString &table, qint64 row) override;
    /// Runs an SQLite statement of the engine's own with values for its parameters; the number of changed rows.
    qint64 Change(const QByteArray &sql, const std::vector<Cell> &values);
    /// The first row of an SQLite query of the engine's own; false when it has none.
    bool Read_Row(const QByteArray &sql, const std::vector<Cell> &values, Row &row);
    /// Compiles a statement's plan and binds the literals of its tokens.
    void Make_Ready(Prepared_Statement &statement, const std::vector<Token> &tokens);
    /// Runs a query to its end.
    void For_Each_Row(Prepared_Statement &statement, const std::function<void(sqlite3_stmt *)> &body);
    /// Runs a query of one column to its end, for the row numbers that it gives.
    void Collect_Rows(Prepared_Statement &statement, std::vector<qint64> &rows);
    void Whole(const std::function<void()> &body) override;
    /// To be called behind a write of a text key, before it takes hold. The file's own index tells keys apart whose
    /// letters outside ASCII differ in case only; the engine does not. @throws Run_Time_Error, Failure::Duplicate.
    void Check_Key(const QString &table, const QString &column, const QString &key);
    /// Runs SQLite text without parameters, several statements if need be.
    void Execute(const QByteArray &sql);
    [[nodiscard]] qint64 Last_Rowid() const;
    /// Changes when rows do, by this connection (first) or another one.
    [[nodiscard]] std::pair<qint64, qint64> Data_Version();
    /// There is something that only this connection sees.
    [[nodiscard]] bool Has_Written() const;
    [[nodiscard]] Kept_Order &Kept() { return m_kept; }

    /// The tables as they are now.
    const Catalog &Tables();
    /// To be called when tables have changed: compiled statements and the catalog are made anew.
    void Forget_Tables();
    [[nodiscard]] sqlite3 *Handle() const { return m_db; }
    [[nodiscard]] const QString &Path() const { return m_path; }
    [[nodiscard]] bool Is_Read_Only() const { return m_readOnly; }
    /// The file under the path is still the one that was opened.
    [[nodiscard]] bool Is_Current() const { return m_hold.Is_Current(); }

    void Begin_Group() override { ++m_groupDepth; }
    void End_Group() override;
    /// Ends what goes on unseen, so that the file can be copied or replaced.
    void Stop_Work();
    [[nodiscard]] bool In_Group() const override { return m_groupDepth > 0; }
    void Before_Write(const QString &table) override;
    /// Reads the rest of every open query, so that nothing stands in the way of a change of tables.
    void Drain_All();

    /// The error of the call that failed last.
    [[nodiscard]] Run_Time_Error Error();
    [[noreturn]] void Fail();

private:
    friend class Sqlite_Cursor;

    void Configure();
    void Look_For_Missing_Indexes();
    /// @param waitForLock  SQLite's busy handler, null to wait for nobody
    void Open_File(int (*waitForLock)(void *, int));
    std::shared_ptr<Prepared_Statement> Prepare(const std::vector<Token> &tokens, bool updatable, qint64 skip,
                                                bool &ranAsDdl);
    std::unique_ptr<Sqlite_Cursor> Run_By_Keys(const Plan &plan, const std::vector<Token> &tokens, qint64 skip,
                                               const Early_Rows &early);
    std::unique_ptr<Sqlite_Cursor> Rows_By_Number(const Plan &plan, std::vector<qint64> rows);
    std::shared_ptr<Prepared_Statement> Prepare_Own(const QByteArray &sql);
    std::shared_ptr<Prepared_Statement> Cached(const QString &key);
    void Compile(Prepared_Statement &statement);
    void Bind(Prepared_Statement &statement, const std::vector<Token> &tokens);
    void Run_To_End(Prepared_Statement &statement);
    void Run_Write(Prepared_Statement &statement, const std::vector<Token> &tokens);
    qint64 Store_Row(const Row_Change &change, const std::vector<Output> &outputs);
    void Run_Keyed(Prepared_Statement &statement, const std::vector<Token> &tokens);
    [[nodiscard]] std::shared_ptr<Prepared_Statement> Prepare_As_Is(const std::vector<Token> &tokens, bool updatable,
                                                                    qint64 skip, bool &ranAsDdl);
    /// What the plan takes for granted of its columns is so; else the catalog is told.
    bool Holds(const Plan &plan);
    bool Is_Known_Ascii(const Column_Name &column);
    bool Is_Ascii(const Column_Name &column);
    qint64 Size_Of(const QString &table);
    bool Tables_Are_Stale();

    QString m_path;
    File_Hold m_hold;
    sqlite3 *m_db = nullptr;
    std::optional<Run_Time_Error> m_functionError;
    Catalog m_catalog;
    qint64 m_catalogVersion = -1; ///< -1 when the catalog is to be read
    bool m_readOnly = false;
    Statement_Cache m_statements;
    std::vector<Sqlite_Cursor *> m_cursors;
    Kept_Order m_kept;
    QHash<QString, std::pair<qint64, qint64>> m_asciiAt; ///< by column: the version of the file in which it was ASCII
    std::unique_ptr<Index_Worker> m_indexWorker;         ///< null where no index is missing
    int m_groupDepth = 0;
    bool m_groupBegun = false;
};
