// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_ListView_VirCate;
}

/// Edits the further folders in which a document appears.
class Frm_ListView_VirCate : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_ListView_VirCate(QString codeId, QWidget *parent = nullptr);
    ~Frm_ListView_VirCate() override;

private:
    void Form_Load();
    void Add_Item(const QString &key, const QString &name);
    void Cmd_ToRight_Click();
    void Cmd_ToLeft_Click();
    void Cmd_Apply_Click();
    void Show_Trouble();

    QString m_codeId;
    QString m_homeId;
    Tree_Model m_tree;
    std::unique_ptr<Ui::Frm_ListView_VirCate> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_ListView_VirCate")};
};
