// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/outside_copy.h"

#include <QList>
#include <QString>
#include <optional>

/// A document that holds what was saved in a copy.
struct Stored_Copy {
    QString id;
    QString title;
};

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

    [[nodiscard]] QString Path() const { return m_copy.Path(); }
    /// Whether the copy is another one than was taken back last.
    [[nodiscard]] bool Is_Changed();
    /// The same, once the copy has been left alone from one call to the next, and once for each save there.
    [[nodiscard]] bool Is_Settled_Change();
    /// Whether another program has the copy, as far as can be known.
    [[nodiscard]] bool Is_In_Use() { return m_copy.Is_In_Use(); }
    /// Stores what was saved in the copies that earlier processes left. A document that was changed meanwhile, or
    /// deleted, is not written over: the copy becomes a document of its own.
    static QList<Stored_Copy> Take_Back_Left();

    /// Stores the copy. @param text  out: what the file says @returns false after a failure, which has been shown
    bool Take_Back(QString &text);

private:
    /// What the copy is one of.
    struct Record {
        QString id;
        QString title;
        QString folder;
        QString type;
        QString updated; ///< when the document was changed last, as its row says
    };
    struct Source {
        Record record;
        QByteArray bytes;
    };
    explicit Outside_File(const Source &source);
    explicit Outside_File(Outside_Copy copy);
    static Source Source_Of(const QString &code_id);
    [[nodiscard]] QCborMap Facts() const;
    void Note_Taken(const Outside_Copy::Moment &taken);
    bool Take_Back_Late();

    Record m_record;
    Outside_Copy m_copy;
    std::optional<Outside_Copy::Moment> m_failed; ///< the copy as it was when it could not be stored
};
