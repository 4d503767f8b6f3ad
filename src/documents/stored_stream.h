// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/recordset.h"

#include <QString>

/// The layout of a stored stream: a complete LZMA-alone file, for a document with a password the tail over the file's
/// last byte, then zero bytes. The tail is the scrambled password, its length as two digits, and "{}{}".

/// Appends a file to a binary column in blocks of 10001 bytes, the last ones filled with zero bytes: the column holds
/// the file and at least one zero byte. An empty file appends nothing. @throws Run_Time_Error 53 or 75.
void Copy_File_To_Blob(const QString &path, Field column);

/// Writes the tail for a password over the end of a coder's output file; an empty file stays empty.
void Write_Pass_Tail(const QString &path, const QString &scrambled);
/// The scrambled password at the end of a staged column, "" when there is none at exactly that place.
QString Read_Pass_Tail(const QString &path);
/// The scrambled password of a column that shows none because more than one zero byte stands behind its tail; "" when
/// there is none, or one that Read_Pass_Tail finds.
QString Read_Hidden_Tail(const QString &path);
/// Whether the tail at the end of a file of that size will be found in its column.
bool Is_Tail_Found(qint64 size);
/// The size that a staged stream says it decodes to; of one that does not say it, the most that it can.
qint64 Decoded_Size(const QString &path);
/// The same of a stream at hand.
qint64 Decoded_Size(const QByteArray &stream);
/// Shortens a file by `count` bytes.
void Cut_File_Tail(const QString &path, qint64 count);

/// Bytes that the tail takes behind a scrambled password: two digits and the mark.
inline constexpr qint64 Tail_Overhead = 6;
