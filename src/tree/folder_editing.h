// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

#include <QString>
#include <optional>

/// Adding and changing folders. A failure changes nothing, goes to Error.log and is told by Folder_Trouble.

/// Adds a folder to the database and to the tree.
/// @param selectedId  the folder it goes below ("" for the root), or beside when `asSibling`
/// @param expanded    "1" or "0"
/// @returns its id, "" on failure.
QString AddClass_Ex(const QString &selectedId, const QString &name, Tree_Model &tree, const QString &icon,
                    bool asSibling, const QString &memo, const QString &expanded);

/// Finds a folder by name right below a parent; with several of that name the highest id wins. "" when there is none.
/// @throws Run_Time_Error
QString Find_Cate_Id(const QString &parentId, const QString &name);
/// Finds a folder by name right below a parent, or makes it. With several of that name the highest id wins.
/// @returns its id, "" on failure.
QString MakeExistCateId(const QString &parentId, const QString &name);

/// What a folder's dialog shows; for the root ("") its facts and the remark of the legacy table.
struct Folder_Facts {
    QString name;
    QString icon;
    QString memo;
    bool expanded = true;
};
/// No value when there is no such folder or it cannot be read.
std::optional<Folder_Facts> Read_Folder(const QString &id);

/// Changes name, icon, remark and expanded state of a folder, or name and icon of the root (id ""), and shows them at
/// its node. Every occurrence of the old name in the caption is replaced, the count's digits included.
bool ReNameClass_Ex(const QString &id, const QString &oldName, const QString &newName, const QString &memo,
                    Tree_Model &tree, int node, const QString &icon, bool expanded);

/// The end of an edit in the tree itself: `text` is the caption as edited, name and count. What precedes its first "["
/// is the new name of a folder; no other character is refused or replaced on this way.
/// @returns what to say on success, no value when the edit was cancelled or failed.
std::optional<QString> ReName_In_Place(Tree_Model &tree, int node, const QString &text);

/// Gives a node another icon; the recycle bin keeps its own.
bool Set_Node_Icon(Tree_Model &tree, int node, const QString &icon);
