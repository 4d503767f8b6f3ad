// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/config_page.h"
#include "ui/kit/ctrl_language.h"
#include "ui/tools/hand_keys.h"

#include <memory>

namespace Ui
{
class Page_Hand;
}

/// The options of what is at hand while the window is out of sight: the keys, whether they are really bound, where what
/// arrives is stored, and the address of the newest version.
class Page_Hand : public Config_Page
{
    Q_OBJECT

public:
    explicit Page_Hand(QWidget *parent = nullptr);
    ~Page_Hand() override;

    [[nodiscard]] bool Is_Changed() const override;
    void Save() override;

private:
    [[nodiscard]] Hot_Keys::Combination Typed(Hand_Keys::Key key) const;
    void Show_Key(Hand_Keys::Key key);
    void Show_Standings();
    void Show_Commands();
    [[nodiscard]] QString Period() const;
    void Save_Keys();
    template <class Control>
    [[nodiscard]] Control &Of(const char *name, Hand_Keys::Key key) const;

    std::unique_ptr<Ui::Page_Hand> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Page_Hand")};
};
