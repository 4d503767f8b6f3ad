// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/by_date_pane.h"

#include "ui/kit/node_delegate.h"
#include "views/by_date.h"

#include <utility>

By_Date_Pane::By_Date_Pane(QWidget *parent) : QTreeView(parent)
{
    setObjectName(QStringLiteral("Trv_ByDate"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new Node_Delegate(this));
    setModel(&m_tree);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &index) {
        m_fresh = true;
        Choose(index);
    });
    connect(this, &QTreeView::clicked, this, [this](const QModelIndex &index) {
        expand(index);
        if (!std::exchange(m_fresh, false))
            Choose(index);
    });
}

void By_Date_Pane::Reload()
{
    const QString chosen = Selected_Key();
    m_loading = true;
    Reload_ByDate(m_tree);
    expand(m_tree.Index_Of(0));
    Select(chosen);
    m_loading = false;
    m_fresh = false;
}

void By_Date_Pane::Select(const QString &key)
{
    int node = -1;
    for (const QString &step : Date_Path(key)) {
        node = m_tree.Find(step);
        if (node < 0)
            return;
        Load_Date_Node(m_tree, node);
        if (step != key)
            expand(m_tree.Index_Of(node));
    }
    if (node >= 0)
        setCurrentIndex(m_tree.Index_Of(node));
}

QString By_Date_Pane::Selected_Key() const
{
    return currentIndex().data(Tree_Model::Key_Role).toString();
}

void By_Date_Pane::Choose(const QModelIndex &index)
{
    if (!index.isValid() || m_loading)
        return;
    Load_Date_Node(m_tree, m_tree.Node_Of(index));
    emit Date_Chosen(Date_Text_Of(index.data(Tree_Model::Key_Role).toString()));
}
