// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"
#include "ui/tools/kept_note.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_Note;
}

/// The quick note: a small window that is there at once, whatever the main window does. Ctrl+Enter stores the note in
/// the folder for what arrives; put away with Esc, it keeps its text.
class Frm_Note : public QDialog
{
    Q_OBJECT

public:
    Frm_Note();
    ~Frm_Note() override;

    /// Shows it in front, ready to be typed in, also while another window of the program waits for an answer.
    void Call();
    /// Writes what is typed as a draft.
    void Keep();

signals:
    void Stored(const QString &code_id, const QString &folder);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void Cmd_Save_Click();
    void Tell(const QString &trouble);

    std::unique_ptr<Ui::Frm_Note> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_Note")};
    std::unique_ptr<Kept_Note> m_kept;
};
