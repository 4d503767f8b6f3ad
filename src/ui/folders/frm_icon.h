// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Icon_Form;
}

/// Lets the user choose one of the icons in data\ico\, and add a picture to them.
class Frm_icon : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_icon(const QString &icon, QWidget *parent = nullptr);
    ~Frm_icon() override;

    /// Name of the icon that was chosen.
    [[nodiscard]] QString Icon() const;

private:
    void Cmd_Add_Click();

    std::unique_ptr<Ui::Icon_Form> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_icon")};
};
