// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_Transfer_Conflicts;
}

/// Says before a transfer which documents would come under a foreign name, and asks whether it goes on.
class Frm_Transfer_Conflicts : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Transfer_Conflicts(const QStringList &lines, QWidget *parent = nullptr);
    ~Frm_Transfer_Conflicts() override;

private:
    void Cmd_Save_Click();

    std::unique_ptr<Ui::Frm_Transfer_Conflicts> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_Transfer_Conflicts")};
};
