// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/database.h"
#include "platform/database/engine_error.h"
#include "platform/database/recordset_state.h"

#include <algorithm>

void Recordset::State::Check_Writable() const
{
    if (!writable) {
        throw Engine_Error::Read_Only_Recordset();
    }
}

void Recordset::State::Discard()
{
    pending.clear();
    isNew = false;
    chunkAt.clear();
}

void Recordset::State::Leave_Row()
{
    if (!isNew && pending.empty()) {
        return;
    }
    if (batch) {
        Queue_Pending();
    } else {
        Write_Pending();
    }
}

void Recordset::State::Write_Change(const Queued_Change &change)
{
    Kept_Row &row = rows.at(change.row);
    Row fresh;
    row.rowid = connection->Write_Row({baseTable, change.isNew ? -1 : row.rowid, change.values}, outputs, fresh);
    for (size_t i = 0; i < fresh.size(); ++i) {
        if (!outputs[i].column.isEmpty()) {
            row.cells[i] = fresh[i];
        }
    }
}

void Recordset::State::Queue_Pending()
{
    Queued_Change change;
    change.isNew = isNew;
    change.values = std::move(pending);
    if (isNew) {
        while (Fetch(static_cast<qint64>(rows.size()))) {
        }
        Kept_Row row;
        row.cells.resize(outputs.size());
        rows.push_back(std::move(row));
        at = static_cast<qint64>(rows.size()) - 1;
    }
    change.row = static_cast<size_t>(at);
    for (const auto &[column, value] : change.values) {
        rows[change.row].cells[static_cast<size_t>(column)] = value;
    }
    Discard();
    queue.push_back(std::move(change));
}

void Recordset::State::Write_Pending()
{
    if (!isNew) {
        static_cast<void>(Current());
        Write_Change({false, static_cast<size_t>(at), pending});
        Discard();
        return;
    }
    while (Fetch(static_cast<qint64>(rows.size()))) {
    }
    Kept_Row row;
    row.cells.resize(outputs.size());
    rows.push_back(std::move(row));
    try {
        Write_Change({true, rows.size() - 1, pending});
    } catch (...) {
        rows.pop_back();
        throw;
    }
    at = static_cast<qint64>(rows.size()) - 1;
    Discard();
}

void Recordset::State::Write_Queue()
{
    if (queue.empty()) {
        return;
    }
    connection->Before_Write(baseTable);
    connection->Whole([this] {
        for (const Queued_Change &change : queue) {
            Write_Change(change);
        }
    });
    queue.clear();
}

void Recordset::AddNew()
{
    m->Check_Open();
    m->Check_Writable();
    m->Leave_Row();
    m->Discard();
    m->isNew = true;
}

void Recordset::Update()
{
    m->Check_Open();
    m->Check_Writable();
    m->Leave_Row();
}

void Recordset::UpdateBatch(int affected)
{
    Q_UNUSED(affected)
    m->Check_Open();
    m->Check_Writable();
    if (m->isNew || !m->pending.empty()) {
        m->Queue_Pending();
    }
    m->Write_Queue();
}

void Recordset::CancelUpdate()
{
    m->Check_Open();
    m->Discard();
}

void Recordset::Delete()
{
    m->Check_Open();
    m->Check_Writable();
    m->Discard();
    static_cast<void>(m->Current());
    State::Kept_Row &row = m->rows[static_cast<size_t>(m->at)];
    if (row.rowid < 0) { // only queued
        std::erase_if(m->queue, [this](const auto &change) { return change.row == static_cast<size_t>(m->at); });
    } else {
        m->connection->Remove_Row(m->baseTable, row.rowid);
    }
    row.deleted = true;
}
