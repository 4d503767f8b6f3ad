// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_Nodes_Pass;
}

/// Sets, changes or clears the password of a folder.
class Frm_Nodes_Pass : public QDialog
{
    Q_OBJECT

public:
    Frm_Nodes_Pass(QString id, const QString &name, QWidget *parent = nullptr);
    ~Frm_Nodes_Pass() override;

private:
    void Cmd_Save_Click();
    void Save();

    QString m_id;
    std::unique_ptr<Ui::Frm_Nodes_Pass> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_Nodes_Pass")};
};
