// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeView>

/// A tree of folders of any depth: its column is as wide as the rows on screen need, so that every name can be scrolled
/// to, and at least as wide as the view.
class Folder_Tree_View : public QTreeView
{
    Q_OBJECT

public:
    explicit Folder_Tree_View(QWidget *parent = nullptr);

    /// Brings the name itself into view, and of what stands before it as much as there is room for.
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

protected:
    void updateGeometries() override;

private:
    void Widen();
    void Fit(int least);
};
