// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPersistentModelIndex>
#include <QTreeView>

class List_Model;

/// Tags with their numbers of documents. Text, and rows of the document list, may be dropped on it.
class Tag_List_View : public QTreeView
{
    Q_OBJECT

public:
    explicit Tag_List_View(QWidget *parent = nullptr);

    /// Gives the columns their captions and the view its model.
    void Show(List_Model &tags);
    /// Makes a tag's row current and brings it on screen.
    void Select(const QString &key);

signals:
    /// @param key  of the tag under the pointer, "" for empty space
    void Dropped(const QString &text, const QString &key);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    void Set_Target(const QModelIndex &target);

    QPersistentModelIndex m_target; ///< the row under a drag
};
