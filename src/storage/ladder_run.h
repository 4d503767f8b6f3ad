// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/error_log.h"
#include "storage/ladder.h"

/// One run of the ladder over one database: what its rungs ask and change the file with.
class Ladder_Run
{
public:
    Ladder_Run(QString connStr, const Ladder_Callbacks &callbacks);

    [[nodiscard]] const QString &Conn_Str() const { return m_connStr; }
    /// Native path of the file, "" for a data source.
    [[nodiscard]] const QString &File() const { return m_file; }
    /// A failure of the machine, not of a statement, that ended an action; number 0 when there was none. The next
    /// start has to try again.
    [[nodiscard]] const Pending_Error &Trouble() const { return m_trouble; }

    /// Probes: whether a statement opens and gives the column (with "" none is asked for), whether it has a row, and
    /// the defined size of a column, -1 when the statement does not open.
    [[nodiscard]] bool Opens(const char16_t *statement, const QString &column = {}) const;
    [[nodiscard]] bool Has_Row(const char16_t *statement) const;
    [[nodiscard]] qint32 Defined_Size(const char16_t *statement, const QString &column) const;
    /// A count that a statement gives, -1 when it does not open.
    [[nodiscard]] qint64 Count(const char16_t *statement) const;

    /// Runs an action: an error ends it, silently, and all that it did until then is one commit.
    void Act(const std::function<void()> &action);
    /// Runs one changing statement. @throws Run_Time_Error
    void Execute(const QString &statement) const;

    /// Shows the upgrade window; whether the ladder goes on.
    [[nodiscard]] bool Show_Upgrade_Window() const;
    void Pause() const;

    /// Copies the closed file to `path`, unless that copy exists.
    /// @throws Run_Time_Error with a clear text when that fails.
    void Copy_To(const QString &path) const;

private:
    QString m_connStr;
    QString m_file;
    Ladder_Callbacks m_callbacks;
    Pending_Error m_trouble;
};

/// Folder of the ladder's copies, with a final separator.
QString Copies_Folder();
/// A value that is joined into a statement between apostrophes.
QString Quoted(const QString &text);
