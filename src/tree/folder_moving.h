// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

#include <QString>
#include <QStringList>
#include <optional>

/// Moves a folder with its subtree by rewriting ids, the documents' with them; memberships in tab_VirCate keep the old
/// id. The rewriting is one commit. A move that cannot end (an id would be too long, or is taken) is refused before
/// the first row is written.
/// @param newParentId  "" for the top level, "000" for the recycle bin
/// @returns the folder's new id, "" on failure
QString Mod_Cate_Action(const QString &oldId, const QString &newParentId);

/// What a move tells afterwards.
struct Move_Report {
    QString text;      ///< for the status line and the log
    QString oldFolder; ///< id of the folder, or of the first document's folder, before
    QString newFolder; ///< id of the folder after, or of the documents' new folder
};

/// A folder's node dropped on another node. Nothing happens when the target is the folder itself or lies below it.
/// Asks first where the setting wants it. @returns no value when nothing was moved
std::optional<Move_Report> Drop_Folder(const Tree_Model &tree, int node, int target);

/// Documents dropped on a folder. Only the first one's old folder is reported.
std::optional<Move_Report> Drop_Documents(const QStringList &codeIds, const Tree_Model &tree, int target);
