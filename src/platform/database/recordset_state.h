// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/recordset.h"
#include "platform/database/row_store.h"

#include <map>

/// What a recordset holds while it is open.
struct Recordset::State {
    struct Kept_Row {
        Row cells;
        qint64 rowid = -1; ///< -1 while the row is only queued
        bool deleted = false;
    };
    struct Queued_Change {
        bool isNew = false;
        size_t row = 0; ///< place of the row among the kept ones
        Pending_Values values;
    };

    bool open = false;
    bool forwardOnly = false;
    bool writable = false;
    bool batch = false;
    std::shared_ptr<Row_Store> connection; // null for a data source whose statements run as they stand
    std::unique_ptr<Row_Source> source;
    std::vector<Output> outputs;
    QString baseTable;

    std::vector<Kept_Row> rows;
    bool complete = false; ///< every row of the source is among the kept ones
    qint64 at = -1;        ///< place of the current row; -1 before the first, rows.size() behind the last
    bool isNew = false;    ///< AddNew was called
    Pending_Values pending;
    std::vector<Queued_Change> queue;
    std::map<int, qint64> chunkAt; ///< how far GetChunk has read, by column

    /// Reads on until the row at `index` is kept; false when the source ends before.
    bool Fetch(qint64 index);
    void Check_Open() const;
    void Check_Writable() const;
    [[nodiscard]] const Row &Current() const;
    [[nodiscard]] const Cell &Value(int column) const;
    void Step(int direction);
    void After_Move();
    /// What a move does with a pending row: writes it, or queues it in batch mode.
    void Leave_Row();

    void Set(int column, const QVariant &value);
    void Write_Pending();
    void Queue_Pending();
    void Write_Queue();
    void Discard();
    void Write_Change(const Queued_Change &change);
};
