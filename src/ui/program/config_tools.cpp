// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/config_tools.h"

#include "core/language_pack.h"
#include "core/settings_table.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/view_look.h"
#include "ui/program/config_words.h"
#include "ui/program/program_config_pages.h"
#include "ui_config_tools.h"

#include <QFileInfo>

namespace
{
constexpr qsizetype Longest_Value = 512; // that is read back from the file

QString Text(const char *key)
{
    return Pack_Text("Frm_Config", key);
}
} // namespace

Config_Page *Program_Pages::Make_Tools(QWidget *parent)
{
    return new Config_Tools(parent);
}

Config_Tools::Config_Tools(QWidget *parent) : Config_Page(parent), m_ui(std::make_unique<Ui::Config_Tools>())
{
    m_ui->setupUi(this);
    for (QPushButton *button : findChildren<QPushButton *>())
        button->setAutoDefault(false);
    connect(m_ui->Lsv_Tools, &QTreeWidget::currentItemChanged, this, &Config_Tools::Show_Tool);
    for (QLineEdit *box : {m_ui->Txt_Tool_Name, m_ui->Txt_Tool_Path})
        connect(box, &QLineEdit::textChanged, this, &Config_Tools::Check);
    connect(m_ui->Cmd_Tool_Browse, &QPushButton::clicked, this, &Config_Tools::Browse);
    connect(m_ui->Cmd_Tool_Add, &QPushButton::clicked, this, [this] { Put(-1); });
    connect(m_ui->Cmd_Tool_Mod, &QPushButton::clicked, this, [this] { Put(Row()); });
    connect(m_ui->Cmd_Tool_Del, &QPushButton::clicked, this, &Config_Tools::Delete);
}

Config_Tools::~Config_Tools() = default;

void Config_Tools::Show_Settings()
{
    m_ui->Lsv_Tools->setAccessibleName(m_ui->Lab_Tools->text());
    m_tools = m_stored = Tools_Of_Text(Config().User_Tools);
    Fill(0);
}

void Config_Tools::Show_Defaults()
{
    m_tools.clear();
    Fill(-1);
    emit Edited();
}

int Config_Tools::Row() const
{
    return m_ui->Lsv_Tools->indexOfTopLevelItem(m_ui->Lsv_Tools->currentItem());
}

User_Tool Config_Tools::Typed() const
{
    return {m_ui->Txt_Tool_Name->text().trimmed(), m_ui->Txt_Tool_Path->text().trimmed()};
}

void Config_Tools::Fill(int row)
{
    m_ui->Lsv_Tools->clear();
    for (const User_Tool &tool : m_tools)
        new QTreeWidgetItem(m_ui->Lsv_Tools, {tool.name, tool.path});
    Fit_Column(*m_ui->Lsv_Tools, 0);
    m_ui->Lsv_Tools->setCurrentItem(m_ui->Lsv_Tools->topLevelItem(row));
    Show_Tool();
}

void Config_Tools::Show_Tool()
{
    const User_Tool tool = m_tools.value(Row());
    m_ui->Txt_Tool_Name->setText(tool.name);
    m_ui->Txt_Tool_Path->setText(tool.path);
    Check();
}

void Config_Tools::Check()
{
    const User_Tool tool = Typed();
    QString reason;
    if ((tool.name + tool.path).contains(u'|'))
        reason = Text("_Why_Sign");
    else if (!tool.path.isEmpty() && !QFileInfo::exists(Files::Native_Path(tool.path)))
        reason = Text("_Why_No_File");
    else if (Text_Of_Tools(m_tools + QList<User_Tool>{tool}).size() > Longest_Value)
        reason = Text("_Why_Many");
    m_ui->Lab_Tool_Reason->setText(reason);
    m_ui->Txt_Tool_Path->setAccessibleDescription(reason);
    const bool isTool = reason.isEmpty() && !tool.name.isEmpty() && !tool.path.isEmpty();
    m_ui->Cmd_Tool_Add->setEnabled(isTool && !m_tools.contains(tool));
    m_ui->Cmd_Tool_Mod->setEnabled(isTool && Row() >= 0 && !m_tools.contains(tool));
    m_ui->Cmd_Tool_Del->setEnabled(Row() >= 0);
}

void Config_Tools::Put(int row)
{
    if (row < 0)
        m_tools << Typed();
    else
        m_tools[row] = Typed();
    Fill(row < 0 ? static_cast<int>(m_tools.size()) - 1 : row);
    emit Edited();
}

void Config_Tools::Delete()
{
    m_tools.removeAt(Row());
    Fill(-1);
    emit Edited();
}

void Config_Tools::Browse()
{
    const QString path = Prompts::Open_File(Text("_File"), QFileInfo(Typed().path).path());
    if (!path.isEmpty())
        m_ui->Txt_Tool_Path->setText(path);
    if (!path.isEmpty() && Typed().name.isEmpty())
        m_ui->Txt_Tool_Name->setText(QFileInfo(path).completeBaseName());
}

void Config_Tools::Save()
{
    Change(Setting_Of(&Settings_Record::User_Tools), Text_Of_Tools(m_tools));
    m_stored = m_tools;
}

QList<Config_Hit> Config_Tools::Find(const Config_Words &words, const QString &text) const
{
    const QStringList controls{QStringLiteral("Pag_Tools"), QStringLiteral("Lab_Tools")};
    return words.Answer(controls, text, {QStringLiteral("User_Tools"), Text_Of_Tools(m_tools)})
               ? QList<Config_Hit>{{m_ui->Lsv_Tools}}
               : QList<Config_Hit>();
}
