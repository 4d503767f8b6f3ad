// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_form.h"
#include "documents/sealed_bytes.h"

#include <QString>
#include <optional>

/// What is typed and not saved yet, on disk beside the database ("<database>-drafts"), so that the next start can offer
/// it when the program was killed. A file belongs to the process that wrote it; a lock file tells whether that one
/// still lives. The draft of a document with a password is sealed with it, title included.
class Draft
{
public:
    Draft() = default;
    ~Draft() = default;
    Draft(const Draft &) = delete;
    Draft &operator=(const Draft &) = delete;

    /// Writes the form as it stands.
    /// @param stored    the document is a stored one; else it is new
    /// @param password  seals the draft; "" leaves it in clear
    /// @throws Run_Time_Error like Files::Write_Bytes
    void Write(const Document_Form &form, bool stored, const QString &password);
    /// Deletes the file, once the text is saved or given up.
    void Remove();

private:
    QString m_path;
    QString m_password;
    std::optional<Sealer> m_sealer;
};

/// A draft of a process that is no more.
struct Left_Draft {
    QString path;
    QString title;       ///< "" when it is sealed
    bool sealed = false; ///< its document's password is needed
};

QList<Left_Draft> Left_Drafts();

enum class Draft_Answer { Damaged, Wrong_Password, Restored };

/// Fills the form from a draft. @param stored  out: it is the draft of a document that is still in the database
Draft_Answer Restore_Draft(const Left_Draft &draft, const QString &password, Document_Form &form, bool &stored);

/// Deletes a draft that was restored or is not wanted.
void Drop_Draft(const Left_Draft &draft);
