// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/connection.h"

#include <deque>

/// A query on a connection. A small result is read at once, which frees the file; a large one is read as it is
/// walked, but its rest is read before its table is changed over the same connection.
class Sqlite_Cursor : public Row_Source
{
public:
    /// @param keys  row numbers; the statement then reads the row of the number that is its parameter
    Sqlite_Cursor(std::shared_ptr<Connection> connection, std::shared_ptr<Prepared_Statement> statement,
                  std::shared_ptr<const Plan> plan, std::optional<std::vector<qint64>> keys = {});
    ~Sqlite_Cursor() override;

    [[nodiscard]] const std::vector<Output> &Outputs() const override { return m_plan->outputs; }
    bool Next(Row &row) override;
    bool Skip() override;
    void Drain();
    [[nodiscard]] bool Reads(const QString &table) const;
    /// Reads the first rows.
    void Start();

private:
    bool Advance();
    bool Advance_By_Key();
    bool Step(Row &row);
    void Finish();

    std::shared_ptr<Connection> m_connection;
    std::shared_ptr<Prepared_Statement> m_statement; // null when read to the end
    std::shared_ptr<const Plan> m_plan;
    std::optional<std::vector<qint64>> m_keys;
    size_t m_nextKey = 0;
    std::deque<Row> m_ahead;
    std::optional<Run_Time_Error> m_error; // of reading ahead; raised when the walk comes there
    qint64 m_bytes = 0;
};
