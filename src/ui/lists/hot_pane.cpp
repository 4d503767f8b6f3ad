// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/hot_pane.h"

#include "core/language_pack.h"
#include "platform/machine/machine.h"
#include "ui/kit/node_delegate.h"
#include "ui/kit/row_choice.h"
#include "ui/kit/shell.h"
#include "views/hot.h"

#include <QSignalBlocker>
#include <QTreeView>
#include <QVBoxLayout>

Hot_Pane::Hot_Pane(Shell &shell, QWidget *parent) : Left_Page(parent), m_view(new QTreeView(this))
{
    m_view->setObjectName(QStringLiteral("Trv_Hot"));
    m_view->setAccessibleName(Pack_Text("Frm_Main", "Left_Hot|Index|Caption"));
    m_view->setHeaderHidden(true);
    m_view->setUniformRowHeights(true);
    m_view->setEditTriggers(QTreeView::NoEditTriggers);
    m_view->setItemDelegate(new Node_Delegate(m_view));
    m_view->setModel(&m_nodes);
    m_choice = new Row_Choice(*m_view);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_view);
    connect(m_choice, &Row_Choice::Chosen, this, &Hot_Pane::List_Chosen);
    connect(m_view, &QTreeView::activated, this, [&shell] { shell.Focus_List(); });
}

void Hot_Pane::Choose(const QString &nodeKey)
{
    Refresh();
    Select(nodeKey);
    List_Chosen();
}

void Hot_Pane::Fill()
{
    const QString chosen = m_view->currentIndex().data(Tree_Model::Key_Role).toString();
    Reload_Hot(m_nodes);
    for (int i = 0; i < m_nodes.Node_Count(); ++i)
        m_view->setExpanded(m_nodes.Index_Of(i), m_nodes.Node(i).expanded);
    Select(chosen);
}

void Hot_Pane::Select(const QString &nodeKey)
{
    const QSignalBlocker blocker(m_choice);
    if (const int node = m_nodes.Find(nodeKey); node >= 0)
        m_view->setCurrentIndex(m_nodes.Index_Of(node));
}

void Hot_Pane::List_Chosen()
{
    const QString key = m_view->currentIndex().data(Tree_Model::Key_Role).toString();
    if (Hot_Where(key, Machine::Now().date()).isEmpty())
        return;
    emit Chosen(
        [key](List_Model &list, int /*page*/) {
            Page_Info info = List_Hot(key, list);
            info.unlisted = 0; // the setting is the limit
            return info;
        },
        Pack_Text("Frm_Main", "_Hot_Empty"));
}
