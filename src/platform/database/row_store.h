// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/row_source.h"

#include <functional>
#include <map>
#include <memory>

/// Values that wait to be written: column number in the result, value in the type of the column.
using Pending_Values = std::map<int, Cell>;

/// Takes the first rows of a query that goes on looking for more.
using Early_Rows = std::function<void(std::unique_ptr<Row_Source>)>;

/// A row as it is to be written.
struct Row_Change {
    QString table;
    qint64 row = -1; ///< its number, -1 for a new one
    const Pending_Values &values;
};

/// Where the statements of the dialect run and rows are written: a database file or a server. Rows of a table have
/// numbers, which stay while the row is there.
class Row_Store
{
public:
    Row_Store() = default;
    virtual ~Row_Store() = default;
    Row_Store(const Row_Store &) = delete;
    Row_Store &operator=(const Row_Store &) = delete;

    /// Runs a statement of the dialect; null when it has no rows. @param skip  rows left out in front
    /// @param baseTable  is told the table whose rows an updatable query shows; each row then ends with its number
    virtual std::unique_ptr<Row_Source> Run(const QString &statement, bool updatable, QString *baseTable, qint64 skip,
                                            const Early_Rows &early) = 0;
    /// Writes a row; its number. @param outputs  the columns that the values belong to, and which `fresh` is to have
    /// as they lie in the table then
    virtual qint64 Write_Row(const Row_Change &change, const std::vector<Output> &outputs, Row &fresh) = 0;
    virtual void Remove_Row(const QString &table, qint64 row) = 0;
    /// Runs what is to take hold as a whole or not at all, within a transaction or without one.
    virtual void Whole(const std::function<void()> &body) = 0;
    /// To be called before anything is written: starts the transaction of a group.
    virtual void Before_Write(const QString &table) = 0;

    virtual void Begin_Group() = 0;
    /// @throws Run_Time_Error when the outermost group cannot be committed; then nothing of it was written.
    virtual void End_Group() = 0;
    [[nodiscard]] virtual bool In_Group() const = 0;
};
