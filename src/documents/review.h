// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/review_dates.h"

#include <QString>
#include <QStringList>

/// The review of a document: its group of intervals, and the date on which it is to be read again.

/// What the form shows: the chooser Cob_Gene, whose items are the id, "_" and the name of a group, and Lab_LastRead.
struct Gene_Chooser {
    QStringList items;
    int chosen = -1; ///< -1 when none is
    QString last_read;

    /// The id of the item that is chosen, 0 when none is.
    [[nodiscard]] int Gene_Id() const;
};

/// Fills the chooser and the last reading for a document. Its own group is chosen, or the default one when it has
/// none. Errors go under "Mod_DataBase\Get_Gene_List_Id".
void Get_Gene_List_Id(Gene_Chooser &chooser, const QString &code_id);

/// Stores the chosen group and the next reading; an empty date does nothing.
/// Errors go under "Mod_DataBase\Set_Gene_List_Id". @returns whether it was stored
bool Set_Gene_List_Id(const Gene_Chooser &chooser, const QString &code_id, const QString &next_date);

/// The dates of the chosen group from the last reading on; a document that was never read is taken as read today, and
/// the chooser says so. Empty for a group that is gone. Errors go under "Frm_Doc_Standard\Cob_Gene_Click".
Review_Dates Dates_Of_Choice(Gene_Chooser &chooser);
