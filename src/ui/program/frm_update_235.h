// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_Update_235;
}

/// The one-time upgrade of a database from before the compressed contents. Accepted, and App().Update_235_Done set:
/// the database was upgraded.
class Frm_Update_235 : public QDialog
{
    Q_OBJECT

public:
    /// @param connStr  the database; "" for the current one
    explicit Frm_Update_235(QWidget *parent = nullptr, const QString &connStr = {});
    ~Frm_Update_235() override;

    /// Leaving waits while the upgrade runs.
    void reject() override;

private:
    void Load_Lang();
    void Show_Total();
    void Cmd_UpDate_Click();
    void Set_Running(bool running);

    std::unique_ptr<Ui::Frm_Update_235> m_ui;
    QString m_connStr;
    qint64 m_total = 0;
    bool m_running = false;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_Update_235")};
};
