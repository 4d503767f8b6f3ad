// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/ladder.h"

#include <QString>

/// A database that somebody else made, made fit to be read: the ladder raises it to the current schema, in its own
/// place where that can be written (with a copy of before in data\bak\), else in a copy below data\temp\ that goes with
/// this object.
class Import_Source
{
public:
    /// @throws Run_Time_Error when it cannot be read, is no database, or is the database in force.
    Import_Source(const QString &path, const Ladder_Callbacks &callbacks);
    Import_Source(const Import_Source &) = delete;
    Import_Source &operator=(const Import_Source &) = delete;

    [[nodiscard]] const QString &Conn_Str() const { return m_connStr; }
    [[nodiscard]] bool Is_Copy() const { return m_file.is_copy; }

private:
    /// A file that is let go with this object, and deleted where it is a copy.
    struct File {
        ~File();
        QString path;
        bool is_copy = false;
    };
    File m_file;
    QString m_connStr;
};

/// Whether two paths, links followed, lead to one file.
bool Is_Same_File(const QString &one, const QString &other);
