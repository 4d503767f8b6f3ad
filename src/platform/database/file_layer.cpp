// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/file_layer.h"

#include <QFile>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr const char *Journal = "-journal";
constexpr std::array Suffixes{Journal, "-wal", "-shm"};

sqlite3_vfs &Usual()
{
    return *sqlite3_vfs_find(nullptr);
}

/// A journal ends in the name of its super-journal, the name's length, a sum over it and the mark of all journals.
bool Names_Another_File(int journal, qint64 size)
{
    constexpr qint64 Tail = 16;
    constexpr QByteArrayView Mark("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);
    QByteArray tail(Tail, '\0');
    if (size < Tail || ::pread(journal, tail.data(), Tail, size - Tail) != Tail)
        return false;
    return tail.endsWith(Mark) && qFromBigEndian<quint32>(tail.constData()) > 0;
}

/// What speaks against a file beside a database, "" for one that is missing or as it should be.
QString Trouble_With(const QByteArray &name)
{
    struct stat info {
    };
    const QString shown = QString::fromUtf8(name);
    if (::lstat(name.constData(), &info) != 0)
        return {};
    if (!S_ISREG(info.st_mode) || info.st_nlink != 1)
        return u"'%1' is a link or no ordinary file"_s.arg(shown);
    const int file = name.endsWith(Journal) ? ::open(name.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC) : -1;
    const bool names = file >= 0 && Names_Another_File(file, info.st_size);
    if (file >= 0)
        ::close(file);
    return names ? u"the journal '%1' names another file, which would be deleted"_s.arg(shown) : QString();
}

int Open_File(sqlite3_vfs * /*layer*/, const char *name, sqlite3_file *file, int flags, int *outFlags)
{
    const bool isDatabase = (flags & SQLITE_OPEN_MAIN_DB) != 0;
    const bool isBeside = (flags & (SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_WAL)) != 0;
    const bool refused =
        name != nullptr && ((flags & SQLITE_OPEN_SUPER_JOURNAL) != 0 ||
                            (isDatabase && !File_Layer::Trouble_Beside(QString::fromUtf8(name)).isEmpty()) ||
                            (isBeside && !Trouble_With(name).isEmpty()));
    file->pMethods = nullptr;
    return refused ? SQLITE_CANTOPEN : Usual().xOpen(&Usual(), name, file, flags, outFlags);
}

int Delete_File(sqlite3_vfs * /*layer*/, const char *name, int syncFolder)
{
    const QByteArrayView path(name);
    const bool isOwn =
        std::any_of(Suffixes.begin(), Suffixes.end(), [&](const char *end) { return path.endsWith(end); });
    return isOwn ? Usual().xDelete(&Usual(), name, syncFolder) : SQLITE_IOERR_DELETE;
}

sqlite3_vfs Guarded()
{
    sqlite3_vfs layer = Usual();
    layer.zName = "guarded";
    layer.pNext = nullptr;
    layer.xOpen = Open_File;
    layer.xDelete = Delete_File;
    return layer;
}
} // namespace

namespace File_Layer
{
const char *Name()
{
    static sqlite3_vfs layer = Guarded();
    static const bool known = sqlite3_vfs_register(&layer, 0) == SQLITE_OK;
    return known ? layer.zName : nullptr;
}

QString Trouble_Beside(const QString &database)
{
    for (const char *suffix : Suffixes) {
        QString trouble = Trouble_With(database.toUtf8() + suffix);
        if (!trouble.isEmpty())
            return trouble;
    }
    return {};
}
} // namespace File_Layer
