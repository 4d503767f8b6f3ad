// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"
#include "ui/kit/left_page.h"

class QTreeView;
class Row_Choice;

/// The page of hot lists and of what is due for review.
class Hot_Pane : public Left_Page
{
    Q_OBJECT

public:
    Hot_Pane(Shell &shell, QWidget *parent);

    /// Selects a node and lists its documents.
    void Choose(const QString &nodeKey);

protected:
    void Fill() override;
    void List_Chosen() override;

private:
    void Select(const QString &nodeKey);

    Tree_Model m_nodes;
    QTreeView *m_view = nullptr;
    Row_Choice *m_choice = nullptr;
};
