// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_User_Change_PWD;
}

/// Changes the password of the user who is logged in.
class Frm_User_Change_PWD : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_User_Change_PWD(QWidget *parent = nullptr);
    ~Frm_User_Change_PWD() override;

private:
    void Cmd_Apply_Click();
    void Change();

    std::unique_ptr<Ui::Frm_User_Change_PWD> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_User_Change_PWD")};
};
