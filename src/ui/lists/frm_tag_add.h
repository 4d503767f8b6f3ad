// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_TagAdd;
}

/// Makes tags: one, or several with blanks between them.
class Frm_TagAdd : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_TagAdd(QWidget *parent = nullptr);
    ~Frm_TagAdd() override;

signals:
    void Tags_Added();

private:
    void Cmd_New_Click();

    std::unique_ptr<Ui::Frm_TagAdd> m_ui;
    List_Model m_tags;
    ctrlLanguage m_lang;
};
