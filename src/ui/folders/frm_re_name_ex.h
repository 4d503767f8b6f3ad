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

/// Changes name, icon, remark and expanded state of a folder, or name and icon of the root.
class Frm_ReName_Ex : public QDialog
{
    Q_OBJECT

public:
    Frm_ReName_Ex(Tree_Model &tree, int node, QWidget *parent = nullptr);
    ~Frm_ReName_Ex() override;

    [[nodiscard]] QString New_Name() const;

signals:
    /// The database refused; Folder_Trouble tells why.
    void Failed();

private:
    void Show_Folder();
    void Cmd_OK_Click();
    void Refuse(const QString &text);

    Tree_Model &m_tree;
    int m_node;
    QString m_id;
    QString m_oldName;
    std::unique_ptr<Ui::Folder_Form> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_ReName_Ex")};
};
