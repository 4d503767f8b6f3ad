// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/paths.h"

#include <QByteArray>
#include <QString>
#include <memory>

class QFileDevice;

namespace Files
{
/// A file that is written piece by piece beside its place and takes it when it is whole. A writer that goes out of
/// scope without Commit, or is killed, leaves an older file as it was; a scratch file goes.
class Atomic_File
{
public:
    /// @throws Run_Time_Error 70 where nothing may be written, 75 for a place that holds no file or cannot.
    explicit Atomic_File(const QString &path, Durability durability = Durability::Kept);
    ~Atomic_File();
    Atomic_File(const Atomic_File &) = delete;
    Atomic_File &operator=(const Atomic_File &) = delete;

    /// @throws Run_Time_Error 61 on a full disk, 75 else.
    void Write(const char *bytes, qint64 size);
    void Write(const QByteArray &bytes) { Write(bytes.constData(), bytes.size()); }
    /// Flushes to the disk (not a staging or scratch file), then takes the place. @throws like Write.
    void Commit();

private:
    [[noreturn]] void Fail();
    QString m_path;
    std::unique_ptr<QFileDevice> m_file;
    qint64 m_size = 0;
};
} // namespace Files
