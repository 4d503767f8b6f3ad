// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors/run_time_error.h"
#include "platform/files/atomic_file.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"

#include <QFile>
#include <QStringConverter>
#include <cerrno>
#include <unistd.h>

namespace Files
{
namespace
{
constexpr qint64 Block_Size = 1 << 16;

void Check_Read(const QFile &file)
{
    if (file.error() != QFileDevice::NoError)
        throw Run_Time_Error(Error_Number::Path_Access,
                             QStringLiteral("Cannot read %1: %2").arg(file.fileName(), file.errorString()),
                             Failure::Path_Access);
}
} // namespace

QByteArray Read_Bytes(const QString &path)
{
    QFile file;
    Open_To_Read(file, path);
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
    QFile source;
    Open_To_Read(source, from);
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
    const QString native = Native_Path(path);
    const Folder folder(native);
    const bool gone = folder.Is_Open() && ::unlinkat(folder.Number(), folder.Name(), 0) == 0;
    const int trouble = folder.Is_Open() ? errno : folder.Trouble();
    if (!gone && trouble != ENOENT)
        Throw_Write_Error(native, trouble);
}

void Make_Directory(const QString &path)
{
    const QString native = Native_Path(path);
    if (!native.startsWith(QLatin1Char('/')))
        Throw_Write_Error(native, ENOENT);
    // A name within, so that the folder is the last that is walked to.
    const Folder inside(native + QStringLiteral("/_"), Folder::If_Missing::Make);
    if (!inside.Is_Open())
        Throw_Write_Error(native, inside.Trouble());
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
