// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

/// A binary column of one row, written and read piece by piece: however long it is, only a block of it is in memory.
namespace Database_Engine
{
struct Blob_Place {
    QString connection; ///< of a file
    QString table;
    QString column;
    qint64 row = 0; ///< the row's automatic number
};

/// Bytes that one value can have at most.
qint64 Longest_Blob(const QString &connection);

/// Replaces the value by `size` bytes, which `source` gives in their order; it is asked for a block and answers how
/// much it gave. To be called inside One_Action.
/// @throws Run_Time_Error Failure::Too_Large before anything is written, path access when the source ends early or
/// answers less than 0, what it throws itself, and that of the database. The value, and the size of the file, are as
/// they were then.
void Write_Blob(const Blob_Place &place, qint64 size, const std::function<qint64(char *block, qint64 size)> &source);

/// Gives the value to `sink` block by block; false ends the reading. A Null is no bytes.
/// @throws Run_Time_Error of the database.
void Read_Blob(const Blob_Place &place, const std::function<bool(const char *block, qint64 size)> &sink);
/// Bytes of the value, which is not read for it. @throws Run_Time_Error of the database.
qint64 Blob_Size(const Blob_Place &place);
} // namespace Database_Engine
