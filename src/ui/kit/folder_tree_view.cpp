// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/folder_tree_view.h"

#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>

Folder_Tree_View::Folder_Tree_View(QWidget *parent) : QTreeView(parent)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(false);
    header()->setResizeContentsPrecision(0); // the rows on screen
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &Folder_Tree_View::Widen);
}

void Folder_Tree_View::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    QScrollBar &across = *horizontalScrollBar();
    const int before = across.value();
    QTreeView::scrollTo(index, hint);
    Widen();
    QTreeView::updateGeometries(); // the range of the bar, at once
    across.setValue(before);
    const QRect node = visualRect(index);
    if (!node.isValid())
        return;
    const int end = node.left() + sizeHintForIndex(index).width();
    const int shown = node.left() - indentation(); // its branch too
    if (shown < 0)
        across.setValue(across.value() + shown);
    else if (end > viewport()->width())
        across.setValue(across.value() + std::min(end - viewport()->width(), shown));
}

void Folder_Tree_View::updateGeometries()
{
    Fit(0);
    QTreeView::updateGeometries();
}

/// While rows are scrolled by, the column only grows: names would move under the pointer.
void Folder_Tree_View::Widen()
{
    Fit(columnWidth(0));
}

void Folder_Tree_View::Fit(int least)
{
    if (header()->count() > 0)
        header()->resizeSection(0, std::max({viewport()->width(), sizeHintForColumn(0), least}));
}
