// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

#include <QString>
#include <QStringList>

/// Fills a tree with the root and all folders, captions carrying live document counts.
/// A folder whose parent is missing hangs below the root, under a name that says so.
/// @returns whether every folder is in its place; errors go under "Mod_DataBase\GetClassInfo_Ex".
bool GetClassInfo_Ex(Tree_Model &tree, const QString &connection, const QString &defaultRootName);

/// Counts the captions of a folder and its ancestors anew.
/// @param subtree  whether a caption counts the folders below too (the on-screen switch U_ShowLow)
void Update_Tree_Num_Ex(Tree_Model &tree, const QString &id, const QString &connection, bool subtree);

/// Rebuilds `target` as a copy of `source` with the counts dropped from the captions.
void Copy_Tree(const Tree_Model &source, Tree_Model &target);

/// A folder combo: its control's name and its lines.
struct Folder_Combo {
    QString name;
    QStringList items;
};

/// What a folder is shown as: its name, but the recycle bin with its usual name, which every file keeps in Chinese, in
/// the language in force.
QString Shown_Folder_Name(const QString &id, const QString &name);

/// Ids of the folders in the combos, in their order, with one spare empty element at the end.
QStringList &Cate_ID_List();

/// Fills a folder combo and Cate_ID_List; `Comb_Find_Cate` gets `allFolders` as an extra first line.
void Reload_Cate(Folder_Combo &combo, const QString &allFolders = {});

/// Remembers the folder used last and whether its node is open.
void Save_Tree_Status(const QString &id, bool expanded);

/// The facts COM_NAME and COM_ICON of the database, made where they are missing.
void Load_Root_Facts();
