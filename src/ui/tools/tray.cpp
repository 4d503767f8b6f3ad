// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/tray.h"

#include "core/process_state.h"
#include "platform/models/plain_tip.h"
#include "ui/kit/logo_view.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace
{
constexpr int Often = 3000; // milliseconds
constexpr int Most_Looks = 40;
} // namespace

Tray::Tray(QMenu &menu) : m_menu(menu)
{
    m_look.setInterval(Often);
    connect(&m_look, &QTimer::timeout, this, &Tray::Look);
}

Tray::~Tray() = default;

void Tray::Add(const QString &tip, const QString &welcome)
{
    m_tip = tip;
    m_welcome = welcome;
    m_looks = 0;
    m_look.start();
    Look();
}

void Tray::Remove()
{
    m_look.stop();
    m_icon.reset();
}

bool Tray::Is_There() const
{
    return m_icon != nullptr && m_icon->isVisible() && QSystemTrayIcon::isSystemTrayAvailable();
}

bool Tray::Tell(const QString &text)
{
    if (!Is_There() || !QSystemTrayIcon::supportsMessages())
        return false;
    m_icon->showMessage(App().App_Title, text, Program_Icon());
    return true;
}

/// Where there is none for two minutes, none is awaited any more; one that is there is watched.
void Tray::Look()
{
    const bool there = QSystemTrayIcon::isSystemTrayAvailable();
    if (m_icon != nullptr && !there) {
        m_icon.reset();
        emit Lost();
        return;
    }
    if (!there && ++m_looks >= Most_Looks)
        m_look.stop();
    if (!there || m_icon != nullptr)
        return;
    m_icon = std::make_unique<QSystemTrayIcon>(Program_Icon());
    m_icon->setToolTip(Plain_Tip(m_tip));
    m_icon->setContextMenu(&m_menu);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason != QSystemTrayIcon::Context)
            emit Wanted();
    });
    m_icon->show();
    Tell(m_welcome);
}
