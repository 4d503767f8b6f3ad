// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/find_tree.h"

#include "tree/folder_ids.h"
#include "tree/tree_loading.h"

#include <QHash>

void Find_Tree::Copy(const Tree_Model &source)
{
    QHash<QString, bool> before;
    for (int i = 0; i < Node_Count(); ++i)
        before.insert(Node(i).key, Is_Ticked(i));
    m_ticked.clear();
    Copy_Tree(source, *this);
    for (int i = 0; i < Node_Count(); ++i) {
        const int parent = Node(i).parent;
        if (before.value(Node(i).key, parent < 0 || Is_Ticked(parent)))
            m_ticked.insert(i);
    }
    Sum_Up();
}

void Find_Tree::CheckedIndex(int node, bool ticked)
{
    const QString key = Node(node).key;
    for (int i = 0; i < Node_Count(); ++i) {
        if (node != 0 && !Node(i).key.contains(key))
            continue;
        if (ticked)
            m_ticked.insert(i);
        else
            m_ticked.remove(i);
    }
    Sum_Up();
    emit dataChanged(Index_Of(0), Index_Of(Node_Count() - 1), {Qt::CheckStateRole});
}

void Find_Tree::Sum_Up()
{
    m_mixed.clear();
    if (Node_Count() < 2)
        return; // a root alone has a box of its own
    m_ticked.remove(0);
    if (m_ticked.size() == Node_Count() - 1)
        m_ticked.insert(0);
    for (int i = Node_Count() - 1; i > 0; --i) { // a parent stands before its children
        const int parent = Node(i).parent;
        if (m_mixed.contains(i) || Is_Ticked(i) != Is_Ticked(parent))
            m_mixed.insert(parent);
    }
}

QStringList Find_Tree::Ticked_Ids() const
{
    QStringList ids;
    for (int i = 1; i < Node_Count(); ++i) {
        if (Is_Ticked(i))
            ids << GetKeyPart(Node(i).key, Key_Part::After_Underscore);
    }
    return ids;
}

QStringList Find_Tree::Ticked_Names() const
{
    QStringList names;
    for (int i = 1; i < Node_Count(); ++i) {
        if (Is_Ticked(i))
            names << Node(i).caption;
    }
    return names;
}

Qt::ItemFlags Find_Tree::flags(const QModelIndex &index) const
{
    return Tree_Model::flags(index) | Qt::ItemIsUserCheckable;
}

QVariant Find_Tree::data(const QModelIndex &index, int role) const
{
    if (role == Qt::CheckStateRole && index.isValid()) {
        const int node = Node_Of(index);
        if (m_mixed.contains(node))
            return Qt::PartiallyChecked;
        return Is_Ticked(node) ? Qt::Checked : Qt::Unchecked;
    }
    return Tree_Model::data(index, role);
}

bool Find_Tree::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid())
        return false;
    CheckedIndex(Node_Of(index), value.toInt() == Qt::Checked);
    return true;
}
