// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/due_button.h"

#include "core/language_pack.h"
#include "platform/machine/machine.h"
#include "platform/models/plain_tip.h"
#include "ui/kit/icons.h"
#include "views/hot.h"

#include <chrono>

using namespace std::chrono_literals;

Due_Button::Due_Button(QWidget *parent) : QToolButton(parent)
{
    setObjectName(QStringLiteral("Cmd_Due"));
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIcon(Line_Icon(QStringLiteral("calendar")));
    setToolTip(Plain_Tip(Pack_Text("Frm_Main", "_Due_Tip")));
    hide();
    m_soon.setSingleShot(true);
    m_soon.setInterval(1s);
    connect(&m_soon, &QTimer::timeout, this, &Due_Button::Count);
    // A clock and not one long wait: the machine may sleep, and its date may be set.
    connect(&m_clock, &QTimer::timeout, this, [this] {
        if (m_day != Machine::Now().date())
            Count();
    });
    m_clock.start(1min);
    Count_Soon();
    connect(this, &QToolButton::clicked, this, [this] { emit Wanted(m_node); });
}

void Due_Button::Count()
{
    m_day = Machine::Now().date();
    const Due_Counts due = Count_Due(m_day);
    m_node = due.overdue > 0 ? QStringLiteral("G_001") : QStringLiteral("G_002");
    setText(Pack_Text("Frm_Main", "_Due").arg(due.overdue).arg(due.today));
    setVisible(due.overdue + due.today > 0);
}
