// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Icon_Form;
}

/// Gives a node of the folder tree another icon.
class Frm_Node_Icon : public QDialog
{
    Q_OBJECT

public:
    Frm_Node_Icon(Tree_Model &tree, int node, QWidget *parent = nullptr);
    ~Frm_Node_Icon() override;

signals:
    /// The database refused; Folder_Trouble tells why.
    void Failed();

private:
    void Cmd_Add_Click();
    void Cmd_Apply_Click();
    void Show_Trouble(const QString &trouble);

    Tree_Model &m_tree;
    int m_node;
    std::unique_ptr<Ui::Icon_Form> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_Node_Icon")};
};
