// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

#include <QSet>
#include <QStringList>

/// The folder tree of the search, each node with a box. A folder's box drives its subtree, the root's every box. The
/// root's own tick means the whole database, so it is there as long as every folder is ticked. A box above boxes of
/// both kinds is shown as half ticked, whether its own documents are searched or not.
class Find_Tree : public Tree_Model
{
    Q_OBJECT

public:
    using Tree_Model::Tree_Model;

    /// Takes the folders of the main tree over. Ticks stay; a new folder has its parent's; at first all are ticked.
    void Copy(const Tree_Model &source);
    /// Ticks or unticks a node and all whose key contains its key.
    void CheckedIndex(int node, bool ticked);
    [[nodiscard]] bool Is_Ticked(int node) const { return m_ticked.contains(node); }
    [[nodiscard]] bool Root_Ticked() const { return Node_Count() > 0 && Is_Ticked(0); }
    /// Ids, or captions, of the ticked folders in the tree's order.
    [[nodiscard]] QStringList Ticked_Ids() const;
    [[nodiscard]] QStringList Ticked_Names() const;

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

private:
    void Sum_Up();

    QSet<int> m_ticked;
    QSet<int> m_mixed; ///< nodes with a ticked and an unticked one among themselves and those below
};
