// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/frm_nodes_search.h"

#include "platform/models/plain_tip.h"
#include "tree/folder_search.h"
#include "ui_frm_nodes_search.h"

#include <QKeyEvent>

Frm_Nodes_Search::Frm_Nodes_Search(const Tree_Model &tree, QWidget *parent)
    : QDialog(parent), m_tree(tree), m_ui(std::make_unique<Ui::Frm_Nodes_Search>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->LV->setAccessibleName(windowTitle());
    m_ui->LV->setColumnWidth(0, fontMetrics().averageCharWidth() * 8);
    m_ui->LV->setColumnWidth(1, fontMetrics().averageCharWidth() * 26);
    m_ui->LV->installEventFilter(this);
    m_ui->Txt_Find->setFocus();
    connect(m_ui->Cmd_Find, &QPushButton::clicked, this, &Frm_Nodes_Search::Cmd_Find_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_Nodes_Search::close);
    connect(m_ui->LV, &QTreeWidget::itemDoubleClicked, this, &Frm_Nodes_Search::Pick);
}

Frm_Nodes_Search::~Frm_Nodes_Search() = default;

/// Enter in the list picks a row; the default button must not search again under it.
bool Frm_Nodes_Search::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_ui->LV || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<const QKeyEvent *>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    Pick(m_ui->LV->currentItem());
    return true;
}

void Frm_Nodes_Search::Cmd_Find_Click()
{
    if (m_ui->Txt_Find->text().trimmed().isEmpty())
        return;
    m_ui->LV->clear();
    int number = 0;
    for (const Found_Folder &found : Find_Folders(m_tree, m_ui->Txt_Find->text(), m_ui->Chk_Para_Full->isChecked())) {
        auto *row = new QTreeWidgetItem(m_ui->LV, {QString::number(++number), found.name, found.path});
        row->setData(0, Qt::UserRole, found.key);
        row->setToolTip(2, Plain_Tip(found.path));
    }
    m_ui->Lab_Found->setText(Lang.GetString("_Found").arg(number));
    if (number > 0) {
        m_ui->LV->setCurrentItem(m_ui->LV->topLevelItem(0));
        m_ui->LV->setFocus();
    }
}

void Frm_Nodes_Search::Pick(const QTreeWidgetItem *row)
{
    if (row != nullptr)
        emit Folder_Picked(row->data(0, Qt::UserRole).toString());
}
