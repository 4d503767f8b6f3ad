// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/atomic_file.h"

#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace Files
{
namespace
{
constexpr mode_t Own_Rights = 0600;
constexpr mode_t All_Rights = 0666; // less what the user's mask takes
constexpr mode_t Rights_Mask = 0777;

QByteArray Name_Beside(const QByteArray &name)
{
    constexpr qsizetype Longest = 200; // bytes; file systems take 255
    return name.left(Longest) + '.' + QByteArray::number(QRandomGenerator::system()->generate64(), 36) + ".part";
}

bool Has_No_Flush(int trouble)
{
    return trouble == EINVAL || trouble == EOPNOTSUPP || trouble == ENOSYS;
}
} // namespace

Atomic_File::Atomic_File(const QString &path, Durability durability)
    : m_path(durability == Durability::Kept || durability == Durability::Given ? Native_Path(path)
                                                                               : With_Slashes(path)),
      m_durability(durability), m_folder(m_path), m_rights(durability == Durability::Given ? All_Rights : Own_Rights)
{
    if (!m_folder.Is_Open())
        Throw_Write_Error(m_path, m_folder.Trouble());
    Look_At_Place();
    if (durability == Durability::Scratch)
        Open_Scratch();
    else
        Open_Beside();
    Check(m_file.Is_Open());
}

Atomic_File::~Atomic_File()
{
    if (!m_written.isEmpty())
        ::unlinkat(m_folder.Number(), m_written.constData(), 0);
}

/// Taking the place of a link, a device or a pipe would destroy it.
void Atomic_File::Look_At_Place()
{
    const auto place = m_folder.Look();
    if (!place)
        return;
    if (S_ISLNK(place->st_mode))
        Throw_Write_Error(m_path, ELOOP);
    if (!S_ISREG(place->st_mode))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Not a file: %1").arg(m_path),
                             Failure::Path_Access);
    Check(::faccessat(m_folder.Number(), m_folder.Name(), W_OK, AT_EACCESS) == 0);
    m_replaces = true;
    if (m_durability == Durability::Kept || m_durability == Durability::Given)
        m_rights = place->st_mode & Rights_Mask;
    // Another name of the same file would be written too.
    if (m_durability == Durability::Scratch && place->st_nlink > 1) {
        Check(::unlinkat(m_folder.Number(), m_folder.Name(), 0) == 0);
        m_replaces = false;
    }
}

/// Emptying the file first would have the system write it out at once.
void Atomic_File::Open_Scratch()
{
    m_file = m_folder.Open(O_RDWR | O_NOFOLLOW | (m_replaces ? 0 : O_CREAT | O_EXCL), Own_Rights);
    if (m_file.Is_Open())
        m_written = m_folder.Name();
}

/// Without a name where the file system can, so that a killed writer leaves nothing behind.
void Atomic_File::Open_Beside()
{
    const mode_t rights = m_durability == Durability::Given ? All_Rights : Own_Rights;
    m_file = Descriptor(::openat(m_folder.Number(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, rights));
    if (m_file.Is_Open() || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL && errno != ENOENT))
        return;
    const QByteArray name = Name_Beside(m_folder.Name());
    m_file = Descriptor(
        ::openat(m_folder.Number(), name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, rights));
    if (m_file.Is_Open())
        m_written = name;
}

void Atomic_File::Write(const char *bytes, qint64 size)
{
    m_size += size;
    while (size > 0) {
        const ssize_t done = ::write(m_file.Number(), bytes, static_cast<size_t>(size));
        if (done < 0 && errno == EINTR)
            continue;
        Check(done > 0);
        bytes += done;
        size -= done;
    }
}

void Atomic_File::Commit()
{
    if (m_durability == Durability::Scratch) {
        Check(::ftruncate(m_file.Number(), m_size) == 0); // what was there may have been longer
        Close();
    } else {
        Flush();
        Give_Name();
        Close();
        Check(::renameat(m_folder.Number(), m_written.constData(), m_folder.Number(), m_folder.Name()) == 0);
    }
    m_written.clear();
}

void Atomic_File::Flush()
{
    struct stat whole {
    };
    Check(::fstat(m_file.Number(), &whole) == 0);
    errno = EIO;
    Check(whole.st_size == m_size);
    if (m_replaces)
        (void)::fchmod(m_file.Number(), m_rights); // some file systems have no rights
    if (m_durability != Durability::Staging)
        Check(::fsync(m_file.Number()) == 0 || Has_No_Flush(errno));
}

void Atomic_File::Give_Name()
{
    if (!m_written.isEmpty())
        return;
    const QByteArray self = "/proc/self/fd/" + QByteArray::number(m_file.Number());
    const QByteArray name = Name_Beside(m_folder.Name());
    Check(::linkat(AT_FDCWD, self.constData(), m_folder.Number(), name.constData(), AT_SYMLINK_FOLLOW) == 0);
    m_written = name;
}

/// Some file systems tell only here that what was written found no room.
void Atomic_File::Close()
{
    const int closed = ::close(m_file.Give_Up());
    Check(closed == 0 || errno == EINTR);
}

void Atomic_File::Check(bool done) const
{
    if (!done)
        Fail();
}

void Atomic_File::Fail() const
{
    Throw_Write_Error(m_path, errno);
}
} // namespace Files
