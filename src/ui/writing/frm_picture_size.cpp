// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/writing/frm_picture_size.h"

#include "editor/pictures.h"
#include "editor/text_editor.h"
#include "ui_frm_picture_size.h"

#include <QSignalBlocker>

#include <cmath>

Frm_Picture_Size::Frm_Picture_Size(Text_Editor &editor, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Picture_Size>())
{
    constexpr int Largest = 10'000;
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    const QSizeF own = Pictures::Own_Size_Of(editor.textCursor());
    const auto show = [this](const QSizeF &size) {
        const QSignalBlocker width(m_ui->Spn_Width), height(m_ui->Spn_Height);
        m_ui->Spn_Width->setValue(qRound(size.width()));
        m_ui->Spn_Height->setValue(qRound(size.height()));
        m_proportion = std::max(1.0, size.width()) / std::max(1.0, size.height());
    };
    for (QSpinBox *side : {m_ui->Spn_Width, m_ui->Spn_Height}) {
        side->setMaximum(Largest);
        side->setSuffix(m_lang.GetString("_Pixels"));
    }
    show(Pictures::Size_Of(editor.textCursor()));
    connect(m_ui->Spn_Width, &QSpinBox::valueChanged, this, [this] { Keep_Proportions(true); });
    connect(m_ui->Spn_Height, &QSpinBox::valueChanged, this, [this] { Keep_Proportions(false); });
    connect(m_ui->Cmd_Original, &QPushButton::clicked, this, [show, own] { show(own); });
    m_ui->Cmd_Original->setEnabled(!own.isEmpty());
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, [this, &editor] {
        Pictures::Set_Size(editor.textCursor(), QSizeF(m_ui->Spn_Width->value(), m_ui->Spn_Height->value()));
        accept();
        editor.setFocus();
    });
}

Frm_Picture_Size::~Frm_Picture_Size() = default;

void Frm_Picture_Size::Keep_Proportions(bool widthLeads)
{
    if (!m_ui->Chk_Keep->isChecked())
        return;
    QSpinBox *other = widthLeads ? m_ui->Spn_Height : m_ui->Spn_Width;
    const QSignalBlocker blocker(other);
    other->setValue(
        qRound(widthLeads ? m_ui->Spn_Width->value() / m_proportion : m_ui->Spn_Height->value() * m_proportion));
}
