// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/database.h"
#include "platform/database/engine_error.h"
#include "platform/database/recordset_state.h"
#include "platform/database/text_fold.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint32 Row_Not_Found_Number = static_cast<qint32>(0x80040E38);
} // namespace

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

Row Recordset::State::Read_Back(qint64 rowid) const
{
    QStringList columns;
    for (const Output &output : outputs) {
        columns.append(output.column.isEmpty() ? u"NULL"_s : Quoted_Name(output.column));
    }
    Row row;
    connection->Read_Row(
        (u"SELECT "_s + columns.join(u", "_s) + u" FROM "_s + Quoted_Name(baseTable) + u" WHERE rowid = ?1"_s).toUtf8(),
        {rowid}, row);
    return row;
}

void Recordset::State::Write_Change(const Queued_Change &change)
{
    connection->Before_Write(baseTable);
    const Catalog_Table *table = connection->Tables().Find(baseTable);
    const Catalog_Column *key = table == nullptr ? nullptr : table->Single_Key();
    const auto set = std::find_if(change.values.begin(), change.values.end(), [&](const auto &value) {
        const auto *text = std::get_if<QString>(&value.second);
        return key != nullptr && outputs[static_cast<size_t>(value.first)].column == key->name && text != nullptr &&
               !Text_Fold::Is_Ascii(*text);
    });
    if (set == change.values.end()) {
        Write_Row(change);
        return;
    }
    connection->Whole([&] {
        Write_Row(change);
        connection->Check_Key(baseTable, key->name, std::get<QString>(set->second));
    });
}

void Recordset::State::Write_Row(const Queued_Change &change)
{
    QStringList names;
    QStringList marks;
    QStringList changes;
    std::vector<Cell> values;
    for (const auto &[column, value] : change.values) {
        const QString name = Quoted_Name(outputs[static_cast<size_t>(column)].column);
        names.append(name);
        marks.append(u"?"_s);
        changes.append(name + u" = ?"_s);
        values.push_back(value);
    }
    Kept_Row &row = rows.at(change.row);
    if (change.isNew) {
        const QString head = u"INSERT INTO "_s + Quoted_Name(baseTable);
        connection->Change((names.isEmpty()
                                ? head + u" DEFAULT VALUES"_s
                                : head + u" ("_s + names.join(u", "_s) + u") VALUES ("_s + marks.join(u", "_s) + u')')
                               .toUtf8(),
                           values);
        row.rowid = connection->Last_Rowid();
    } else if (!names.isEmpty()) {
        values.emplace_back(row.rowid);
        const QString sql =
            u"UPDATE "_s + Quoted_Name(baseTable) + u" SET "_s + changes.join(u", "_s) + u" WHERE rowid = ?"_s;
        if (connection->Change(sql.toUtf8(), values) == 0) {
            throw Run_Time_Error(Row_Not_Found_Number, u"The row to be changed is no longer there."_s,
                                 Failure::No_Current_Row);
        }
    }
    const Row fresh = Read_Back(row.rowid);
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
        m->connection->Before_Write(m->baseTable);
        m->connection->Change((u"DELETE FROM "_s + Quoted_Name(m->baseTable) + u" WHERE rowid = ?1"_s).toUtf8(),
                              {row.rowid});
    }
    row.deleted = true;
}
