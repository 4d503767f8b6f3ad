// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_Server;
}
struct Server_Link;

/// Makes the link to a library on a server: what odbc.udl holds. Accepted when it was written.
class Frm_Server : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Server(QWidget *parent = nullptr);
    ~Frm_Server() override;

private:
    void Show_Link(const Server_Link &link);
    [[nodiscard]] Server_Link Typed_Link() const;
    /// Says what is missing or cannot stand in the file.
    bool Check_Link(const Server_Link &link);
    void Cmd_Test_Click();
    void Cmd_OK_Click();

    std::unique_ptr<Ui::Frm_Server> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_Server")};
};
