// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

class QTreeWidgetItem;
namespace Ui
{
class Frm_Nodes_Search;
}

/// Finds folders of the main tree by name; stays open beside the main window.
class Frm_Nodes_Search : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Nodes_Search(const Tree_Model &tree, QWidget *parent = nullptr);
    ~Frm_Nodes_Search() override;

signals:
    /// The user picked a row: key of its node.
    void Folder_Picked(const QString &key);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Cmd_Find_Click();
    void Pick(const QTreeWidgetItem *row);

    const Tree_Model &m_tree;
    std::unique_ptr<Ui::Frm_Nodes_Search> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_Nodes_Search")};
};
