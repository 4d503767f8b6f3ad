// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/watched_copy.h"

#include "platform/files/atomic_file.h"
#include "platform/files/door.h"

#include <QFile>
#include <QFileInfo>

bool Copy_File_Watched(const QString &from, const QString &to, Files::Durability durability, Work &work)
{
    constexpr qint64 Block = 1 << 20;
    QFile source;
    Files::Open_To_Read(source, from);
    Files::Atomic_File target(to, durability);
    const QString name = QFileInfo(from).fileName();
    while (!source.atEnd()) {
        if (!work.Next(source.pos(), source.size(), name))
            return false;
        const QByteArray block = source.read(Block);
        if (block.isEmpty())
            throw Run_Time_Error(Error_Number::Path_Access, source.errorString(), Failure::Path_Access);
        target.Write(block);
    }
    target.Commit();
    return true;
}
