// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tree_pane.h"

#include "core/process_state.h"
#include "core/settings.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"
#include "ui/file_drops.h"
#include "ui/icons.h"
#include "ui/shell.h"

#include <QDropEvent>
#include <QStyledItemDelegate>

namespace
{
/// Gives the nodes their icons; the model knows only the images' names.
class Node_Delegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->icon = Node_Icon(index.data(Tree_Model::Image_Role).toString());
        option->features |= QStyleOptionViewItem::HasDecoration;
    }
};
} // namespace

Tree_Pane::Tree_Pane(Shell &shell, QWidget *parent) : QTreeView(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("Trv_Code_Class"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new Node_Delegate(this));
    setModel(&m_tree);
    setAcceptDrops(true);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &current) {
        if (m_loading || !current.isValid())
            return;
        Save_Status(current, isExpanded(current));
        emit Folder_Chosen(Id_At(current));
    });
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex &index) { Save_Status(index, true); });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex &index) { Save_Status(index, false); });
}

void Tree_Pane::Update_Tree()
{
    const QString selected = Selected_Id();
    const bool hadSelection = Has_Selection();
    m_loading = true;
    GetClassInfo_Ex(m_tree, App().Conn_Str, QStringLiteral("Zelqor"));
    Show_Expansion();
    if (hadSelection)
        Select_Folder(selected);
    m_loading = false;
}

bool Tree_Pane::Select_Folder(const QString &id)
{
    const int node = m_tree.Find(id.isEmpty() ? Root_Key : Folder_Key(id));
    if (node < 0)
        return false;
    setCurrentIndex(m_tree.Index_Of(node));
    return true;
}

QString Tree_Pane::Selected_Id() const
{
    return Id_At(currentIndex());
}

bool Tree_Pane::Has_Selection() const
{
    return currentIndex().isValid();
}

void Tree_Pane::Recount(const QString &id)
{
    Update_Tree_Num_Ex(m_tree, id, App().Conn_Str, Is_Shown(Config().ShowLow));
}

QString Tree_Pane::Accepted_Password() const
{
    const int node = m_tree.Node_Of(currentIndex());
    return node < 0 ? QString() : m_tree.Node(node).tag;
}

void Tree_Pane::Set_Accepted_Password(const QString &password)
{
    const int node = m_tree.Node_Of(currentIndex());
    if (node >= 0)
        m_tree.Set_Tag(node, password);
}

void Tree_Pane::dragEnterEvent(QDragEnterEvent *event)
{
    if (!Dropped_Files(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void Tree_Pane::dragMoveEvent(QDragMoveEvent *event)
{
    const bool overFolder = !Id_At(indexAt(event->position().toPoint())).isEmpty();
    event->setAccepted(overFolder && !Dropped_Files(*event->mimeData()).isEmpty());
}

void Tree_Pane::dropEvent(QDropEvent *event)
{
    const QString folder = Id_At(indexAt(event->position().toPoint()));
    const QStringList files = Dropped_Files(*event->mimeData());
    event->setAccepted(!folder.isEmpty() && !files.isEmpty());
    if (event->isAccepted())
        m_shell.Import_Files(files, folder);
}

void Tree_Pane::Show_Expansion()
{
    for (int i = 0; i < m_tree.Node_Count(); ++i)
        setExpanded(m_tree.Index_Of(i), m_tree.Node(i).expanded);
}

void Tree_Pane::Save_Status(const QModelIndex &index, bool expanded)
{
    const int node = m_tree.Node_Of(index);
    if (m_loading || node < 0)
        return;
    m_tree.Set_Expanded(node, expanded);
    if (Is_Folder_Key(m_tree.Node(node).key))
        Save_Tree_Status(Id_At(index), expanded);
}

QString Tree_Pane::Id_At(const QModelIndex &index) const
{
    const int node = m_tree.Node_Of(index);
    return node < 0 ? QString() : GetKeyPart(m_tree.Node(node).key, Key_Part::After_Underscore);
}
