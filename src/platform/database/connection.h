// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/catalog.h"
#include "platform/database/file_hold.h"
#include "platform/database/row_source.h"
#include "platform/errors/run_time_error.h"

#include <list>
#include <memory>
#include <optional>

struct Token;
struct sqlite3;
struct sqlite3_stmt;
class Sqlite_Cursor;

/// A plan with its compiled statement.
struct Prepared_Statement {
    explicit Prepared_Statement(std::shared_ptr<const Plan> itsPlan) : plan(std::move(itsPlan)) {}
    ~Prepared_Statement();
    Prepared_Statement(const Prepared_Statement &) = delete;
    Prepared_Statement &operator=(const Prepared_Statement &) = delete;

    std::shared_ptr<const Plan> plan;
    sqlite3_stmt *handle = nullptr;
    bool busy = false;
};

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
class Connection : public std::enable_shared_from_this<Connection>
{
public:
    /// Opens an existing file. @throws Run_Time_Error when it is missing, no database, or cannot be opened.
    static std::shared_ptr<Connection> Open(const QString &nativePath);
    /// A connection for reading beside another one's, for a thread of its own. It runs plans and knows no tables.
    static std::shared_ptr<Connection> Open_Beside(const Connection &other);
    explicit Connection(const QString &path) : m_path(path), m_hold(path) {}
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Runs a statement of the dialect; null when it has no rows. @param skip  rows left out in front
    std::unique_ptr<Row_Source> Run(const QString &statement, bool updatable, QString *baseTable, qint64 skip = 0);
    /// Runs an SQLite statement of the engine's own with values for its parameters; the number of changed rows.
    qint64 Change(const QByteArray &sql, const std::vector<Cell> &values);
    /// The first row of an SQLite query of the engine's own; false when it has none.
    bool Read_Row(const QByteArray &sql, const std::vector<Cell> &values, Row &row);
    /// Compiles a statement's plan and binds the literals of its tokens.
    void Make_Ready(Prepared_Statement &statement, const std::vector<Token> &tokens);
    /// Runs a query of one column to its end, for the row numbers that it gives.
    void Collect_Rows(Prepared_Statement &statement, std::vector<qint64> &rows);
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

    void Begin_Group() { ++m_groupDepth; }
    /// @throws Run_Time_Error when the outermost group cannot be committed; then nothing of it was written.
    void End_Group();
    [[nodiscard]] bool In_Group() const { return m_groupDepth > 0; }
    /// To be called before anything is written: starts the transaction of a group.
    void Before_Write(const QString &table);
    /// Reads the rest of every open query, so that nothing stands in the way of a change of tables.
    void Drain_All();

    /// The error of the call that failed last.
    [[nodiscard]] Run_Time_Error Error();
    [[noreturn]] void Fail();

private:
    friend class Sqlite_Cursor;
    using Cache = std::list<std::pair<QString, std::shared_ptr<Prepared_Statement>>>;

    void Configure();
    /// @param waitForLock  SQLite's busy handler, null to wait for nobody
    void Open_File(int (*waitForLock)(void *, int));
    std::shared_ptr<Prepared_Statement> Prepare(const std::vector<Token> &tokens, bool updatable, qint64 skip,
                                                bool &ranAsDdl);
    std::unique_ptr<Sqlite_Cursor> Run_By_Keys(const Plan &plan, const std::vector<Token> &tokens, qint64 skip);
    std::shared_ptr<Prepared_Statement> Prepare_Own(const QByteArray &sql);
    std::shared_ptr<Prepared_Statement> Cached(const QString &key);
    void Keep(const QString &key, const std::shared_ptr<Prepared_Statement> &statement);
    void Compile(Prepared_Statement &statement);
    void Bind(Prepared_Statement &statement, const std::vector<Token> &tokens);
    void Run_To_End(Prepared_Statement &statement);
    void Run_Write(Prepared_Statement &statement);
    bool Tables_Are_Stale();

    QString m_path;
    File_Hold m_hold;
    sqlite3 *m_db = nullptr;
    std::optional<Run_Time_Error> m_functionError;
    Catalog m_catalog;
    qint64 m_catalogVersion = -1; ///< -1 when the catalog is to be read
    bool m_readOnly = false;
    Cache m_cache; // the most recently used first
    QHash<QString, Cache::iterator> m_cached;
    std::vector<Sqlite_Cursor *> m_cursors;
    Kept_Order m_kept;
    int m_groupDepth = 0;
    bool m_groupBegun = false;
};
