// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A connection's hold on its database file.
///
/// The first hold of this process looks into the file; the others must not: on POSIX systems closing a file drops the
/// locks that the process has on it, so that the look would leave a write of another connection unguarded.
class File_Hold
{
public:
    /// @throws Run_Time_Error when the file is missing, cannot be opened, is no database or is cut off.
    explicit File_Hold(const QString &path);
    ~File_Hold();
    File_Hold(const File_Hold &) = delete;
    File_Hold &operator=(const File_Hold &) = delete;

    /// The file came with a write-ahead log.
    [[nodiscard]] bool Has_Log() const { return m_hasLog; }
    /// Nobody may write the file, whoever runs this.
    [[nodiscard]] bool Is_Read_Only() const;
    /// The file that stands under the path is still this one.
    [[nodiscard]] bool Is_Current() const;

private:
    void Look_Inside();

    QString m_path;
    quint64 m_device = 0; ///< zeros where files have no such numbers
    quint64 m_inode = 0;
    bool m_hasLog = false;
};
