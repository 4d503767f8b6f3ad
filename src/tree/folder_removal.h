// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

#include <QString>

/// Deletes a folder, asking first: one outside the recycle bin moves into it with its subtree and documents, one inside
/// goes for good, with its documents, their attachments and its nodes. Memberships in tab_VirCate stay.
/// @param newId  takes the folder's id in the recycle bin; "" when it went for good
/// @returns whether something was deleted or moved
bool DelClass_Ex(const QString &id, int nodeIndex, Tree_Model &tree, QString *newId = nullptr);

/// Empties the recycle bin, asking first; the bin itself stays. @returns whether it was emptied
bool Clean_RecycleBin_Ex(Tree_Model &tree);
