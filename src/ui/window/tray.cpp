// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/tray.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/models/plain_tip.h"
#include "ui/kit/icons.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <QWidget>

Tray::Tray(QWidget &window) : QObject(&window), m_window(window) {}

void Tray::Add()
{
    if (m_icon != nullptr || !QSystemTrayIcon::isSystemTrayAvailable())
        return;
    const QIcon own = m_window.windowIcon();
    m_icon = new QSystemTrayIcon(own.isNull() ? Line_Icon(QStringLiteral("home")) : own, this);
    m_icon->setToolTip(Plain_Tip(Pack_Text("Frm_Main", "_Curr_User") + App().Curr_User));
    auto *menu = new QMenu(&m_window);
    menu->addAction(Pack_Text("Frm_Main", "_Tray_Show"), this, &Tray::Window_Wanted);
    menu->addAction(Pack_Text("Frm_Main", "Mnu_Exit|Index|Caption"), this, &Tray::Leaving_Wanted);
    m_icon->setContextMenu(menu);
    connect(m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason != QSystemTrayIcon::Context)
            emit Window_Wanted();
    });
    m_icon->show();
}

void Tray::Remove()
{
    if (m_icon != nullptr)
        m_icon->contextMenu()->deleteLater();
    delete m_icon;
    m_icon = nullptr;
}

bool Tray::Is_There() const
{
    return m_icon != nullptr && m_icon->isVisible();
}
