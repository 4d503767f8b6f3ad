// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/door.h"

#include "platform/files/folder.h"
#include "platform/files/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace Files
{
namespace
{
/// What the program carries inside itself is in no folder.
bool Is_Carried(const QString &path)
{
    return path.startsWith(QLatin1Char(':'));
}

Folder Reach(const QString &path)
{
    Folder folder(path);
    if (!folder.Is_Open())
        Throw_Read_Error(path, folder.Trouble());
    return folder;
}

void Open_As(QFile &file, const QString &path, int flags, QIODevice::OpenMode mode)
{
    const Folder folder = Reach(path);
    Descriptor opened = folder.Open(flags | (folder.Is_Guarded() ? O_NOFOLLOW : 0));
    const int trouble = errno;
    file.setFileName(path);
    if (!opened.Is_Open())
        Throw_Read_Error(path, trouble);
    if (!file.open(opened.Give_Up(), mode, QFileDevice::AutoCloseHandle))
        Throw_Read_Error(path, EIO);
}

Entry As_Entry(const QString &name, const struct stat &found)
{
    const qint64 changed = static_cast<qint64>(found.st_mtim.tv_sec) * 1000 + found.st_mtim.tv_nsec / 1'000'000;
    return {name,
            S_ISDIR(found.st_mode),
            (found.st_mode & S_IXUSR) != 0,
            found.st_uid == ::geteuid(),
            found.st_size,
            QDateTime::fromMSecsSinceEpoch(changed)};
}

bool Passes(const struct stat &found)
{
    return S_ISREG(found.st_mode) || S_ISDIR(found.st_mode);
}

/// The names in an open folder.
QList<QByteArray> Names(Descriptor folder)
{
    const int descriptor = folder.Give_Up();
    const std::unique_ptr<DIR, int (*)(DIR *)> open(descriptor < 0 ? nullptr : ::fdopendir(descriptor), ::closedir);
    QList<QByteArray> names;
    while (const dirent *entry = open ? ::readdir(open.get()) : nullptr) {
        const QByteArray name = entry->d_name;
        if (name != "." && name != "..")
            names << name;
    }
    return names;
}

bool Delete_Below(int folder, const QByteArray &name)
{
    if (::unlinkat(folder, name.constData(), 0) == 0)
        return true;
    const Descriptor inside(::openat(folder, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!inside.Is_Open())
        return false;
    for (const QByteArray &entry : Names(Descriptor(::dup(inside.Number()))))
        Delete_Below(inside.Number(), entry);
    return ::unlinkat(folder, name.constData(), AT_REMOVEDIR) == 0;
}
} // namespace

std::optional<Entry> Look(const QString &path)
{
    const QString native = Native_Path(path);
    const Folder folder(native);
    struct stat found {
    };
    const int flags = folder.Is_Guarded() ? AT_SYMLINK_NOFOLLOW : 0;
    if (!folder.Is_Open() || ::fstatat(folder.Number(), folder.Name(), &found, flags) != 0 || !Passes(found))
        return std::nullopt;
    return As_Entry(QFile::decodeName(folder.Name()), found);
}

bool Is_File(const QString &path)
{
    const std::optional<Entry> found = Look(path);
    return found && !found->is_folder;
}

QList<Entry> Entries(const QString &folder)
{
    const Folder parent(Native_Path(folder));
    const Descriptor open = parent.Is_Open() ? parent.Open_Folder() : Descriptor();
    QList<Entry> entries;
    for (const QByteArray &name : Names(Descriptor(::dup(open.Number())))) {
        struct stat found {
        };
        if (::fstatat(open.Number(), name.constData(), &found, AT_SYMLINK_NOFOLLOW) == 0 && Passes(found))
            entries << As_Entry(QFile::decodeName(name), found);
    }
    return entries;
}

void Open_To_Read(QFile &file, const QString &path)
{
    if (!Is_Carried(path))
        return Open_As(file, Native_Path(path), O_RDONLY, QIODevice::ReadOnly);
    file.setFileName(path);
    if (!file.open(QIODevice::ReadOnly))
        Throw_Read_Error(path, ENOENT);
}

void Open_To_Change(QFile &file, const QString &path)
{
    Open_As(file, With_Slashes(path), O_RDWR | O_NOFOLLOW, QIODevice::ReadWrite | QIODevice::Unbuffered);
}

void Append_Bytes(const QString &path, const QByteArray &bytes)
{
    const QString native = Native_Path(path);
    const Folder folder(native);
    const Descriptor file =
        folder.Is_Open() ? folder.Open(O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW, 0600) : Descriptor();
    if (!file.Is_Open())
        Throw_Write_Error(native, folder.Is_Open() ? errno : folder.Trouble());
    const ssize_t done = ::write(file.Number(), bytes.constData(), static_cast<size_t>(bytes.size()));
    if (done != bytes.size())
        Throw_Write_Error(native, done < 0 ? errno : ENOSPC);
}

void Make_Runnable(const QString &path)
{
    QFile file;
    Open_To_Read(file, path);
    struct stat found {
    };
    if (::fstat(file.handle(), &found) == 0)
        (void)::fchmod(file.handle(), found.st_mode | ((found.st_mode & 0444) >> 2)); // some systems have no rights
}

void Give_Away(const QString &path)
{
    QFile file;
    Open_To_Read(file, path);
    const mode_t hidden = ::umask(0); // it can be asked for by setting it only
    ::umask(hidden);
    constexpr mode_t Everybody = 0666;
    (void)::fchmod(file.handle(), Everybody & ~hidden); // some systems have no rights
}

void Rename_File(const QString &path, const QString &name)
{
    const Folder folder = Reach(With_Slashes(path));
    const QByteArray to = QFile::encodeName(name);
    if (!Is_Plain_Name(name) || ::renameat(folder.Number(), folder.Name(), folder.Number(), to.constData()) != 0)
        Throw_Write_Error(path, Is_Plain_Name(name) ? errno : EINVAL);
}

void Prepare_Folder(const QString &path)
{
    const QString native = Native_Path(path);
    Make_Directory(native);
    if (::access(QFile::encodeName(native).constData(), W_OK | X_OK) != 0)
        Throw_Write_Error(native, errno);
}

bool Delete_Folder(const QString &path)
{
    const Folder parent(With_Slashes(path));
    return !parent.Is_Open() || Delete_Below(parent.Number(), parent.Name());
}

void Delete_Files(const QString &folder, const QString &pattern)
{
    for (const Entry &entry : Entries(folder)) {
        const Folder inside(Native_Path(folder) + QLatin1Char('/') + entry.name);
        if (!entry.is_folder && inside.Is_Open() && QDir::match(pattern, entry.name))
            ::unlinkat(inside.Number(), inside.Name(), 0);
    }
}
} // namespace Files
