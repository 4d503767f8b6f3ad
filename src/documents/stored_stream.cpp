// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/stored_stream.h"

#include <QFile>
#include <QFileInfo>
#include <cmath>

namespace
{
constexpr qint64 Block = 10000;
const QByteArray Tail_Mark = QByteArrayLiteral("{}{}");

QFile &Open_Or_Throw(QFile &file, QIODevice::OpenMode mode)
{
    if (!file.exists())
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("File not found: ") + file.fileName(),
                             Failure::File_Not_Found);
    if (!file.open(mode))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Path/File access error: ") + file.fileName(),
                             Failure::Path_Access);
    return file;
}

/// Reads up to `size` bytes; what the file does not give stays zero.
QByteArray Read_Block(QFile &file, qint64 size)
{
    QByteArray block(size, '\0');
    if (file.read(block.data(), size) < 0)
        throw Run_Time_Error(Error_Number::Path_Access, file.errorString(), Failure::Path_Access);
    return block;
}

QByteArray Piece(QFile &file, qint64 offset, qint64 size)
{
    return offset >= 0 && size > 0 && file.seek(offset) ? file.read(size) : QByteArray();
}
} // namespace

void Copy_File_To_Blob(const QString &path, Field column)
{
    QFile file(path);
    Open_Or_Throw(file, QIODevice::ReadOnly);
    const qint64 length = file.size();
    if (length == 0)
        return;
    // Rounds to the nearest, ties to the even number, as the format was defined.
    const auto fullBlocks = static_cast<qint64>(std::nearbyint(static_cast<double>(length) / Block));
    const qint64 rest = length % Block;
    for (qint64 i = 0; i < fullBlocks; ++i)
        column.AppendChunk(Read_Block(file, Block + 1));
    if (rest > 0)
        column.AppendChunk(Read_Block(file, rest + 1));
}

void Write_Pass_Tail(const QString &path, const QString &scrambled)
{
    QFile file(path);
    Open_Or_Throw(file, QIODevice::ReadWrite);
    if (file.size() == 0)
        return;
    const QByteArray digits = QByteArray::number(scrambled.size()).rightJustified(2, '0');
    const QByteArray tail = scrambled.toLatin1() + digits + Tail_Mark;
    if (!file.seek(file.size() - 1) || file.write(tail) != tail.size() || !file.flush())
        throw Run_Time_Error(Error_Number::Path_Access, file.errorString(), Failure::Path_Access);
}

QString Read_Pass_Tail(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const qint64 size = file.size();
    if (Piece(file, size - 5, 4) != Tail_Mark)
        return {};
    const qint64 length = Piece(file, size - 7, 2).trimmed().toLongLong();
    // Blanks stay: a scrambled password may hold them, and even be one.
    return QString::fromLatin1(Piece(file, size - 7 - length, length));
}

void Cut_File_Tail(const QString &path, qint64 count)
{
    QFile file(path);
    Open_Or_Throw(file, QIODevice::ReadWrite);
    file.resize(qMax(file.size() - count, Q_INT64_C(0)));
}
