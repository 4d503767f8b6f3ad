// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

class Text_Editor;
namespace Ui
{
class Frm_Insert_Table;
}

/// Asks how large a table is to be and puts it at the editor's cursor.
class Frm_Insert_Table : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Insert_Table(Text_Editor &editor, QWidget *parent = nullptr);
    ~Frm_Insert_Table() override;

private:
    std::unique_ptr<Ui::Frm_Insert_Table> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_Insert_Table")};
};
