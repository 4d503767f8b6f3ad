// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/transfer_candidates.h"

#include <QStringList>

/// Fills the list with the documents of a folder and everything below it that a book can hold, each row tagged with its
/// document's id: number, title, folder's name, keywords, type, the beginning of the text. The list stays as it was
/// when the folder's own password is not given.
/// @param ask      gives what the user types for a password
/// @param refused  gets the titles of documents without a text: they are empty or have a password
Mod_DataBaseExport::Candidates Fill_Book_Candidates(const QString &folderId, List_Model &list,
                                                    const std::function<QString()> &ask, QStringList &refused);
