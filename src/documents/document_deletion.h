// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"

#include <QString>
#include <QStringList>
#include <functional>

/// Puts a document into the recycle bin; its old folder is not kept. A failure shows a box and is recorded under
/// "Mod_DataBase\MoveCode_Ex".
/// @param itemIndex  the row of `list` that goes with it, from 1; 0 for none
/// @returns whether it was moved
bool MoveCode_Ex(const QString &code_id, List_Model *list = nullptr, int itemIndex = 0);

/// Deletes a document for good, with its attachments, its tags and, for a web page, its pictures in the picture
/// directory. A failure shows a box and is recorded under "Mod_DataBase\AddClass". Parameters as above.
/// @returns whether it was deleted
bool DelCode_Ex(const QString &code_id, List_Model *list = nullptr, int itemIndex = 0);

/// Where a deletion was asked for: the texts are those of that place.
enum class Asked_In { Form, List };

/// What a deletion that was asked for has done.
struct Deletion {
    QStringList gone;    ///< ids of the documents that were moved or deleted
    QStringList folders; ///< the folders that they were in, each once, and the recycle bin when they are there now
    QString status;      ///< for the status line
};

/// Asks whether documents go to the recycle bin, or for good when all of them are in it, and does so.
/// @param may_go    asked for each document before it goes (with whether it goes for good); false leaves it
Deletion Ask_And_Delete(const QStringList &ids, Asked_In place,
                        const std::function<bool(const QString &id, bool forGood)> &may_go);
