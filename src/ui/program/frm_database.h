// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <functional>
#include <memory>

namespace Ui
{
class Frm_Database;
}
struct Database_Choice;

/// Chooses the database that the program works with. The result is Accepted when a database was set. With no window
/// behind it (the program could not start) it closes once that is done.
class Frm_Database : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Database(QWidget *parent = nullptr);
    ~Frm_Database() override;

    /// Asked before another database is set; none, or true, lets it happen.
    std::function<bool()> May_Change;

    void done(int result) override;

signals:
    /// Another database is in force: whatever shows the former one's tree and lists has to read them again.
    void Database_Changed();

protected:
    bool event(QEvent *event) override;

private:
    void Load_Lang();
    void Show_Choice(const Database_Choice &choice);
    [[nodiscard]] Database_Choice Typed_Choice() const;
    void Show_Kind();
    void Show_Source_File();
    void Chk_Path_Click();
    void Cmd_BrowseDateBase_Click();
    void Cmd_Server_Click();
    void Cmd_ODBC_Click();
    void Cmd_Default_Click();
    void Cmd_Apply_Click();

    std::unique_ptr<Ui::Frm_Database> m_ui;
    bool m_changed = false;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_Database")};
};
