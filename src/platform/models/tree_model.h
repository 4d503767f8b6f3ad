// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

/// One node of a tree: unique key, caption, name of its image (an upper-cased icon file name) and whether it is shown
/// expanded. `tag` keeps text of the logic's own, such as an accepted folder password.
struct Tree_Node {
    QString key;
    QString caption;
    QString image;
    bool expanded = false;
    QString tag;
    int parent = -1;
    int row = 0;
    std::vector<int> children;
};

/// The tree that the logic fills and a view shows: nodes are kept in insertion order and found by key.
class Tree_Model : public QAbstractItemModel
{
    Q_OBJECT

public:
    static constexpr int Key_Role = Qt::UserRole;
    static constexpr int Image_Role = Qt::UserRole + 1;

    using QAbstractItemModel::QAbstractItemModel;

    /// Replaces all nodes in one step; views see a single reset.
    void Replace(std::vector<Tree_Node> nodes);
    void Clear();
    /// Adds children behind those that a node has. A key that is taken already stays found at its first node.
    void Add_Children(int parent, std::vector<Tree_Node> nodes);

    [[nodiscard]] int Node_Count() const { return static_cast<int>(m_nodes.size()); }
    /// Nodes in insertion order; 0 is the first root.
    [[nodiscard]] const Tree_Node &Node(int index) const { return m_nodes[static_cast<size_t>(index)]; }
    /// -1 when no node has that key. Keys are compared exactly.
    [[nodiscard]] int Find(const QString &key) const { return m_by_key.value(key, -1); }
    void Set_Caption(int index, const QString &caption);
    void Set_Image(int index, const QString &image);
    /// Adds a node as the last child of its parent. @throws as Tree_Builder::Add
    void Add(const QString &parentKey, Tree_Node node);
    /// Takes nodes away with everything below them; the others keep their order. Views see a single reset.
    void Remove_If(const std::function<bool(const Tree_Node &)> &goes);
    void Set_Expanded(int index, bool expanded) { m_nodes[static_cast<size_t>(index)].expanded = expanded; }
    void Set_Tag(int index, const QString &tag) { m_nodes[static_cast<size_t>(index)].tag = tag; }

    [[nodiscard]] QModelIndex Index_Of(int node) const;
    /// -1 for an invalid index.
    [[nodiscard]] int Node_Of(const QModelIndex &index) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex &child) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    [[nodiscard]] const std::vector<int> &Children(const QModelIndex &parent) const;
    void Show_Change(int index, int role);

    std::vector<Tree_Node> m_nodes;
    std::vector<int> m_top;
    QHash<QString, int> m_by_key;
};

/// Builds a tree node by node, as the logic does: each one is the last child of its parent.
class Tree_Builder
{
public:
    /// Adds a node. @throws Run_Time_Error 35601 when the parent is missing, 35602 when the key is taken (the
    /// tree control's own numbers).
    void Add(const QString &parentKey, Tree_Node node);
    [[nodiscard]] std::vector<Tree_Node> Take() { return std::move(m_nodes); }

private:
    std::vector<Tree_Node> m_nodes;
    QHash<QString, int> m_by_key;
};
