// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

/// The file of a stored document while another program edits it: a copy in data\temp\, and the way back. It goes with
/// the object, unless a program still has it open.
class Outside_File
{
public:
    /// Writes the document's stored bytes to the copy.
    /// @throws Run_Time_Error when the document is gone or its file cannot be written
    explicit Outside_File(const QString &code_id);
    ~Outside_File();
    Outside_File(const Outside_File &) = delete;
    Outside_File &operator=(const Outside_File &) = delete;

    [[nodiscard]] QString Path() const { return m_path; }
    /// Whether the copy is another one than was taken back last.
    [[nodiscard]] bool Is_Changed() const;
    /// The same, once the copy has been left alone from one call to the next: a program may still be writing it.
    [[nodiscard]] bool Is_Settled_Change();
    /// Whether an office program holds the copy open, as its lock file tells.
    [[nodiscard]] bool Is_In_Use() const;
    /// Stores the copy. @param text  out: what the file says @returns false after a failure, which has been shown
    bool Take_Back(QString &text);

private:
    struct State {
        qint64 size = 0;
        QDateTime written;
        bool operator==(const State &) const = default;
    };
    [[nodiscard]] State Now() const;

    QString m_id;
    QString m_path;
    State m_taken;
    State m_seen;
    bool m_failed = false;
};
