// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

class Text_Editor;
namespace Ui
{
class Frm_Picture_Size;
}

/// Gives the selected picture another size, which keeps its proportions unless the user says else.
class Frm_Picture_Size : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Picture_Size(Text_Editor &editor, QWidget *parent = nullptr);
    ~Frm_Picture_Size() override;

private:
    void Keep_Proportions(bool widthLeads);

    std::unique_ptr<Ui::Frm_Picture_Size> m_ui;
    double m_proportion = 1; ///< width to height
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_Picture_Size")};
};
