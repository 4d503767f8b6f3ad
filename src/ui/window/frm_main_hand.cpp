// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "core/settings.h"
#include "platform/desktop/desktop_kind.h"
#include "ui/document/document_tabs.h"
#include "ui/kit/work_window.h"
#include "ui/program/user_tools.h"
#include "ui/tools/at_hand.h"
#include "ui/window/frm_main.h"
#include "ui/window/program_lock.h"
#include "ui_frm_main.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <utility>

void Frm_Main::Add_Hand()
{
    m_hand = new At_Hand(*this, *this,
                         {.bring_back = [this] { Bring_Back(); },
                          .toggle = [this] { Toggle(); },
                          .is_locked =
                              [this] {
                                  return m_lock->Is_Locked();
                              }});
    connect(m_hand, &At_Hand::Tray_Lost, this, [this] {
        if (!isVisible() && !m_lock->Is_Locked()) // nothing else would call it
            Bring_Back();
    });
}

void Frm_Main::Come_To_Hand()
{
    m_hand->Begin();
}

void Frm_Main::Leave_Hand()
{
    m_hand->Hide();
}

void Frm_Main::Add_Lock()
{
    m_lock = new Program_Lock(*this, *findChild<QAction *>(QStringLiteral("Mnu_OnLock")));
    m_lock->Left_Outside = [this] {
        return m_tabs->Left_Outside();
    };
    connect(m_ui->Mnu_Tools, &QMenu::aboutToShow, this, [this] {
        Fill_User_Tools(*m_ui->Mnu_Tools);
        const QStringList outside = m_tabs->Left_Outside();
        findChild<QAction *>(QStringLiteral("Mnu_OnLock"))
            ->setStatusTip(outside.isEmpty() ? QString()
                                             : Filled(Pack_Text("Frm_Main", "_Lock_Outside"), {Pack_List(outside)}));
    });
    connect(m_lock, &Program_Lock::About_To_Lock, this, [this] {
        m_tabs->Keep_Drafts();
        m_hand->Hide();
    });
    connect(m_lock, &Program_Lock::Unlocked, m_hand, &At_Hand::Return);
}

void Frm_Main::Lock()
{
    m_lock->Lock();
}

bool Frm_Main::Hides_On_Close(const QCloseEvent &event) const
{
    return event.spontaneous() && !m_leaving && Is_On(&Settings_Record::CH_Close);
}

void Frm_Main::Put_Away()
{
    showMinimized();
    // Without a tray there would be no way back to a hidden window; long work shows its own one again.
    if (!m_hand->Is_In_Tray() || Long_Work::Is_Under_Way())
        return;
    Hide_Beside();
    hide();
}

/// Dialogs and the windows beside this one; they keep what is typed in them and go on waiting.
void Frm_Main::Hide_Beside()
{
    const auto hide = [this](QWidget *window) {
        if (window == nullptr || window == this || !window->isVisible() ||
            window->objectName() == QLatin1String("Frm_OnTop")) // by which it is called
            return;
        m_beside << window;
        window->QWidget::setVisible(false); // a dialog's own way would end its question
    };
    while (QWidget *menu = QApplication::activePopupWidget())
        menu->close();
    while (QWidget *dialog = QApplication::activeModalWidget()) {
        const qsizetype before = m_beside.size();
        hide(dialog);
        if (m_beside.size() == before)
            break;
    }
    for (QWidget *window : QApplication::topLevelWidgets())
        hide(window);
}

void Frm_Main::Toggle()
{
    if (m_lock->Is_Locked() || !isVisible() || isMinimized())
        Bring_Back();
    else
        Put_Away();
}

void Frm_Main::Bring_Back()
{
    if (m_lock->Is_Locked())
        return m_lock->Bring_Back();
    if (!Desktop_Kind::Raises_Windows() && !isActiveWindow())
        hide();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    const QList<QPointer<QWidget>> beside = std::exchange(m_beside, {});
    for (auto window = beside.rbegin(); window != beside.rend(); ++window) {
        if (*window != nullptr)
            (*window)->QWidget::setVisible(true);
    }
    if (QWidget *waiting = QApplication::activeModalWidget())
        waiting->activateWindow();
}
