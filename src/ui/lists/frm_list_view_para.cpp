// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/frm_list_view_para.h"

#include "core/config_store.h"
#include "ui_frm_list_view_para.h"
#include "views/column_setup.h"
#include "views/list_columns.h"

#include <QCheckBox>
#include <algorithm>

namespace
{
constexpr int Boxes_In_A_Row = 3;
constexpr Kept_Value Widths{"Col", "ListViewPara"};

std::vector<int> Kept_Widths()
{
    const QString kept = Widths.Read();
    return kept.isEmpty() ? First_Widths() : Widths_From_Text(kept);
}
} // namespace

Frm_ListView_Para::Frm_ListView_Para(QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_ListView_Para>()), m_widths(Kept_Widths())
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    Show_Columns();
    Check(m_widths);
    connect(m_ui->Cmd_Default, &QPushButton::clicked, this, [this] {
        m_widths = First_Widths();
        Check(m_widths);
    });
    connect(m_ui->Cmd_Update, &QPushButton::clicked, this, &Frm_ListView_Para::Cmd_Update);
    connect(m_ui->Cmd_Close, &QPushButton::clicked, this, &QDialog::reject);
}

Frm_ListView_Para::~Frm_ListView_Para() = default;

void Frm_ListView_Para::Show_Columns()
{
    const std::vector<List_Column> columns = Captioned_Columns();
    const int rows = (static_cast<int>(columns.size()) + Boxes_In_A_Row - 1) / Boxes_In_A_Row;
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        auto *box = new QCheckBox(columns[static_cast<size_t>(i)].caption, this);
        box->setObjectName(QStringLiteral("Chk_ListViewPara_%1").arg(i));
        m_ui->gridColumns->addWidget(box, i % rows, i / rows);
        m_boxes.push_back(box);
    }
    if (!m_boxes.empty())
        m_boxes.front()->setFocus();
}

void Frm_ListView_Para::Check(const std::vector<int> &widths)
{
    for (size_t i = 0; i < m_boxes.size(); ++i)
        m_boxes[i]->setChecked(widths[i] > 0);
}

void Frm_ListView_Para::Cmd_Update()
{
    const std::vector<int> initial = Initial_Widths();
    std::vector<int> widths;
    for (size_t i = 0; i < m_boxes.size(); ++i) {
        const int shown = m_widths[i] > 0 ? m_widths[i] : initial[i];
        widths.push_back(m_boxes[i]->isChecked() ? shown : 0);
    }
    Widths.Keep(Numbers_To_Text(widths));
    emit Columns_Changed();
}
