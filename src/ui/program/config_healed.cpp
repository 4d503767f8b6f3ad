// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/config_healed.h"

#include "core/language_pack.h"
#include "core/settings.h"
#include "ui/kit/view_look.h"
#include "ui/program/config_words.h"
#include "ui/program/program_config_pages.h"

#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{
constexpr int Margin = 16, Space = 8;
}

Config_Page *Program_Pages::Make_Healed(QWidget *parent)
{
    return new Config_Healed(parent);
}

Config_Healed::Config_Healed(QWidget *parent)
    : Config_Page(parent), m_words(new QLabel(this)), m_list(new QTreeWidget(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Margin, Space, Margin, Margin);
    layout->setSpacing(Space);
    m_words->setWordWrap(true);
    m_list->setObjectName(QStringLiteral("Lsv_Healed"));
    m_list->setRootIsDecorated(false);
    m_list->setHeaderLabels({QStringLiteral("设置"), QStringLiteral("文件中的值"), QStringLiteral("现在的值")});
    layout->addWidget(m_words);
    layout->addWidget(m_list, 1);
    layout->addStretch();
}

void Config_Healed::Show_Settings()
{
    const QList<Healed_Setting> &healed = Healed_Settings();
    m_words->setText(Pack_Text("Frm_Config", healed.isEmpty() ? "_Nothing_Healed" : "_Healed"));
    m_list->setVisible(!healed.isEmpty());
    m_list->setAccessibleName(m_words->text());
    m_list->clear();
    for (const Healed_Setting &one : healed)
        new QTreeWidgetItem(m_list,
                            {one.key, one.before.isEmpty() ? Pack_Text("Frm_Config", "_Empty") : one.before, one.now});
    for (int column = 0; column < m_list->columnCount(); ++column)
        Fit_Column(*m_list, column);
}

QList<Config_Hit> Config_Healed::Find(const Config_Words &words, const QString &text) const
{
    return words.Answer({QStringLiteral("Pag_Healed"), QStringLiteral("Lsv_Healed")}, text)
               ? QList<Config_Hit>{{m_list}}
               : QList<Config_Hit>();
}
