// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>
#include <vector>

class QCheckBox;
namespace Ui
{
class Frm_ListView_Para;
}

/// Chooses the columns that the document list shows, among those kept in the settings.
class Frm_ListView_Para : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_ListView_Para(QWidget *parent = nullptr);
    ~Frm_ListView_Para() override;

signals:
    /// ListViewPara was written.
    void Columns_Changed();

private:
    void Show_Columns();
    void Check(const std::vector<int> &widths);
    void Cmd_Update();

    std::unique_ptr<Ui::Frm_ListView_Para> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_ListView_Para")};
    std::vector<QCheckBox *> m_boxes; ///< Chk_ListViewPara, one for each column
    std::vector<int> m_widths;        ///< of the columns as they were, in twips; 0 for a hidden one
};
