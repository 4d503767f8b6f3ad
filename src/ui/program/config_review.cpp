// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/config_review.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/trouble.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/view_look.h"
#include "ui/program/config_words.h"
#include "ui/program/program_config_pages.h"
#include "ui_config_review.h"

#include <QScopedValueRollback>

namespace
{
QString Text(const char *key)
{
    return Pack_Text("Frm_Config", key);
}

void Tell(const QString &text)
{
    Prompts::Message(text, App().App_Title, Prompts::Icon::Exclamation);
}

QString Factor_Text(float factor)
{
    constexpr int Digits = 3;
    return QString::number(static_cast<double>(factor), 'g', Digits);
}
} // namespace

Config_Page *Program_Pages::Make_Review(QWidget *parent)
{
    return new Config_Review(parent);
}

Config_Review::Config_Review(QWidget *parent) : Config_Page(parent), m_ui(std::make_unique<Ui::Config_Review>())
{
    m_ui->setupUi(this);
    connect(m_ui->Lsv_Gene, &QTreeWidget::currentItemChanged, this, &Config_Review::Show_Group);
    connect(m_ui->Lsv_Gene, &QTreeWidget::itemChanged, this, &Config_Review::Check_One);
    connect(m_ui->Cmd_Gene_Add, &QPushButton::clicked, this, [this] { Put(-1); });
    connect(m_ui->Cmd_Gene_Mod, &QPushButton::clicked, this, [this] { Put(Row()); });
    connect(m_ui->Cmd_Gene_Del, &QPushButton::clicked, this, &Config_Review::Delete);
}

Config_Review::~Config_Review() = default;

void Config_Review::Show_Settings()
{
    for (QPushButton *button : findChildren<QPushButton *>())
        button->setAutoDefault(false);
    m_ui->Lsv_Gene->setAccessibleName(Text("_Groups"));
    if (!m_groups.Load())
        Tell(Last_Trouble());
    m_changed = false;
    Fill(0);
}

int Config_Review::Row() const
{
    return m_ui->Lsv_Gene->indexOfTopLevelItem(m_ui->Lsv_Gene->currentItem());
}

void Config_Review::Fill(int row)
{
    {
        const QScopedValueRollback filling(m_filling, true);
        m_ui->Lsv_Gene->clear();
        int number = 0;
        for (const Review_Group &group : m_groups.Groups()) {
            auto *item = new QTreeWidgetItem(m_ui->Lsv_Gene, {group.name, Factor_Text(group.factor), group.period});
            item->setCheckState(0, number++ == m_groups.Checked() ? Qt::Checked : Qt::Unchecked);
        }
        m_ui->Lsv_Gene->setCurrentItem(m_ui->Lsv_Gene->topLevelItem(row));
    }
    for (int column = 0; column < m_ui->Lsv_Gene->columnCount(); ++column)
        Fit_Column(*m_ui->Lsv_Gene, column);
    Show_Group();
}

void Config_Review::Show_Group()
{
    const int row = Row();
    m_ui->Cmd_Gene_Mod->setEnabled(row >= 0);
    m_ui->Cmd_Gene_Del->setEnabled(row >= 0);
    if (m_filling)
        return;
    const Review_Group group = row < 0 ? Review_Group() : m_groups.Groups()[static_cast<size_t>(row)];
    m_ui->Txt_Gene_Name->setText(group.name);
    m_ui->Txt_Gene_Num->setText(row < 0 ? QString() : Factor_Text(group.factor));
    const int period = m_ui->Cob_Gene_Num->findText(group.period, Qt::MatchStartsWith);
    m_ui->Cob_Gene_Num->setCurrentIndex(row < 0 ? 0 : period);
}

/// One group is the default: a tick takes away the other one, and cannot be taken away itself.
void Config_Review::Check_One()
{
    if (m_filling)
        return;
    const QScopedValueRollback filling(m_filling, true);
    for (int row = 0; row < m_ui->Lsv_Gene->topLevelItemCount(); ++row) {
        if (m_ui->Lsv_Gene->topLevelItem(row)->checkState(0) == Qt::Checked && row != m_groups.Checked()) {
            m_groups.Check(row);
            m_changed = true;
            break;
        }
    }
    for (int row = 0; row < m_ui->Lsv_Gene->topLevelItemCount(); ++row)
        m_ui->Lsv_Gene->topLevelItem(row)->setCheckState(0, row == m_groups.Checked() ? Qt::Checked : Qt::Unchecked);
    emit Edited();
}

void Config_Review::Put(int row)
{
    const Group_Refusal refusal =
        m_groups.Put(row, m_ui->Txt_Gene_Name->text(), m_ui->Txt_Gene_Num->text(), m_ui->Cob_Gene_Num->currentText());
    if (refusal != Group_Refusal::None) {
        Tell(Refusal_Text(refusal));
        return m_ui->Txt_Gene_Name->setFocus();
    }
    m_changed = true;
    Fill(row < 0 ? static_cast<int>(m_groups.Groups().size()) - 1 : row);
    emit Edited();
}

void Config_Review::Delete()
{
    const QString name = m_ui->Txt_Gene_Name->text().trimmed();
    if (name.isEmpty())
        return Tell(Text("_InputName"));
    if (Prompts::Ask(Text("_IsDelete") + name, App().App_Title, Prompts::Choice::Yes_No, Prompts::Answer::No) !=
        Prompts::Answer::Yes)
        return;
    const Group_Refusal refusal = m_groups.Delete(Row());
    if (refusal == Group_Refusal::None)
        return Fill(-1);
    Tell((refusal == Group_Refusal::In_Use ? name : QString()) + Refusal_Text(refusal));
}

void Config_Review::Save()
{
    if (!m_groups.Apply())
        throw Run_Time_Error(Error_Number::Path_Access, Last_Trouble());
    m_changed = false;
}

QList<Config_Hit> Config_Review::Find(const Config_Words &words, const QString &text) const
{
    QStringList names{QStringLiteral("Gene")};
    for (const Review_Group &group : m_groups.Groups())
        names << group.name;
    return words.Answer({QStringLiteral("Pag_Review"), QStringLiteral("Lab_Gene"), QStringLiteral("Lsv_Gene")}, text,
                        names)
               ? QList<Config_Hit>{{m_ui->Lsv_Gene}}
               : QList<Config_Hit>();
}
