// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/stored_stream.h"

#include "platform/files/door.h"

#include <QFile>
#include <QtEndian>
#include <cmath>

namespace
{
constexpr qint64 Block = 10000;
const QByteArray Tail_Mark = QByteArrayLiteral("{}{}");

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
/// The scrambled password of a tail that ends at `end`.
QString Tail_Before(QFile &file, qint64 end)
{
    if (Piece(file, end - 4, 4) != Tail_Mark)
        return {};
    const qint64 length = Piece(file, end - Tail_Overhead, 2).trimmed().toLongLong();
    // Blanks stay: a scrambled password may hold them, and even be one.
    return QString::fromLatin1(Piece(file, end - Tail_Overhead - length, length));
}

/// Rounds to the nearest, ties to the even number, as the format was defined.
qint64 Full_Blocks(qint64 length)
{
    return static_cast<qint64>(std::nearbyint(static_cast<double>(length) / Block));
}
} // namespace

void Copy_File_To_Blob(const QString &path, Field column)
{
    QFile file;
    Files::Open_To_Read(file, path);
    const qint64 length = file.size();
    if (length == 0)
        return;
    const qint64 fullBlocks = Full_Blocks(length);
    const qint64 rest = length % Block;
    for (qint64 i = 0; i < fullBlocks; ++i)
        column.AppendChunk(Read_Block(file, Block + 1));
    if (rest > 0)
        column.AppendChunk(Read_Block(file, rest + 1));
}

void Write_Pass_Tail(const QString &path, const QString &scrambled)
{
    QFile file;
    Files::Open_To_Change(file, path);
    if (file.size() == 0)
        return;
    const QByteArray digits = QByteArray::number(scrambled.size()).rightJustified(2, '0');
    const QByteArray tail = scrambled.toLatin1() + digits + Tail_Mark;
    if (!file.seek(file.size() - 1) || file.write(tail) != tail.size())
        throw Run_Time_Error(Error_Number::Path_Access, file.errorString(), Failure::Path_Access);
}

QString Read_Pass_Tail(const QString &path)
{
    if (!Files::Is_File(path))
        return {};
    QFile file;
    Files::Open_To_Read(file, path);
    return Tail_Before(file, file.size() - 1);
}

QString Read_Hidden_Tail(const QString &path)
{
    if (!Files::Is_File(path))
        return {};
    QFile file;
    Files::Open_To_Read(file, path);
    const QByteArray column = file.readAll();
    qsizetype end = column.size();
    while (end > 0 && column.at(end - 1) == '\0')
        --end;
    return end < column.size() - 1 ? Tail_Before(file, end) : QString();
}

bool Is_Tail_Found(qint64 size)
{
    const qint64 rest = size % Block;
    return Full_Blocks(size) * (Block + 1) + (rest > 0 ? rest + 1 : 0) == size + 1;
}

namespace
{
constexpr qsizetype Size_Place = 5, Size_Bytes = 8; // in a stream's head

qint64 Told_Size(const QByteArray &size, qint64 length)
{
    constexpr qint64 Highest_Ratio = 8000; // a match of 273 bytes costs hardly less than a third of a bit
    if (size.size() < Size_Bytes)
        return 0;
    const qint64 told = qFromLittleEndian<qint64>(size.constData());
    return told < 0 ? length * Highest_Ratio : told;
}
} // namespace

qint64 Decoded_Size(const QString &path)
{
    if (!Files::Is_File(path))
        return 0;
    QFile file;
    Files::Open_To_Read(file, path);
    return Told_Size(Piece(file, Size_Place, Size_Bytes), file.size());
}

qint64 Decoded_Size(const QByteArray &stream)
{
    return Told_Size(stream.mid(Size_Place, Size_Bytes), stream.size());
}

void Cut_File_Tail(const QString &path, qint64 count)
{
    QFile file;
    Files::Open_To_Change(file, path);
    if (!file.resize(qMax(file.size() - count, Q_INT64_C(0))))
        throw Run_Time_Error(Error_Number::Path_Access, file.errorString(), Failure::Path_Access);
}
