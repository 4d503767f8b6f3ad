// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/running_programs.h"

#include "platform/files/door.h"

#include <QCoreApplication>
#include <QFile>
#include <QUrl>

namespace Files
{
/// proc(5): a folder for each process, named by its number, with the words of its command line in "cmdline".
bool Is_On_A_Command_Line(const QString &path)
{
    constexpr qint64 Longest = 1 << 16;
    const QByteArray asPath = QFile::encodeName(path);
    const QByteArray asAddress = QUrl::fromLocalFile(path).toEncoded();
    const QString own = QString::number(QCoreApplication::applicationPid());
    for (const Entry &process : Entries(QStringLiteral("/proc"))) {
        bool isNumber = false;
        process.name.toLongLong(&isNumber);
        if (!isNumber || !process.is_own || process.name == own)
            continue;
        QFile words(QStringLiteral("/proc/%1/cmdline").arg(process.name));
        if (!words.open(QIODevice::ReadOnly)) // it has ended
            continue;
        const QByteArray line = words.read(Longest);
        if (line.contains(asPath) || line.contains(asAddress))
            return true;
    }
    return false;
}
} // namespace Files
