// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

/// A document that holds what was saved in a copy.
struct Stored_Copy {
    QString id;
    QString title;
};

/// Whether an office program holds a file open, as its lock file tells.
bool Is_Open_In_Office(const QString &path);

/// The file of a stored document while another program edits it: a copy among the drafts, and the way back. It goes
/// with the object, unless a program still has it open or it holds what could not be taken back: then the next start
/// looks at it again, as after a kill.
class Outside_File
{
public:
    /// Writes the document's stored bytes to the copy.
    /// @throws Run_Time_Error when the document is gone or its file cannot be written
    explicit Outside_File(const QString &code_id);
    ~Outside_File();
    Outside_File(const Outside_File &) = delete;
    Outside_File &operator=(const Outside_File &) = delete;

    [[nodiscard]] QString Path() const;
    /// Whether the copy is another one than was taken back last.
    [[nodiscard]] bool Is_Changed() const;
    /// The same, once the copy has been left alone from one call to the next: a program may still be writing it.
    [[nodiscard]] bool Is_Settled_Change();
    /// Whether an office program holds the copy open.
    [[nodiscard]] bool Is_In_Use() const { return Is_Open_In_Office(Path()); }
    /// Stores what was saved in the copies that earlier processes left. A document that was changed meanwhile, or
    /// deleted, is not written over: the copy becomes a document of its own.
    static QList<Stored_Copy> Take_Back_Left();

    /// Stores the copy. @param text  out: what the file says @returns false after a failure, which has been shown
    bool Take_Back(QString &text);

private:
    struct State {
        qint64 size = 0;
        QDateTime written;
        bool operator==(const State &) const = default;
    };
    /// Beside the copy: what it is a copy of, and how it was when it was written or taken back last.
    struct Record {
        QString id;
        QString title;
        QString folder;
        QString type;
        QString file;    ///< the copy's name
        QString updated; ///< when the document was changed last, as its row says
        State taken;
    };
    explicit Outside_File(QString directory, Record record);
    static Record Read_Record(const QString &directory);
    void Write_Record() const;
    void Note_Taken(const State &taken);
    bool Take_Back_Late();
    [[nodiscard]] State Now() const;

    QString m_directory;
    Record m_record;
    State m_seen;
    bool m_failed = false;
};
