// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/book_export.h"
#include "platform/models/tree_model.h"
#include "ui/exchange/selection_lists.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

namespace Ui
{
class Frm_DataExport_Node_Exe;
}

/// Makes a book of chosen documents: an executable of its own, or an EPUB.
class Frm_DataExport_Node_Exe : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_DataExport_Node_Exe(QWidget *parent = nullptr);
    ~Frm_DataExport_Node_Exe() override;

private:
    void Fill_Folders();
    void List_Folder();
    void Follow_Format();
    void Cmd_Browse_Click();
    void Cmd_Export_Click();
    [[nodiscard]] bool Is_Ready();
    [[nodiscard]] bool Is_Epub() const;
    [[nodiscard]] QList<Book_Row> Chosen() const;
    [[nodiscard]] Book_Result Export(const QString &path);
    void Tell(const Book_Result &result, const QString &path);
    void Open_Book(const QString &path);
    [[nodiscard]] QString Report_Of(const Book_Result &result) const;
    [[nodiscard]] QString Listed(const char *key, const QStringList &lines) const;
    void Refuse(const QString &text, QWidget *focus = nullptr) const;

    std::unique_ptr<Ui::Frm_DataExport_Node_Exe> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_DataExport_Node_Exe")};
    Tree_Model m_tree;
    std::unique_ptr<Selection_Lists> m_lists;
};
