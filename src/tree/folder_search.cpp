// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_search.h"

#include "tree/folder_ids.h"

namespace
{
QString Name_Of(const Tree_Node &node)
{
    return Caption_Name(node.caption);
}

QString Path_Of(const Tree_Model &tree, int node)
{
    constexpr qsizetype Shortest_Inner_Key = 7; // a top-level key has 5 characters
    QString path = Name_Of(tree.Node(node));
    while (tree.Node(node).key.size() >= Shortest_Inner_Key && tree.Node(node).parent > 0) {
        node = tree.Node(node).parent;
        path.prepend(Name_Of(tree.Node(node)) + QStringLiteral(" \\ "));
    }
    return path;
}
} // namespace

std::vector<Found_Folder> Find_Folders(const Tree_Model &tree, const QString &text, bool whole)
{
    std::vector<Found_Folder> found;
    const QString sought = text.trimmed().toUpper();
    if (sought.isEmpty())
        return found;
    for (int i = 0; i < tree.Node_Count(); ++i) {
        const QString name = Name_Of(tree.Node(i)).toUpper();
        if (whole ? name == sought : name.contains(sought))
            found.push_back({Name_Of(tree.Node(i)), Path_Of(tree, i), tree.Node(i).key});
    }
    return found;
}
