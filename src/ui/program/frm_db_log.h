// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_DbLog;
}

/// Shows the lines of the system log of one user, or of all, between two days.
class Frm_DbLog : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_DbLog(QWidget *parent = nullptr);
    ~Frm_DbLog() override;

private:
    void Load_Lang();
    void Show_Columns();
    void Offer_Users_And_Dates();
    void Cmd_Apply_Click();
    void Fill_List();

    std::unique_ptr<Ui::Frm_DbLog> m_ui;
    List_Model m_lines;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_DbLog")};
};
