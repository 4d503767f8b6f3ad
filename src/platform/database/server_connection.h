// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/catalog.h"
#include "platform/database/odbc_link.h"
#include "platform/database/row_store.h"

#include <QElapsedTimer>
#include <QHash>
#include <QStringList>

struct Token;

/// The answer to a statement that was asked ahead.
struct Answer_Ahead {
    std::shared_ptr<const Plan> plan;
    std::vector<Row> rows;
};

/// A database on a server. Each statement goes there as one text with its values in it, and comes back in one round
/// trip; within a group it stands between marks of its own, so that one which fails takes nothing with it.
///
/// The groups of all programs on one database run one after the other: the first statement of a group waits for its
/// turn. So what a group reads is true until it ends, and a number that it finds free is free.
class Server_Connection : public Row_Store, public std::enable_shared_from_this<Server_Connection>
{
public:
    /// @throws Run_Time_Error.
    static std::shared_ptr<Server_Connection> Open(const Odbc_Text::Parts &parts);
    /// Null when the other side is no server of the kind that the engine speaks with.
    static std::shared_ptr<Server_Connection> Open_If_Postgres(const Odbc_Text::Parts &parts);
    explicit Server_Connection(Odbc_Text::Parts parts) : m_parts(std::move(parts)) {}

    std::unique_ptr<Row_Source> Run(const QString &statement, bool updatable, QString *baseTable, qint64 skip,
                                    const Early_Rows &early) override;
    qint64 Write_Row(const Row_Change &change, const std::vector<Output> &outputs, Row &fresh) override;
    void Remove_Row(const QString &table, qint64 row) override;
    void Whole(const std::function<void()> &body) override;
    void Before_Write(const QString &table) override;
    void Begin_Group() override { ++m_groupDepth; }
    void End_Group() override;
    [[nodiscard]] bool In_Group() const override { return m_groupDepth > 0; }

    /// Runs a statement of the engine's own in the server's words; it stands where the result is.
    std::unique_ptr<Odbc_Link::Run> Execute(const QString &sql);
    /// The tables as they are now.
    const Catalog &Tables();
    /// To be called when tables have changed.
    void Forget_Tables();
    /// Makes the schema of the engine's own where it is missing or old. @throws Run_Time_Error when it may not.
    void Prepare_Database();
    [[nodiscard]] bool Is_Read_Only() const { return m_facts.readOnly; }
    /// See Database_Server::Ask_Ahead.
    void Ask_Ahead(const QStringList &statements);
    /// See Database_Server::Changed_By_Others.
    QStringList Changed_By_Others();
    /// Ends a connection that is of no more use; the next statement makes a new one.
    void Drop() { m_link.reset(); }

private:
    struct Facts {
        QString schema;  ///< where the tables are
        int version = 0; ///< of the functions, 0 for none
        bool readOnly = false;
    };

    void Connect();
    void Learn_Facts();
    void Load_Tables();
    void Read_Tables(Odbc_Link::Run &run);
    /// @param marked  a failure undoes this statement alone
    std::unique_ptr<Odbc_Link::Run> Execute_In_Group(const QString &sql, bool marked);
    std::unique_ptr<Odbc_Link::Run> Execute_Alone(const QString &sql);
    void Undo_Statement();
    std::shared_ptr<const Plan> Plan_Of(const std::vector<Token> &tokens, bool updatable, bool &ranAsDdl);
    std::shared_ptr<const Plan> Translated(const std::vector<Token> &tokens, bool updatable, bool &ranAsDdl);
    static QString Text_Of(const Plan &plan, const std::vector<Token> &tokens, qint64 skip);
    /// The kept answer to a statement, null when there is none.
    std::unique_ptr<Row_Source> Answered_Ahead(const QString &statement);
    void Forget_Ahead(const QString &table);
    std::unique_ptr<Row_Source> Run_Once(const std::vector<Token> &tokens, bool updatable, QString *baseTable,
                                         qint64 skip);

    const Odbc_Text::Parts m_parts;
    std::shared_ptr<Odbc_Link> m_link; ///< null until it is needed, and after a loss
    Facts m_facts;
    Catalog m_catalog;
    bool m_catalogIsKnown = false;
    QHash<QString, std::shared_ptr<const Plan>> m_plans; ///< by the shape of the statement
    QString m_seen;                                      ///< the server's snapshot of what Changed_By_Others has told
    QHash<QString, std::shared_ptr<const Answer_Ahead>> m_ahead; ///< by statement
    QElapsedTimer m_sinceAhead;
    int m_groupDepth = 0;
    bool m_groupBegun = false;
    bool m_groupBroken = false; ///< its transaction went with the connection
};
