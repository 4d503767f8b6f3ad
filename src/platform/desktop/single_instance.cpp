// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/single_instance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

// An advisory lock on the directory itself needs no file, works where nothing can be written and is dropped by the
// kernel with the process. Where the file system has no such lock (some network ones, other systems) a lock file in
// the temporary directory, named for the program directory, takes its place.

namespace
{
#ifdef Q_OS_UNIX
/// The process that has a lock on a directory, by the kernel's list (proc_locks(5)); "" when it does not tell.
QByteArray Holder_Of(quint64 inode)
{
    QFile list(QStringLiteral("/proc/locks")); // 1: FLOCK  ADVISORY  WRITE 4711 08:01:262146 0 EOF
    if (!list.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : list.readAll().split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.value(1) == "FLOCK" && words.value(5).endsWith(':' + QByteArray::number(inode)))
            return words.value(4);
    }
    return {};
}

bool Is_Held_By_Other(int directory)
{
    struct stat place {
    };
    const QByteArray process = ::fstat(directory, &place) == 0 ? Holder_Of(place.st_ino) : QByteArray();
    struct stat holder {
    };
    // A process that cannot be seen is somebody else's.
    return process.toLongLong() > 0 &&
           (::stat(("/proc/" + process).constData(), &holder) != 0 || holder.st_uid != ::geteuid());
}
#endif
} // namespace

Single_Instance::Single_Instance(const QString &programDirectory)
{
    const QString canonical = QFileInfo(programDirectory).canonicalFilePath();
    const QString directory = canonical.isEmpty() ? QDir::cleanPath(programDirectory) : canonical;
    Lock lock = Lock_Directory(directory);
    if (lock == Lock::Impossible)
        lock = Lock_File(directory);
    m_onlyOne = lock != Lock::Held_By_Other;
}

Single_Instance::~Single_Instance()
{
    Release();
}

void Single_Instance::Release()
{
#ifdef Q_OS_UNIX
    if (m_directory >= 0)
        ::close(m_directory);
#endif
    m_directory = -1;
    m_file.reset();
}

Single_Instance::Lock Single_Instance::Lock_Directory(const QString &directory)
{
#ifdef Q_OS_UNIX
    const int descriptor = ::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return Lock::Impossible;
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        m_directory = descriptor;
        return Lock::Taken;
    }
    const bool held = errno == EWOULDBLOCK;
    m_otherUser = held && Is_Held_By_Other(descriptor);
    ::close(descriptor);
    return held ? Lock::Held_By_Other : Lock::Impossible;
#else
    Q_UNUSED(directory)
    return Lock::Impossible;
#endif
}

Single_Instance::Lock Single_Instance::Lock_File(const QString &directory)
{
    const QByteArray name = QCryptographicHash::hash(directory.toUtf8(), QCryptographicHash::Sha256).toHex().left(32);
    const QString path = QDir::tempPath() + QStringLiteral("/zelqor-%1.lock").arg(QLatin1String(name));
    const QFileInfo there(path);
    m_otherUser = there.exists() && there.ownerId() != ::geteuid();
    if (m_otherUser) // nor is it looked into: it may be anything
        return Lock::Held_By_Other;
    auto file = std::make_unique<QLockFile>(path);
    file->setStaleLockTime(0); // only a dead holder makes it stale, which is looked up by process id
    if (file->tryLock()) {
        m_file = std::move(file);
        return Lock::Taken;
    }
    return file->error() == QLockFile::LockFailedError ? Lock::Held_By_Other : Lock::Impossible;
}
