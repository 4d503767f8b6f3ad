// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_store.h"

#include <QString>
#include <optional>

/// Why a document is not saved as it stands, in the order of the tests; the names tell the control that is wanted.
enum class Save_Refusal {
    None,
    Nothing_To_Save,
    No_Folder,
    Create_Date,
    Update_Date,
    Title_Too_Long,
    Password,
    Password_Characters
};

/// Whether a folder is there: it may have been deleted while its document was open, and stored there, the document
/// would be nowhere to be found. A database that can't be asked will say so itself at the save.
bool Is_Folder(const QString &id);

/// Gives an empty title the beginning of the content, then tests the form's fields.
/// @param passwordAgain  what stands in the repeat box
Save_Refusal Check_Before_Save(Document_Form &form, const QString &passwordAgain);

/// The message key of a refusal in the section Frm_Doc_Standard.
const char *Refusal_Key(Save_Refusal refusal);

/// What the user has agreed to beforehand.
struct Save_Consents {
    bool replace = false;   ///< write over what somebody else has stored since the form was filled
    bool open_lock = false; ///< store a text that is too long for its password to be asked for
};

/// Who changed a stored document last, and when.
struct Last_Change {
    QString who;
    QString when;
};
/// None when it is gone or cannot be read.
std::optional<Last_Change> Last_Change_Of(const QString &code_id);

/// Stores a form that passed its tests, and writes the system log in the same commit. What stands in the database is
/// compared with what the form was filled from inside that commit.
/// @param stored  the form holds a stored document; false inserts
/// @param status  out: the text for the status line
Save_Outcome Store_Form(Document_Form &form, bool stored, QString &status, Save_Consents consents = {});
