// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/directory_export.h"
#include "platform/models/tree_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

class QFileSystemModel;
namespace Ui
{
class Frm_DataExport_Node_Files;
}

/// Writes the documents of a folder and of those below it to a directory, in their own formats.
class Frm_DataExport_Node_Files : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_DataExport_Node_Files(QWidget *parent = nullptr);
    ~Frm_DataExport_Node_Files() override;

private:
    void Fill_Drives();
    void Show_Directory(const QString &path);
    void Cmd_Export_Click();
    [[nodiscard]] Export_Questions Questions();
    void Tell(const Export_Result &result);

    std::unique_ptr<Ui::Frm_DataExport_Node_Files> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_DataExport_Node_Files")};
    Tree_Model m_tree;
    QFileSystemModel *m_directories;
    QString m_node; ///< id of the picked folder
    QString m_path;
};
