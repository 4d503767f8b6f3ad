// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/command_keys.h"
#include "ui/kit/config_page.h"

#include <memory>

class QTreeWidgetItem;
namespace Ui
{
class Config_Keys;
}

/// All commands with their keys. Keys that another command has are given to this one only when the user says so; until
/// then nothing has changed for either, nor for any other change.
class Config_Keys : public Config_Page
{
    Q_OBJECT

public:
    explicit Config_Keys(QWidget *parent = nullptr);
    ~Config_Keys() override;

    void Show_Settings() override;
    void Show_Defaults() override;
    [[nodiscard]] bool Has_Defaults() const override { return true; }
    [[nodiscard]] bool Is_Changed() const override { return !m_changes.isEmpty(); }
    void Save() override;
    [[nodiscard]] QList<Config_Hit> Find(const Config_Words &words, const QString &text) const override;

private:
    using Keys = Command_Keys::Keys;

    void Fill();
    void Show_Command();
    void Filter();
    /// The keys of the chosen command, unless another one has them.
    void Want(const Keys &keys);
    void Take();
    void Assign(const QString &name, const Keys &keys);
    void Show_Conflict(const QString &text, bool canTake);
    [[nodiscard]] Keys Of(const QString &name) const;
    [[nodiscard]] QList<Command_Keys::Command> Owners(const Command_Keys::Command &wanting, const Keys &keys) const;
    [[nodiscard]] const Command_Keys::Command *Chosen() const;

    std::unique_ptr<Ui::Config_Keys> m_ui;
    QList<Command_Keys::Command> m_commands;
    QHash<QString, Keys> m_changes; ///< not saved yet
    Keys m_wanted;                  ///< that another command has
};
