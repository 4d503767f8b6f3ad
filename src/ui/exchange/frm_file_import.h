// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/directory_import.h"
#include "platform/models/list_model.h"
#include "platform/models/tree_model.h"
#include "ui/kit/ctrl_language.h"
#include "ui/kit/tick_model.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_FileImport;
}

/// Turns the files below a directory into documents of a folder, in five steps.
class Frm_FileImport : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_FileImport(QWidget *parent = nullptr);
    ~Frm_FileImport() override;

    /// Shows a directory's files in the third step.
    void Search();

signals:
    /// Documents came into the folders.
    void Imported();

private:
    void Modify_Step(int step);
    void Choose_Target();
    void Choose_Directory();
    void Show_Found();
    void Cmd_Import_Click();
    [[nodiscard]] QStringList Ticked_Paths() const;
    void Offer_To_Leave_Out_Known();
    void Ask_For_Report(const Import_Result &result);

    std::unique_ptr<Ui::Frm_FileImport> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_FileImport")};
    Tree_Model m_tree;
    List_Model m_files;
    Tick_Model m_ticks{m_files};
    Directory_Import m_plan;
    int m_step = 0;
};
