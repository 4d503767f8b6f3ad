// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

#include <QString>
#include <QStringList>

/// The tree of years, months and days of Code_Date. Node keys: the root's, "Y_2026", "M_2026-03", "D_2026-03-04" (with
/// the date separator in force).

/// Fills the tree with the root and the years, from the first document's to the last one's.
/// Errors go under "Mod_DataBase\Reload_ByDate".
void Reload_ByDate(Tree_Model &tree);
/// Adds the months of a year or the days of a month when they are not there yet. Errors go under
/// "Frm_Main\Trv_ByDate_NodeClick".
void Load_Date_Node(Tree_Model &tree, int node);
/// Keys of the nodes from the year down to a node, itself the last.
QStringList Date_Path(const QString &nodeKey);
/// The text that lists a node's documents: "" for the root, the beginning of a date for a year or a month, a date for
/// a day.
QString Date_Text_Of(const QString &nodeKey);
