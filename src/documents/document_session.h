// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/data_update.h"
#include "documents/document_form.h"
#include "documents/drafts.h"

#include <QStringList>
#include <array>
#include <memory>

class Outside_File;

/// One open document between its row and whoever shows it: where it comes from, what it was filled from, its draft, the
/// copy that another program writes, and its saves. It asks nobody and shows nothing but what the store itself shows.
class Document_Session
{
public:
    /// Where the document comes from, and so what may be done with it.
    enum class State {
        New,     ///< it has no row yet: a save inserts one
        Stored,  ///< text of a row, written here
        Partial, ///< only a part could be read, or nothing is held: it is shown and never stored
        Foreign, ///< another program writes its content: of it the facts are stored
    };

    /// The panes' documents belong to who shows them.
    Document_Session(QTextDocument &content, QTextDocument &memo, QTextDocument &sum);
    /// The draft goes: the text was saved or given up. A process that dies leaves it.
    ~Document_Session();
    Document_Session(const Document_Session &) = delete;
    Document_Session &operator=(const Document_Session &) = delete;

    /// The fields and panes; who shows them keeps them as they are on screen.
    Document_Form &Form() { return m_form; }
    [[nodiscard]] const Document_Form &Form() const { return m_form; }
    [[nodiscard]] State Now() const { return m_state; }
    [[nodiscard]] bool Is_Foreign() const { return m_state == State::Foreign; }
    [[nodiscard]] bool Is_Partial() const { return m_state == State::Partial; }
    [[nodiscard]] bool Is_Stored() const { return m_state != State::New; }
    /// A page that is read as what it shows.
    [[nodiscard]] bool Is_Page() const;
    /// The document stands for a file: another program's, or the one that its page shows.
    [[nodiscard]] bool Keeps_File() const { return Is_Foreign() || !Kept_Path().isEmpty(); }
    /// Where that file is; "" for one that the row holds.
    [[nodiscard]] QString Kept_Path() const;

    /// Begins a new document. @returns false, and nothing happens, for a kind that is none of "ADDCODE" and its
    /// variants
    bool Begin(const QString &kind, const QString &folder);
    /// Reads a stored document. @returns false when there is nothing to show: after a wrong password nothing is held,
    /// and when the row cannot be read what was held stays
    bool Open(const QString &code_id);
    /// Fills the form from a draft that a dead process left.
    Draft_Answer Take_Draft(const Left_Draft &draft, const QString &password);
    /// Drafts are sealed with that password while no other is typed twice.
    void Seal_With(const QString &password) { m_storedPassword = password; }
    /// The document becomes a new one: its next save inserts.
    void Become_New();
    /// Holds no document any more, and nothing that could be stored.
    void Let_Go();

    /// When the row was stored last, "" for never.
    [[nodiscard]] QString Stored_When() const { return Is_Stored() ? m_form.stored_when : QString(); }
    /// How many bytes the file has that the row keeps, 0 where that is not known.
    [[nodiscard]] qint64 Kept_Size() const;

    /// The form is as it is stored: what differs from now on is unsaved, and there is no draft.
    void Set_Clean();
    /// Something is not as it was when it was clean.
    [[nodiscard]] bool Differs() const;
    /// The folder as it was when it was clean has another id now.
    void Follow_Folder(const QString &oldId, const QString &newId);
    /// The document was moved there.
    void Set_Folder(const QString &id);

    /// Whether the form can be stored as it stands; an empty title takes the beginning of the content.
    Save_Refusal Check();
    /// Stores the form. Whoever gets its consents asked for gives them and tries again.
    Save_Outcome Store(QString &status);
    Save_Consents &Consents() { return m_consents; }
    /// The last save was not made because it needs a consent.
    [[nodiscard]] bool Needs_Consent() const { return m_needsConsent; }
    /// Text came into a pane while it was being stored.
    [[nodiscard]] bool Came_In_Late() const { return Revisions() != m_written; }
    /// The folder that the document left by its last save; "" when it stayed.
    [[nodiscard]] QString Left_Folder() const { return m_leftFolder; }

    /// Writes the draft. @throws Run_Time_Error
    void Write_Draft();
    void Drop_Draft() { m_draft.Remove(); }
    /// The draft outlives the session, for the next start to offer.
    void Leave_Draft() { m_draftStays = true; }
    /// How long the last draft took to be written.
    [[nodiscard]] qint64 Draft_Milliseconds() const { return m_draftTook; }

    /// Makes the copy that another program writes, unless it is there. @throws Run_Time_Error
    Outside_File &Give_Outside();
    [[nodiscard]] Outside_File *Outside() const { return m_outside.get(); }
    /// Stores what another program saved. @returns false after a failure, which has been shown
    bool Take_Back();

private:
    [[nodiscard]] QStringList Texts() const;
    [[nodiscard]] std::array<int, 3> Revisions() const;
    [[nodiscard]] QString Draft_Password() const;
    [[nodiscard]] State State_Of_Row() const;

    Document_Form m_form;
    State m_state = State::New;
    Draft m_draft;
    qint64 m_draftTook = 0;
    bool m_draftStays = false;
    std::unique_ptr<Outside_File> m_outside;
    Save_Consents m_consents; ///< what the user has agreed to for this document
    bool m_needsConsent = false;
    QStringList m_clean; ///< the fields when the form was clean
    QString m_storedPassword;
    QString m_storedFolder;
    QString m_leftFolder;
    std::array<int, 3> m_written = {};
};
