// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/stored_version.h"

#include "core/language_pack.h"
#include "documents/document_reading.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>

void Show_Stored_Version(const QString &code_id, QWidget *owner)
{
    QDialog box(owner);
    box.setObjectName(QStringLiteral("Frm_Stored_Version"));
    QTextDocument content, memo, sum;
    Document_Form form;
    form.content = &content;
    form.memo = &memo;
    form.sum = &sum;
    if (!GetCodeContent_Ex(code_id, form))
        return;
    box.setWindowTitle(Pack_Text("Frm_Doc_Standard", "_Other_Version") + form.title);
    auto *text = new QTextEdit(&box);
    text->setReadOnly(true);
    text->setDocument(&content);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &box);
    buttons->button(QDialogButtonBox::Ok)->setText(Pack_Text("Buttons", "_Ok"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
    auto *layout = new QVBoxLayout(&box);
    layout->addWidget(text);
    layout->addWidget(buttons);
    box.resize(720, 480);
    box.exec();
}
