// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/writing/frm_print.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/printing.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/icons.h"
#include "ui_frm_print.h"

#include <QDir>
#include <QFileInfo>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>

namespace
{
constexpr Kept_Value Pdf_Path{"Page", "PdfPath"};
} // namespace

Frm_Print::Frm_Print(const QTextDocument &document, const QString &title, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Print>()), m_document(document), m_title(title),
      m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution))
{
    m_ui->setupUi(this);
    Load_Lang();
    Add_Preview();
    Set_Up_Printers();
    connect(m_ui->Cmd_Print, &QPushButton::clicked, this, &Frm_Print::Print_Pages);
    connect(m_ui->Cmd_Pdf, &QPushButton::clicked, this, [this] { Save_Pdf(m_document, m_title); });
    connect(m_ui->Cmd_Close, &QPushButton::clicked, this, &QDialog::reject);
}

Frm_Print::~Frm_Print() = default;

bool Frm_Print::Save_Pdf(const QTextDocument &document, const QString &title)
{
    const QString folder = Pdf_Path.Read();
    const QString name = Files::Name_For(title, Pack_Text("Frm_Doc_Standard", "_NewDoc")) + QStringLiteral(".pdf");
    const QString path =
        Prompts::Save_File(Pack_Text("Frm_Print", "_Save_Pdf"), folder.isEmpty() ? name : QDir(folder).filePath(name),
                           QStringLiteral("PDF (*.pdf)|*.pdf"));
    if (path.isEmpty())
        return false;
    Pdf_Path.Keep(QFileInfo(path).path());
    return Trap(
        QStringLiteral("Frm_Print\\Save_Pdf"),
        [&] {
            Printing::Write_Pdf(document, path, title);
            return true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
}

void Frm_Print::Load_Lang()
{
    m_lang.LoadControlsCaption();
    struct Button_Icon {
        QToolButton *button;
        const char *icon;
    };
    const Button_Icon icons[] = {{m_ui->Cmd_Previous, "previous"},
                                 {m_ui->Cmd_Next, "next"},
                                 {m_ui->Cmd_Zoom_Out, "zoom_out"},
                                 {m_ui->Cmd_Zoom_In, "zoom_in"},
                                 {m_ui->Cmd_Fit, "fit"}};
    for (const Button_Icon &row : icons) {
        row.button->setIcon(Line_Icon(QLatin1String(row.icon)));
        row.button->setAccessibleName(row.button->toolTip());
    }
}

void Frm_Print::Set_Up_Printers()
{
    m_ui->Comb_Printer->addItems(QPrinterInfo::availablePrinterNames());
    const bool any = m_ui->Comb_Printer->count() > 0;
    if (!any)
        m_ui->Comb_Printer->addItem(m_lang.GetString("_No_Printer"));
    for (QWidget *control : std::initializer_list<QWidget *>{m_ui->Comb_Printer, m_ui->Cmd_Print, m_ui->Spn_Copies,
                                                             m_ui->Spn_From, m_ui->Spn_To})
        control->setEnabled(any);
    connect(m_ui->Comb_Printer, &QComboBox::textActivated, this, &Frm_Print::Choose_Printer);
    if (any) {
        m_ui->Comb_Printer->setCurrentText(QPrinterInfo::defaultPrinterName());
        Choose_Printer(m_ui->Comb_Printer->currentText());
    } else {
        m_ui->Cmd_Pdf->setDefault(true);
    }
}

void Frm_Print::Add_Preview()
{
    Printing::Set_Up_Page(*m_printer);
    m_printer->setDocName(m_title);
    m_preview = new QPrintPreviewWidget(m_printer.get(), m_ui->Pic_Preview);
    auto *room = new QVBoxLayout(m_ui->Pic_Preview);
    room->setContentsMargins(0, 0, 0, 0);
    room->addWidget(m_preview);
    connect(m_preview, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter *printer) {
        const int pages = std::max(1, Printing::Print(m_document, *printer));
        m_ui->Spn_From->setMaximum(pages);
        m_ui->Spn_To->setMaximum(pages);
        m_ui->Spn_To->setValue(pages);
    });
    connect(m_preview, &QPrintPreviewWidget::previewChanged, this, &Frm_Print::Show_Page);
    const auto turn = [this](int step) {
        return [this, step] {
            m_preview->setCurrentPage(std::clamp(m_preview->currentPage() + step, 1, m_preview->pageCount()));
            Show_Page();
        };
    };
    connect(m_ui->Cmd_Previous, &QToolButton::clicked, this, turn(-1));
    connect(m_ui->Cmd_Next, &QToolButton::clicked, this, turn(1));
    connect(m_ui->Cmd_Zoom_In, &QToolButton::clicked, this, [this] { m_preview->zoomIn(); });
    connect(m_ui->Cmd_Zoom_Out, &QToolButton::clicked, this, [this] { m_preview->zoomOut(); });
    connect(m_ui->Cmd_Fit, &QToolButton::clicked, m_preview, &QPrintPreviewWidget::fitInView);
}

void Frm_Print::Choose_Printer(const QString &name)
{
    m_printer->setPrinterName(name);
    Printing::Set_Up_Page(*m_printer);
    m_preview->updatePreview();
}

void Frm_Print::Show_Page()
{
    const int page = m_preview->currentPage(), pages = m_preview->pageCount();
    m_ui->Lab_Page->setText(QStringLiteral("%1 / %2").arg(page).arg(pages));
    m_ui->Cmd_Previous->setEnabled(page > 1);
    m_ui->Cmd_Next->setEnabled(page < pages);
}

void Frm_Print::Print_Pages()
{
    m_printer->setCopyCount(m_ui->Spn_Copies->value());
    const int from = m_ui->Spn_From->value();
    if (Printing::Print(m_document, *m_printer, {from, std::max(from, m_ui->Spn_To->value())}) > 0)
        accept();
    else
        Prompts::Message(m_lang.GetString("_Print_Failed"), App().App_Title, Prompts::Icon::Exclamation);
}
