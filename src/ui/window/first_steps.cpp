// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/first_steps.h"

#include "core/language_pack.h"
#include "ui/kit/dialog_finish.h"
#include "ui/kit/icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

First_Steps::First_Steps(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("First_Steps"));
    struct Step {
        const char *name;
        const char *caption;
        const char *icon;
        void (First_Steps::*wanted)();
    };
    static constexpr Step steps[] = {
        {"Cmd_First_Note", "_First_Note", "new", &First_Steps::Note_Wanted},
        {"Cmd_First_Files", "_First_Files", "import", &First_Steps::Files_Wanted},
        {"Cmd_First_Database", "_First_Database", "database", &First_Steps::Database_Wanted}};
    constexpr int Icon_Side = 40;
    constexpr QSize Least(188, 132);
    auto *title = new QLabel(Pack_Text("Frm_Main", "_First_Title"), this);
    title->setProperty("heading", true);
    auto *hint = new QLabel(Pack_Text("Frm_Main", "_First_Hint"), this);
    hint->setProperty("quiet", true);
    auto *row = new QHBoxLayout;
    row->setSpacing(Distance::Edge);
    row->addStretch();
    for (const Step &step : steps) {
        auto *button = new QToolButton(this);
        button->setObjectName(QLatin1String(step.name));
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setIcon(Line_Icon(QLatin1String(step.icon)));
        button->setIconSize(QSize(Icon_Side, Icon_Side));
        button->setText(Pack_Text("Frm_Main", step.caption));
        button->setMinimumSize(Least);
        button->setFocusPolicy(Qt::StrongFocus);
        connect(button, &QToolButton::clicked, this, step.wanted);
        row->addWidget(button);
    }
    row->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setSpacing(Distance::Group);
    column->addStretch(2);
    column->addWidget(title, 0, Qt::AlignHCenter);
    column->addWidget(hint, 0, Qt::AlignHCenter);
    column->addSpacing(Distance::Group);
    column->addLayout(row);
    column->addStretch(3);
}
