// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Folder_Form;
}

/// Makes a folder below a node, or beside it.
class Frm_AddClass_Ex : public QDialog
{
    Q_OBJECT

public:
    /// @param node  the selected node, -1 for none: the root stands in
    Frm_AddClass_Ex(Tree_Model &tree, int node, bool asSibling, QWidget *parent = nullptr);
    ~Frm_AddClass_Ex() override;

    [[nodiscard]] QString New_Id() const { return m_newId; }
    [[nodiscard]] QString New_Name() const;

signals:
    /// The database refused; Folder_Trouble tells why.
    void Failed();

private:
    void Cmd_OK_Click();
    void Refuse(const QString &text);

    Tree_Model &m_tree;
    int m_node;
    bool m_asSibling;
    QString m_newId;
    std::unique_ptr<Ui::Folder_Form> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_AddClass_Ex")};
};
