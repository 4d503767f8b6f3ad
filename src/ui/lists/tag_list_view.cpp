// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/tag_list_view.h"

#include "core/language_pack.h"
#include "platform/models/list_model.h"
#include "views/tags.h"

#include <QDragMoveEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QPainter>

Tag_List_View::Tag_List_View(QWidget *parent) : QTreeView(parent)
{
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setAllColumnsShowFocus(true);
    setAcceptDrops(true);
}

void Tag_List_View::Show(List_Model &tags)
{
    tags.Set_Columns({{QStringLiteral("Lsv_Tags_Name"), Pack_Text("Tag_Pane", "_Name")},
                      {QStringLiteral("Lsv_Tags_Count"), Pack_Text("Tag_Pane", "_Count")}});
    setModel(&tags);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
}

void Tag_List_View::Select(const QString &key)
{
    const int row = static_cast<const List_Model *>(model())->Find(key);
    const QModelIndex index = row < 0 ? QModelIndex() : model()->index(row, 0);
    setCurrentIndex(index);
    if (index.isValid())
        scrollTo(index);
}

void Tag_List_View::dragEnterEvent(QDragEnterEvent *event)
{
    event->setAccepted(event->mimeData()->hasText());
}

void Tag_List_View::dragMoveEvent(QDragMoveEvent *event)
{
    QTreeView::dragMoveEvent(event); // scrolls at the edges
    const bool documents = Is_Document_Drop(event->mimeData()->text());
    const QModelIndex target = documents ? indexAt(event->position().toPoint()) : QModelIndex();
    Set_Target(target);
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(event->mimeData()->hasText() && (!documents || target.isValid()));
}

void Tag_List_View::dragLeaveEvent(QDragLeaveEvent *event)
{
    Set_Target({});
    QTreeView::dragLeaveEvent(event);
}

void Tag_List_View::dropEvent(QDropEvent *event)
{
    const QModelIndex target = indexAt(event->position().toPoint());
    Set_Target({});
    stopAutoScroll();
    setState(NoState);
    event->setDropAction(Qt::CopyAction);
    event->accept();
    emit Dropped(event->mimeData()->text(), target.data(List_Model::Tag_Role).toString());
}

void Tag_List_View::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QTreeView::drawRow(painter, option, index);
    if (!m_target.isValid() || index.row() != m_target.row())
        return;
    painter->save();
    painter->setPen(option.palette.color(QPalette::Highlight));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

void Tag_List_View::Set_Target(const QModelIndex &target)
{
    m_target = target;
    viewport()->update();
}
