// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

#include <QString>
#include <vector>

/// A folder found by name.
struct Found_Folder {
    QString name;
    QString path; ///< the names from the top level down to it, joined by " \ "
    QString key;
};

/// Nodes whose name equals the text (`whole`) or contains it, without regard to case or to blanks around the text, in
/// the tree's order. An empty text finds nothing.
std::vector<Found_Folder> Find_Folders(const Tree_Model &tree, const QString &text, bool whole);
