// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

class QPrinter;
class QPrintPreviewWidget;
class QTextDocument;
namespace Ui
{
class Frm_Print;
}

/// Shows a document's pages as they come out of the printer, prints them or writes them as PDF.
class Frm_Print : public QDialog
{
    Q_OBJECT

public:
    /// @param title  names the job and the PDF file
    Frm_Print(const QTextDocument &document, const QString &title, QWidget *parent = nullptr);
    ~Frm_Print() override;

    /// Asks for a file and writes the document as PDF. @returns false when nothing was written
    static bool Save_Pdf(const QTextDocument &document, const QString &title);

private:
    void Load_Lang();
    void Set_Up_Printers();
    void Add_Preview();
    void Choose_Printer(const QString &name);
    void Show_Page();
    void Print_Pages();

    std::unique_ptr<Ui::Frm_Print> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_Print")};
    const QTextDocument &m_document;
    QString m_title;
    std::unique_ptr<QPrinter> m_printer;
    QPrintPreviewWidget *m_preview = nullptr;
};
