// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/folder.h"

#include "platform/files/door.h"

#include <QDir>
#include <QFile>
#include <QMutex>
#include <QStringList>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace Files
{
namespace
{
constexpr mode_t Folder_Rights = 0700;

struct Guarded_Folders {
    QMutex mutex; // the coder works in a thread of its own
    QStringList paths;
};

Guarded_Folders &Guarded()
{
    static Guarded_Folders folders;
    return folders;
}

/// The guarded folder that a clean path lies in or names, the outermost; "" when there is none.
QString Guard_Of(const QString &path)
{
    const QMutexLocker locked(&Guarded().mutex);
    QString outermost;
    for (const QString &folder : Guarded().paths) {
        const bool inside = path == folder || path.startsWith(folder + QLatin1Char('/'));
        if (inside && (outermost.isEmpty() || folder.size() < outermost.size()))
            outermost = folder;
    }
    return outermost;
}

QString Text_For(int trouble)
{
    return trouble == ELOOP ? QStringLiteral("it is a link, or a link leads to it") : qt_error_string(trouble);
}

Run_Time_Error Access_Error(const QString &what, const QString &path, int trouble)
{
    return {Error_Number::Path_Access, QStringLiteral("%1 %2: %3").arg(what, path, Text_For(trouble)),
            trouble == ELOOP ? Failure::Link : Failure::Path_Access};
}
} // namespace

void Guard(const QString &folder)
{
    const QString path = QDir::cleanPath(folder);
    const QMutexLocker locked(&Guarded().mutex);
    if (!path.isEmpty() && !Guarded().paths.contains(path))
        Guarded().paths.append(path);
}

Descriptor::~Descriptor()
{
    if (m_number >= 0)
        ::close(m_number);
}

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

int Descriptor::Give_Up()
{
    return std::exchange(m_number, -1);
}

Folder::Folder(const QString &path, If_Missing ifMissing)
{
    QString whole = path;
    while (whole.size() > 1 && whole.endsWith(QLatin1Char('/')))
        whole.chop(1);
    const QString clean = QDir::cleanPath(whole);
    const QString guard = Guard_Of(clean);
    m_guarded = !guard.isEmpty();
    if (m_guarded)
        whole = clean;
    const qsizetype slash = whole.lastIndexOf(QLatin1Char('/'));
    m_name = QFile::encodeName(whole.mid(slash + 1));
    if (m_name.isEmpty() || m_name == "." || m_name == ".." || whole.contains(QChar(QChar::Null))) {
        m_trouble = whole == QLatin1String("/") ? EISDIR : ENOENT;
        return;
    }
    const QString way = whole.left(slash + 1);
    const QString ground = guard.left(guard.lastIndexOf(QLatin1Char('/')) + 1);
    if (m_guarded)
        Walk(ground, way.mid(ground.size()), ifMissing);
    else if (slash >= 0)
        Walk(way.startsWith(QLatin1Char('/')) ? QStringLiteral("/") : QStringLiteral("."), way, ifMissing);
    else
        Walk(QStringLiteral("."), {}, ifMissing);
}

void Folder::Walk(const QString &from, const QString &way, If_Missing ifMissing)
{
    m_folder = Descriptor(::open(QFile::encodeName(from).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    m_trouble = m_folder.Is_Open() ? 0 : errno;
    for (const QString &name : way.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        if (m_folder.Is_Open())
            Step(QFile::encodeName(name), ifMissing);
    }
}

void Folder::Step(const QByteArray &name, If_Missing ifMissing)
{
    const int flags = O_PATH | O_DIRECTORY | O_CLOEXEC | (m_guarded ? O_NOFOLLOW : 0);
    Descriptor next(::openat(Number(), name.constData(), flags));
    if (!next.Is_Open() && errno == ENOENT && ifMissing == If_Missing::Make &&
        (::mkdirat(Number(), name.constData(), Folder_Rights) == 0 || errno == EEXIST))
        next = Descriptor(::openat(Number(), name.constData(), flags));
    m_trouble = next.Is_Open() ? 0 : errno;
    struct stat found {
    };
    if (m_guarded && m_trouble == ENOTDIR && ::fstatat(Number(), name.constData(), &found, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISLNK(found.st_mode))
        m_trouble = ELOOP;
    m_folder = std::move(next);
}

std::optional<struct stat> Folder::Look() const
{
    struct stat found {
    };
    if (!Is_Open() || ::fstatat(Number(), Name(), &found, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return found;
}

Descriptor Folder::Open(int flags, mode_t mode) const
{
    Descriptor file(::openat(Number(), Name(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, mode));
    struct stat found {
    };
    if (!file.Is_Open() || ::fstat(file.Number(), &found) != 0)
        return Descriptor();
    if (S_ISREG(found.st_mode))
        return file;
    errno = S_ISDIR(found.st_mode) ? EISDIR : ENODEV;
    return Descriptor();
}

Descriptor Folder::Open_Folder() const
{
    return Descriptor(::openat(Number(), Name(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | (m_guarded ? O_NOFOLLOW : 0)));
}

void Throw_Read_Error(const QString &path, int trouble)
{
    if (trouble == ENOENT)
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("File not found: %1").arg(path),
                             Failure::File_Not_Found);
    throw Access_Error(QStringLiteral("Cannot read"), path, trouble);
}

void Throw_Write_Error(const QString &path, int trouble)
{
    if (trouble == ENOSPC || trouble == EDQUOT || trouble == EFBIG)
        throw Run_Time_Error(Error_Number::Disk_Full, QStringLiteral("Disk full: %1").arg(path), Failure::Disk_Full);
    if (trouble == EACCES || trouble == EPERM || trouble == EROFS)
        throw Run_Time_Error(Error_Number::Permission_Denied, QStringLiteral("Permission denied: %1").arg(path),
                             Failure::Read_Only);
    throw Access_Error(QStringLiteral("Cannot write"), path, trouble);
}
} // namespace Files
