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
#include <unistd.h>
#endif

// An advisory lock on the directory itself needs no file, works where nothing can be written and is dropped by the
// kernel with the process. Where the file system has no such lock (some network ones, other systems) a lock file in
// the temporary directory, named for the program directory, takes its place.

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
    auto file =
        std::make_unique<QLockFile>(QDir::tempPath() + QStringLiteral("/zelqor-%1.lock").arg(QLatin1String(name)));
    file->setStaleLockTime(0); // only a dead holder makes it stale, which is looked up by process id
    if (file->tryLock()) {
        m_file = std::move(file);
        return Lock::Taken;
    }
    return file->error() == QLockFile::LockFailedError ? Lock::Held_By_Other : Lock::Impossible;
}
