// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QTextDocument;

/// What a document's form shows and the store writes: the texts of its controls and the documents of its three
/// panes. The form owns the panes' documents.
struct Document_Form {
    QString code_id; ///< the title's tag; "" for a document that is not stored yet
    QString title;
    QString folder; ///< id of the chosen folder, "" for none
    QString star;   ///< importance, five star characters, or ""
    QString done;   ///< completion, in the same way
    QString keys;
    QString explain;
    QString create_date; ///< short form
    QString update_date;
    QString file;
    QString promulgator;
    QString provenance;
    QString author;
    QString password;
    QString password_again; ///< what stands in the repeat box
    QString stored_type;    ///< the type as it stands in the database, "" for a document that is not stored yet
    QString type;           ///< the working type, upper-case; "" when there is nothing to save
    /// What the row held when the form was filled, as Stored_State tells it; "" for a document that is not stored yet.
    QString stored_state;
    QString stored_when;        ///< when the row was stored last, as the store writes it
    bool keeps_content = false; ///< a save writes the facts only: content, stream, password and type stay
    bool lock_is_open = false;  ///< the stored stream is too long for its password to be asked for
    QString page;               ///< the page of a document stored as HTM, as it was read
    QTextDocument *content = nullptr;
    QTextDocument *memo = nullptr;
    QTextDocument *sum = nullptr;
};
