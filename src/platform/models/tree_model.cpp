// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/models/tree_model.h"

#include "platform/errors/run_time_error.h"

namespace
{
constexpr qint32 Element_Not_Found = 35601;
constexpr qint32 Key_Not_Unique = 35602;

[[noreturn]] void Missing(const QString &key)
{
    throw Run_Time_Error(Element_Not_Found, QStringLiteral("Element not found: ") + key);
}

[[noreturn]] void Taken(const QString &key)
{
    throw Run_Time_Error(Key_Not_Unique, QStringLiteral("Key is not unique in collection: ") + key);
}
} // namespace

void Tree_Model::Replace(std::vector<Tree_Node> nodes)
{
    beginResetModel();
    m_nodes = std::move(nodes);
    m_top.clear();
    m_by_key.clear();
    m_by_key.reserve(static_cast<qsizetype>(m_nodes.size()));
    for (int i = 0; i < Node_Count(); ++i) {
        m_by_key.insert(Node(i).key, i);
        if (Node(i).parent < 0) {
            m_nodes[static_cast<size_t>(i)].row = static_cast<int>(m_top.size());
            m_top.push_back(i);
        }
    }
    endResetModel();
}

void Tree_Model::Clear()
{
    Replace({});
}

void Tree_Model::Add_Children(int parent, std::vector<Tree_Node> nodes)
{
    if (nodes.empty())
        return;
    const int first = static_cast<int>(Node(parent).children.size());
    beginInsertRows(Index_Of(parent), first, first + static_cast<int>(nodes.size()) - 1);
    for (Tree_Node &node : nodes) {
        const int own = Node_Count();
        std::vector<int> &siblings = m_nodes[static_cast<size_t>(parent)].children;
        node.parent = parent;
        node.row = static_cast<int>(siblings.size());
        siblings.push_back(own);
        if (!m_by_key.contains(node.key))
            m_by_key.insert(node.key, own);
        m_nodes.push_back(std::move(node));
    }
    endInsertRows();
}

void Tree_Model::Set_Caption(int index, const QString &caption)
{
    Tree_Node &node = m_nodes[static_cast<size_t>(index)];
    if (node.caption == caption)
        return;
    node.caption = caption;
    Show_Change(index, Qt::DisplayRole);
}

void Tree_Model::Set_Image(int index, const QString &image)
{
    m_nodes[static_cast<size_t>(index)].image = image;
    Show_Change(index, Image_Role);
}

void Tree_Model::Show_Change(int index, int role)
{
    const QModelIndex changed = Index_Of(index);
    emit dataChanged(changed, changed, {role});
}

void Tree_Model::Add(const QString &parentKey, Tree_Node node)
{
    const int parent = Find(parentKey);
    if (parent < 0)
        Missing(parentKey);
    if (Find(node.key) >= 0)
        Taken(node.key);
    std::vector<int> &siblings = m_nodes[static_cast<size_t>(parent)].children;
    const int own = Node_Count();
    node.parent = parent;
    node.row = static_cast<int>(siblings.size());
    beginInsertRows(Index_Of(parent), node.row, node.row);
    siblings.push_back(own);
    m_by_key.insert(node.key, own);
    m_nodes.push_back(std::move(node));
    endInsertRows();
}

void Tree_Model::Remove_If(const std::function<bool(const Tree_Node &)> &goes)
{
    // A parent stands before its children, so one pass sees whether it went.
    Tree_Builder kept;
    std::vector<bool> gone(m_nodes.size());
    for (size_t i = 0; i < m_nodes.size(); ++i) {
        Tree_Node node = m_nodes[i];
        const int parent = node.parent;
        gone[i] = goes(node) || (parent >= 0 && gone[static_cast<size_t>(parent)]);
        if (gone[i])
            continue;
        node.children.clear();
        kept.Add(parent < 0 ? QString() : Node(parent).key, std::move(node));
    }
    Replace(kept.Take());
}

QModelIndex Tree_Model::Index_Of(int node) const
{
    if (node < 0 || node >= Node_Count())
        return {};
    return createIndex(Node(node).row, 0, static_cast<quintptr>(node));
}

int Tree_Model::Node_Of(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<int>(index.internalId()) : -1;
}

const std::vector<int> &Tree_Model::Children(const QModelIndex &parent) const
{
    return parent.isValid() ? Node(Node_Of(parent)).children : m_top;
}

QModelIndex Tree_Model::index(int row, int column, const QModelIndex &parent) const
{
    const std::vector<int> &children = Children(parent);
    if (row < 0 || column != 0 || row >= static_cast<int>(children.size()))
        return {};
    return createIndex(row, 0, static_cast<quintptr>(children[static_cast<size_t>(row)]));
}

QModelIndex Tree_Model::parent(const QModelIndex &child) const
{
    return child.isValid() ? Index_Of(Node(Node_Of(child)).parent) : QModelIndex();
}

int Tree_Model::rowCount(const QModelIndex &parent) const
{
    return static_cast<int>(Children(parent).size());
}

int Tree_Model::columnCount(const QModelIndex & /*parent*/) const
{
    return 1;
}

QVariant Tree_Model::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Tree_Node &node = Node(Node_Of(index));
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return node.caption;
    case Key_Role:
        return node.key;
    case Image_Role:
        return node.image;
    default:
        return {};
    }
}

void Tree_Builder::Add(const QString &parentKey, Tree_Node node)
{
    if (m_by_key.contains(node.key))
        Taken(node.key);
    const int own = static_cast<int>(m_nodes.size());
    if (!parentKey.isEmpty()) {
        const int parent = m_by_key.value(parentKey, -1);
        if (parent < 0)
            Missing(parentKey);
        std::vector<int> &siblings = m_nodes[static_cast<size_t>(parent)].children;
        node.parent = parent;
        node.row = static_cast<int>(siblings.size());
        siblings.push_back(own);
    }
    m_by_key.insert(node.key, own);
    m_nodes.push_back(std::move(node));
}
