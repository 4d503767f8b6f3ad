// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"
#include "views/list_engine.h"

#include <QDate>
#include <QString>

/// The tree of hot lists and of what is due for review. A node's key is that of its caption in the language packs:
/// "T_000" to "T_004" and, below the group "G_000", "G_001" to "G_007".

/// Fills the tree with its fixed nodes. Errors go under "Mod_DataBase\Reload_Hot".
void Reload_Hot(Tree_Model &tree);

/// The condition of a node's list on that day, "" for a node without one (the root and the group).
QString Hot_Where(const QString &nodeKey, const QDate &today);

/// Lists a node's documents, at most the setting Hot_NUM. A node without a list leaves it as it is.
/// Errors go under "Mod_DataBase\ShowCodeInfoToList_Ex_Key".
Page_Info List_Hot(const QString &nodeKey, List_Model &list);

/// How many documents the lists of what is overdue and of what is due today hold.
struct Due_Counts {
    qint64 overdue = 0;
    qint64 today = 0;
};
/// Errors go under "Mod_DataBase\Count_Due".
Due_Counts Count_Due(const QDate &today);
