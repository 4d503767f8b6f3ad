// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/file_hold.h"

#include "platform/database/engine_error.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <map>
#include <mutex>
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace
{
using Identity = std::pair<quint64, quint64>;

/// Device and number of the file under a path; zeros when there is none, or where files have no such numbers.
Identity Identity_Of(const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat info {
    };
    if (::stat(QFile::encodeName(path).constData(), &info) == 0) {
        return {static_cast<quint64>(info.st_dev), static_cast<quint64>(info.st_ino)};
    }
#endif
    return {};
}

/// How many holds this process has on each file.
struct Held_Files {
    std::mutex guard;
    std::map<Identity, int> holds;
};

Held_Files &Held()
{
    static Held_Files files;
    return files;
}
} // namespace

File_Hold::File_Hold(const QString &path) : m_path(path)
{
    const Identity identity = Identity_Of(path);
    m_device = identity.first;
    m_inode = identity.second;
    const std::lock_guard locked(Held().guard);
    if (identity == Identity() || !Held().holds.contains(identity)) {
        Look_Inside();
    }
    ++Held().holds[identity];
}

File_Hold::~File_Hold()
{
    const std::lock_guard locked(Held().guard);
    const auto hold = Held().holds.find({m_device, m_inode});
    if (--hold->second == 0) {
        Held().holds.erase(hold);
    }
}

bool File_Hold::Is_Read_Only() const
{
    constexpr auto writable = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return !(QFile::permissions(m_path) & writable) || !QFileInfo(m_path).isWritable();
}

bool File_Hold::Is_Current() const
{
#ifdef Q_OS_UNIX
    return Identity_Of(m_path) == Identity(m_device, m_inode);
#else
    return QFile::exists(m_path);
#endif
}

/// A cheap look at the header (sqlite.org/fileformat2.html, section 1.3), so that other files are refused clearly.
void File_Hold::Look_Inside()
{
    constexpr qsizetype Header_Size = 100;
    if (!QFileInfo(m_path).isFile()) {
        throw Engine_Error::File_Missing(m_path);
    }
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Engine_Error::Failed(u"The database file '%1' cannot be opened: %2."_s.arg(m_path, file.errorString()),
                                   Failure::Path_Access);
    }
    const QByteArray header = file.read(Header_Size);
    if (header.size() < Header_Size || !header.startsWith(QByteArrayView("SQLite format 3\0", 16))) {
        throw Engine_Error::Not_A_Database(m_path,
                                           header.isEmpty() ? u"it is empty"_s : u"its content has another form"_s);
    }
    const auto *bytes = header.constData();
    const qint64 stored = qFromBigEndian<quint16>(bytes + 16);
    const qint64 pageSize = stored == 1 ? 65536 : stored;
    const qint64 pages = qFromBigEndian<quint32>(bytes + 28);
    const bool countHolds = qFromBigEndian<quint32>(bytes + 24) == qFromBigEndian<quint32>(bytes + 92);
    if (countHolds && file.size() < pages * pageSize && !QFile::exists(m_path + u"-journal"_s)) {
        throw Engine_Error::Damaged(m_path);
    }
    m_hasLog = bytes[18] == 2;
}
