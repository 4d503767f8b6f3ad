// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/folder.h"
#include "platform/files/paths.h"

#include <QByteArray>
#include <QString>

namespace Files
{
/// A file that is written piece by piece beside its place and takes it when it is whole. A writer that goes out of
/// scope without Commit, or is killed, leaves an older file as it was; a scratch file goes.
class Atomic_File
{
public:
    /// @throws Run_Time_Error 61 on a full disk, 70 where nothing may be written, 75 for a place that holds no file, or
    /// a link, or cannot.
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
    void Look_At_Place();
    void Open_Scratch();
    void Open_Beside();
    void Flush();
    void Give_Name();
    void Close();
    void Check(bool done) const;
    [[noreturn]] void Fail() const;

    QString m_path;
    Durability m_durability;
    Folder m_folder;
    Descriptor m_file;
    QByteArray m_written; ///< the name under which it is written; "" for none yet
    mode_t m_rights;
    bool m_replaces = false; ///< a file stood in the place
    qint64 m_size = 0;
};
} // namespace Files
