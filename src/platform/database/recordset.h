// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/errors/run_time_error.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>

enum class Cursor_Location { Server = 2, Client = 3 };
enum class Cursor_Type { Forward_Only = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class Lock_Type { Read_Only = 1, Pessimistic = 2, Optimistic = 3, Batch_Optimistic = 4 };

class Recordset;

/// One column of the current row of a recordset; valid as long as the recordset is open.
class Field
{
public:
    /// The value: a null QVariant for Null, QString (text, memo), int (Long, AutoIncrement), double (single and
    /// computed numbers), qlonglong (counts), QDateTime in local time (DateTime), QByteArray (OLEObject).
    [[nodiscard]] QVariant Value() const;
    [[nodiscard]] bool Is_Null() const;
    /// The value as the dialect turns it into text: "" for Null, dates in the short form (see database.h).
    [[nodiscard]] QString Text() const;
    [[nodiscard]] qint64 Number() const;
    [[nodiscard]] QByteArray Bytes() const;
    [[nodiscard]] QString Name() const;
    /// Characters that fit for Text(n) (50 for Text(50)), 4 for Long and single, 8 for DateTime, 2147483647 / 2 for
    /// memo, 2147483647 for OLEObject; computed columns answer 255.
    [[nodiscard]] qint32 Defined_Size() const;

    /// Sets the value in the pending row. @throws Run_Time_Error Db_Field_Value when the text is longer than the
    /// column or cannot be converted, and for a recordset opened read-only.
    void Set(const QVariant &value);
    /// Appends bytes to the pending value of an OLEObject column; the first call after AddNew or Move replaces it.
    void AppendChunk(const QByteArray &bytes);
    /// The next `size` bytes of the stored value; empty at its end.
    QByteArray GetChunk(qint64 size);

private:
    friend class Recordset;
    Field(Recordset &owner, int index) : m_owner(&owner), m_index(index) {}
    Recordset *m_owner;
    int m_index;
};

/// A statement opened on a connection string. One statement is one recordset; it closes when it goes out of scope.
class Recordset
{
public:
    Recordset();
    ~Recordset();
    Recordset(Recordset &&) noexcept;
    Recordset &operator=(Recordset &&) noexcept;

    Cursor_Location CursorLocation = Cursor_Location::Server;
    Cursor_Type CursorType = Cursor_Type::Forward_Only;
    Lock_Type LockType = Lock_Type::Read_Only;
    /// Rows in front that a read-only recordset leaves out: as if it were moved forward by so many after Open and
    /// began there, but the engine doesn't read what is left out.
    qint64 SkipRows = 0;
    /// Called from inside Open while a query looks through the texts of its rows: with the first rows of those found so
    /// far, in the order of the statement. It comes within tenths of a second where there is something to show, and
    /// again when more was found; never for a query that has its rows at once. What it shows is told ahead only: a row
    /// may still come between or before. `found` is read-only, closes with the call, and may throw what Open throws.
    std::function<void(Recordset &found)> Found_So_Far;

    /// Runs one statement in the system's SQL dialect. A statement without rows (insert, update, delete, DDL) runs
    /// to its end and leaves the recordset closed. Text after the first complete statement is a syntax error and
    /// nothing runs.
    /// @throws Run_Time_Error with the provider's number and a clear English text.
    void Open(const QString &statement, const QString &connectionString);
    [[nodiscard]] bool Is_Open() const;
    void Close();

    [[nodiscard]] bool Bof() const;
    [[nodiscard]] bool Eof() const;
    void MoveFirst();
    void MoveNext();
    void MovePrevious();
    void MoveLast();
    /// Moves by `rows` from the current one; past either end stands at BOF or EOF without an error.
    void Move(qint64 rows);
    /// Number of rows; -1 for forward-only and dynamic cursors.
    [[nodiscard]] qint64 RecordCount();
    /// Number of rows of a read-only recordset, those behind the current one being counted without being read; the
    /// recordset then ends there.
    [[nodiscard]] qint64 Count_And_End();

    [[nodiscard]] int Field_Count() const;
    /// Column by name, without regard to case. @throws Run_Time_Error 3265 when there is none.
    Field operator[](const QString &name);
    Field operator[](int index);

    /// Starts a new row; its columns have the values that are set, and the table's defaults else.
    void AddNew();
    /// Writes the pending row (optimistic), or queues it (batch optimistic).
    void Update();
    /// Writes all queued rows and the pending one, all or none. `affected` 3: all rows.
    void UpdateBatch(int affected = 3);
    void CancelUpdate();
    /// Deletes the current row.
    void Delete();

private:
    friend class Field;
    struct State;
    void Show(std::unique_ptr<State> state);
    std::unique_ptr<State> m;
};

/// Runs a statement whose rows, if any, are of no interest: Recordset::Open and Close.
void Run_Statement(const QString &statement, const QString &connectionString);
