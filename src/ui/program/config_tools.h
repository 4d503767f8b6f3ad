// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/config_page.h"
#include "ui/program/user_tools.h"

#include <memory>

namespace Ui
{
class Config_Tools;
}

/// The user's own entries in the menu of tools.
class Config_Tools : public Config_Page
{
    Q_OBJECT

public:
    explicit Config_Tools(QWidget *parent = nullptr);
    ~Config_Tools() override;

    void Show_Settings() override;
    void Show_Defaults() override;
    [[nodiscard]] bool Has_Defaults() const override { return true; }
    [[nodiscard]] bool Is_Changed() const override { return m_tools != m_stored; }
    void Save() override;
    [[nodiscard]] QList<Config_Hit> Find(const Config_Words &words, const QString &text) const override;

private:
    void Fill(int row);
    void Show_Tool();
    /// Says why what is typed is no tool, and lets only a tool be taken.
    void Check();
    void Put(int row);
    void Delete();
    void Browse();
    [[nodiscard]] int Row() const;
    [[nodiscard]] User_Tool Typed() const;

    std::unique_ptr<Ui::Config_Tools> m_ui;
    QList<User_Tool> m_tools;
    QList<User_Tool> m_stored;
};
