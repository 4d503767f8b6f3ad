// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/atomic_file.h"

#include "platform/errors/run_time_error.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>
#include <filesystem>

namespace Files
{
namespace
{
bool May_Write_At(const QFileInfo &place)
{
    return QFileInfo(place.absolutePath()).isWritable() && (!place.exists() || place.isWritable());
}

/// A write that was cut short reports no reason of its own; too little room for what was to be written is one.
bool Disk_Is_Full(const QFileDevice &file, const QString &path, qint64 size)
{
    if (file.error() == QFileDevice::ResourceError)
        return true;
    const QStorageInfo storage(QFileInfo(path).absolutePath());
    return storage.isValid() && storage.bytesAvailable() < size;
}

/// A file beside its place that takes it without waiting for the disk; a scratch file is in its place from the first.
class Staging_File : public QFile
{
public:
    Staging_File(const QString &path, Durability durability)
        : QFile(durability == Durability::Scratch ? path : path + QStringLiteral(".part")), m_path(path)
    {
    }
    ~Staging_File() override
    {
        if (!m_taken && isOpen())
            remove();
    }
    bool Take_Place(qint64 size)
    {
        if (fileName() == m_path)
            resize(size); // what was there may have been longer
        close();
        std::error_code trouble;
        if (error() == NoError && fileName() != m_path)
            std::filesystem::rename(filesystemFileName(), QFileInfo(m_path).filesystemFilePath(), trouble);
        m_taken = error() == NoError && !trouble;
        if (!m_taken)
            remove();
        return m_taken;
    }

private:
    QString m_path;
    bool m_taken = false;
};
} // namespace

Atomic_File::Atomic_File(const QString &path, Durability durability)
    : m_path(durability == Durability::Kept ? Native_Path(path) : With_Slashes(path))
{
    if (durability == Durability::Kept)
        m_file = std::make_unique<QSaveFile>(m_path);
    else
        m_file = std::make_unique<Staging_File>(m_path, durability);
    const QFileInfo place(m_path);
    // Taking the place of a device or a pipe would destroy it.
    if (m_path.isEmpty() || (place.exists() && !place.isFile()))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Not a file: %1").arg(m_path),
                             Failure::Path_Access);
    // Emptying a scratch file first would have the system write it out at once.
    if (m_file->open(durability == Durability::Scratch ? QIODevice::ReadWrite : QIODevice::WriteOnly))
        return;
    if (QFileInfo(place.absolutePath()).isDir() && !May_Write_At(place))
        throw Run_Time_Error(Error_Number::Permission_Denied, QStringLiteral("Permission denied: %1").arg(m_path),
                             Failure::Read_Only);
    Fail();
}

Atomic_File::~Atomic_File() = default;

void Atomic_File::Write(const char *bytes, qint64 size)
{
    m_size += size;
    if (m_file->write(bytes, size) != size)
        Fail();
}

void Atomic_File::Commit()
{
    auto *staging = dynamic_cast<Staging_File *>(m_file.get());
    if (!(staging != nullptr ? staging->Take_Place(m_size) : static_cast<QSaveFile &>(*m_file).commit()))
        Fail();
}

void Atomic_File::Fail()
{
    if (Disk_Is_Full(*m_file, m_path, m_size))
        throw Run_Time_Error(Error_Number::Disk_Full, QStringLiteral("Disk full: %1").arg(m_path), Failure::Disk_Full);
    throw Run_Time_Error(Error_Number::Path_Access,
                         QStringLiteral("Cannot write %1: %2").arg(m_path, m_file->errorString()),
                         Failure::Path_Access);
}
} // namespace Files
