// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

#include <QTreeView>

/// The tree of years, months and days.
class By_Date_Pane : public QTreeView
{
    Q_OBJECT

public:
    explicit By_Date_Pane(QWidget *parent);

    /// Loads the years anew; the selected node stays selected, but it is not listed.
    void Reload();
    /// Key of the selected node, "" for none.
    [[nodiscard]] QString Selected_Key() const;

signals:
    /// The user chose a node: the text that lists it.
    void Date_Chosen(const QString &dateText);

private:
    void Choose(const QModelIndex &index);
    void Select(const QString &key);

    Tree_Model m_tree;
    bool m_loading = false;
    bool m_fresh = false; ///< the node that is being clicked was chosen by this very click
};
