// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"
#include "ui/tools/kept_note.h"

#include <QDialog>
#include <memory>

class QImage;
class QMimeData;
namespace Ui
{
class Frm_OnTop_Drop;
}

/// What was dropped on the floating window, before it becomes a document: its title, its folder, its text.
class Frm_OnTop_Drop : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_OnTop_Drop(QWidget *parent = nullptr);
    ~Frm_OnTop_Drop() override;

    /// Takes text, rich text, pages, pictures and addresses.
    void Take(const QMimeData &content);
    void Take_Picture(const QImage &picture, const QString &title);
    [[nodiscard]] bool Is_Empty() const { return m_kept->Is_Empty(); }

    /// What is typed is given up after a question only.
    void reject() override;

signals:
    void Stored(const QString &code_id, const QString &folder, const QString &status);

private:
    void Take_Address(const QMimeData &content);
    void Taken();
    void Cmd_Save_Click();

    std::unique_ptr<Ui::Frm_OnTop_Drop> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_OnTop_Drop")};
    std::unique_ptr<Kept_Note> m_kept;
};
