// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

class Text_Editor;
namespace Ui
{
class Frm_SpecChar;
}

/// Characters that a keyboard lacks, put at the editor's cursor one after the other. It stays open until it is closed.
class Frm_SpecChar : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_SpecChar(Text_Editor &editor, QWidget *parent = nullptr);
    ~Frm_SpecChar() override;

private:
    void Show_Group(int group);
    void Show_Code();
    void Insert();

    std::unique_ptr<Ui::Frm_SpecChar> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_SpecChar")};
    Text_Editor &m_editor;
};
