// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/recordset.h"

#include "platform/database/connection_pool.h"
#include "platform/database/database.h"
#include "platform/database/dates.h"
#include "platform/database/engine_error.h"
#include "platform/database/odbc_source.h"
#include "platform/database/recordset_state.h"

using namespace Qt::StringLiterals;

bool Recordset::State::Fetch(qint64 index)
{
    while (!complete && static_cast<qint64>(rows.size()) <= index) {
        Row row;
        if (!source->Next(row)) {
            complete = true;
            break;
        }
        Kept_Row kept;
        if (writable) {
            kept.rowid = std::get<qint64>(row.back());
            row.pop_back();
        }
        kept.cells = std::move(row);
        rows.push_back(std::move(kept));
    }
    return static_cast<qint64>(rows.size()) > index;
}

void Recordset::State::Check_Open() const
{
    if (!open) {
        throw Engine_Error::Closed();
    }
}

const Row &Recordset::State::Current() const
{
    if (at < 0 || at >= static_cast<qint64>(rows.size()) || rows[static_cast<size_t>(at)].deleted) {
        throw Engine_Error::No_Current_Row();
    }
    return rows[static_cast<size_t>(at)].cells;
}

const Cell &Recordset::State::Value(int column) const
{
    static const Cell null;
    const auto found = pending.find(column);
    if (found != pending.end()) {
        return found->second;
    }
    return isNew ? null : Current().at(static_cast<size_t>(column));
}

/// Goes to the next row in a direction, past deleted ones.
void Recordset::State::Step(int direction)
{
    do {
        at += direction;
    } while (at >= 0 && Fetch(at) && rows[static_cast<size_t>(at)].deleted);
    if (at < 0) {
        at = -1;
    }
    if (forwardOnly && direction > 0 && at > 0 && Fetch(at)) {
        rows[static_cast<size_t>(at) - 1].cells.clear(); // it cannot be gone back to
    }
}

void Recordset::State::After_Move()
{
    chunkAt.clear();
}

Recordset::Recordset() : m(std::make_unique<State>()) {}
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset &&) noexcept = default;
Recordset &Recordset::operator=(Recordset &&) noexcept = default;

void Recordset::Open(const QString &statement, const QString &connectionString)
{
    if (m->open) {
        Close();
    }
    auto state = std::make_unique<State>();
    const Connection_Pool::Target target = Connection_Pool::Parse(connectionString);
    const bool updatable = LockType != Lock_Type::Read_Only;
    std::shared_ptr<Server_Connection> server;
    if (target.file.isEmpty() && (server = Connection_Pool::Get_Server(target.dataLink)) != nullptr) {
        state->source = server->Run(statement, updatable, &state->baseTable, updatable ? 0 : SkipRows, {});
        state->connection = server;
    } else if (target.file.isEmpty()) {
        state->source = Odbc_Source::Run(statement, target.dataLink);
        for (qint64 left = SkipRows; left > 0 && state->source != nullptr && state->source->Skip();) {
            --left;
        }
    } else {
        const std::shared_ptr<Connection> file = Connection_Pool::Get(target.file);
        state->connection = file;
        Early_Rows early;
        if (Found_So_Far) {
            early = [this, &state](std::unique_ptr<Row_Source> rows) {
                auto found = std::make_unique<State>();
                found->connection = state->connection;
                found->source = std::move(rows);
                Recordset recordset;
                recordset.Show(std::move(found));
                Found_So_Far(recordset);
            };
        }
        state->source = file->Run(statement, updatable, &state->baseTable, updatable ? 0 : SkipRows, early);
    }
    if (state->source != nullptr) {
        Show(std::move(state));
    }
}

/// Stands on the first row of a source.
void Recordset::Show(std::unique_ptr<State> state)
{
    state->open = true;
    state->outputs = state->source->Outputs();
    state->writable = !state->baseTable.isEmpty();
    state->batch = LockType == Lock_Type::Batch_Optimistic;
    state->forwardOnly = CursorType == Cursor_Type::Forward_Only && CursorLocation == Cursor_Location::Server &&
                         LockType == Lock_Type::Read_Only;
    state->at = 0;
    state->Fetch(0);
    m = std::move(state);
}

bool Recordset::Is_Open() const
{
    return m->open;
}

void Recordset::Close()
{
    m = std::make_unique<State>();
}

bool Recordset::Bof() const
{
    m->Check_Open();
    return m->at < 0 || (m->rows.empty() && m->complete);
}

bool Recordset::Eof() const
{
    m->Check_Open();
    return !m->Fetch(m->at) ? m->at >= 0 : false;
}

void Recordset::MoveFirst()
{
    m->Check_Open();
    m->Leave_Row();
    if (m->forwardOnly && m->at > 0) {
        throw Engine_Error::Failed(u"A forward-only recordset cannot go back."_s);
    }
    m->at = -1;
    m->Step(1);
    m->After_Move();
}

void Recordset::MoveNext()
{
    m->Check_Open();
    m->Leave_Row();
    if (Eof()) {
        throw Engine_Error::No_Current_Row();
    }
    m->Step(1);
    m->After_Move();
}

void Recordset::MovePrevious()
{
    m->Check_Open();
    m->Leave_Row();
    if (m->forwardOnly) {
        throw Engine_Error::Failed(u"A forward-only recordset cannot go back."_s);
    }
    if (m->at < 0) {
        throw Engine_Error::No_Current_Row();
    }
    m->Step(-1);
    m->After_Move();
}

void Recordset::MoveLast()
{
    m->Check_Open();
    m->Leave_Row();
    qint64 last = m->at;
    while (m->Fetch(last + 1)) {
        ++last;
    }
    m->at = static_cast<qint64>(m->rows.size());
    m->Step(-1);
    m->After_Move();
}

void Recordset::Move(qint64 rows)
{
    m->Check_Open();
    m->Leave_Row();
    if (rows < 0 && m->forwardOnly) {
        throw Engine_Error::Failed(u"A forward-only recordset cannot go back."_s);
    }
    for (; rows > 0 && !Eof(); --rows) {
        m->Step(1);
    }
    for (; rows < 0 && m->at >= 0; ++rows) {
        m->Step(-1);
    }
    m->After_Move();
}

qint64 Recordset::RecordCount()
{
    m->Check_Open();
    if (CursorLocation == Cursor_Location::Server &&
        (CursorType == Cursor_Type::Forward_Only || CursorType == Cursor_Type::Dynamic)) {
        return -1;
    }
    while (m->Fetch(static_cast<qint64>(m->rows.size()))) {
    }
    qint64 count = 0;
    for (const State::Kept_Row &row : m->rows) {
        count += row.deleted ? 0 : 1;
    }
    return count;
}

qint64 Recordset::Count_And_End()
{
    m->Check_Open();
    auto count = static_cast<qint64>(m->rows.size());
    while (!m->complete && m->source->Skip()) {
        ++count;
    }
    m->complete = true;
    m->at = static_cast<qint64>(m->rows.size());
    return count;
}

int Recordset::Field_Count() const
{
    return static_cast<int>(m->outputs.size());
}

Field Recordset::operator[](const QString &name)
{
    m->Check_Open();
    for (size_t i = 0; i < m->outputs.size(); ++i) {
        if (m->outputs[i].name.compare(name, Qt::CaseInsensitive) == 0) {
            return {*this, static_cast<int>(i)};
        }
    }
    throw Engine_Error::Unknown_Field(name);
}

Field Recordset::operator[](int index)
{
    m->Check_Open();
    if (index < 0 || index >= Field_Count()) {
        throw Engine_Error::Unknown_Field(QString::number(index));
    }
    return {*this, index};
}

void Run_Statement(const QString &statement, const QString &connectionString)
{
    Recordset recordset;
    recordset.Open(statement, connectionString);
}
