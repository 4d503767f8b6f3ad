// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

class Text_Editor;
namespace Ui
{
class frm_GoTo;
}

/// Asks for a line of an editor and goes there. A line is a paragraph: what the text is broken into for the width of
/// the window has no number that would last.
class frm_GoTo : public QDialog
{
    Q_OBJECT

public:
    explicit frm_GoTo(Text_Editor &editor, QWidget *parent = nullptr);
    ~frm_GoTo() override;

private:
    void cmdOK_Click();

    std::unique_ptr<Ui::frm_GoTo> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("frm_GoTo")};
    Text_Editor &m_editor;
};
