// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors/run_time_error.h"
#include "platform/files/atomic_file.h"
#include "platform/files/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringConverter>

namespace Files
{
namespace
{
constexpr qint64 Block_Size = 1 << 16;

[[noreturn]] void Throw_Path_Access(const QString &what, const QString &path, const QString &reason)
{
    throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("%1 %2: %3").arg(what, path, reason),
                         Failure::Path_Access);
}

void Open_To_Read(QFile &file)
{
    const QFileInfo info(file.fileName());
    if (!info.exists())
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("File not found: %1").arg(file.fileName()),
                             Failure::File_Not_Found);
    if (!info.isFile()) // a pipe would keep the program waiting
        Throw_Path_Access(QStringLiteral("Cannot read"), file.fileName(), QStringLiteral("it is not a file"));
    if (!file.open(QIODevice::ReadOnly))
        Throw_Path_Access(QStringLiteral("Cannot read"), file.fileName(), file.errorString());
}

void Check_Read(const QFile &file)
{
    if (file.error() != QFileDevice::NoError)
        Throw_Path_Access(QStringLiteral("Cannot read"), file.fileName(), file.errorString());
}
} // namespace

QByteArray Read_Bytes(const QString &path)
{
    QFile file(Native_Path(path));
    Open_To_Read(file);
    QByteArray bytes = file.readAll();
    Check_Read(file);
    return bytes;
}

void Write_Bytes(const QString &path, const QByteArray &bytes, Durability durability)
{
    Atomic_File file(path, durability);
    file.Write(bytes);
    file.Commit();
}

void Copy_File(const QString &from, const QString &to, Durability durability)
{
    QFile source(Native_Path(from));
    Open_To_Read(source);
    Atomic_File target(to, durability);
    for (;;) {
        const QByteArray block = source.read(Block_Size);
        if (block.isEmpty())
            break;
        target.Write(block);
    }
    Check_Read(source);
    target.Commit();
}

void Delete_If_Present(const QString &path)
{
    QFile file(Native_Path(path));
    const QFileInfo info(file.fileName());
    if (!info.exists() && !info.isSymLink())
        return;
    if (info.isDir() && !info.isSymLink())
        Throw_Path_Access(QStringLiteral("Cannot delete"), file.fileName(), QStringLiteral("it is a directory"));
    if (file.remove())
        return;
    if (!QFileInfo(info.absolutePath()).isWritable())
        throw Run_Time_Error(Error_Number::Permission_Denied, QStringLiteral("Cannot delete %1").arg(file.fileName()),
                             Failure::Read_Only);
    Throw_Path_Access(QStringLiteral("Cannot delete"), file.fileName(), file.errorString());
}

void Make_Directory(const QString &path)
{
    const QString native = Native_Path(path);
    if (!QDir().mkpath(native))
        Throw_Path_Access(QStringLiteral("Cannot make the directory"), native,
                          QFileInfo::exists(native) ? QStringLiteral("a file has this name")
                                                    : QStringLiteral("the place cannot be written"));
}

QString Decode_Text(const QByteArray &bytes)
{
    if (bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff"))
        return QStringDecoder(QStringDecoder::Utf16)(bytes);
    // Stateless, so that a sequence cut off at the end is an error too.
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    if (!utf8.hasError())
        return text;
    QStringDecoder gb18030("GB18030");
    return gb18030.isValid() ? QString(gb18030(bytes)) : text;
}
} // namespace Files
