// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/program_lock.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "ui/program/frm_login.h"
#include "users/login.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QInputMethod>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace
{
/// Boxes that say what somebody looked for.
constexpr const char *Find_Boxes[] = {"Inp_Find", "Txt_Find", "Cob_FindKey", "Txt_Search", "Txt_Key_Find"};
/// A password box with this property shows a value of a record, which would be lost with its text.
constexpr const char *Holds_Stored = "Holds_Stored";

bool Is_Find_Box(const QLineEdit &box)
{
    return std::any_of(std::begin(Find_Boxes), std::end(Find_Boxes), [&](const char *name) {
        return box.objectName() == QLatin1String(name) || box.parent()->objectName() == QLatin1String(name);
    });
}

void Empty_Boxes(const QWidget &window)
{
    for (QLineEdit *box : window.findChildren<QLineEdit *>()) {
        const bool password = box->echoMode() != QLineEdit::Normal && !box->property(Holds_Stored).toBool();
        if (password || Is_Find_Box(*box))
            box->clear();
    }
}

/// Menus, lists that fold out and tool tips: they are gone with a touch, and are not shown again.
bool Is_Passing(const QWidget &window)
{
    return window.windowType() == Qt::Popup || window.windowType() == Qt::ToolTip;
}

/// A dialog's own way to hide or show ends its question or begins it anew.
void Set_Visible(QWidget &window, bool visible)
{
    window.QWidget::setVisible(visible);
}

bool Is_Input(QEvent::Type type)
{
    return type == QEvent::KeyPress || type == QEvent::MouseMove || type == QEvent::MouseButtonPress ||
           type == QEvent::Wheel || type == QEvent::InputMethod;
}

bool Can_Come_Back()
{
    bool known = true; // a database that cannot be read now is no reason to stay open
    Trap(QStringLiteral("Frm_Main\\Mnu_OnLock_Click"), [&] { known = Is_User(App().Curr_User.trimmed()); });
    return known;
}
} // namespace

Program_Lock::Program_Lock(QWidget &main, const QAction &command)
    : QObject(&main), m_main(main), m_command(command), m_idle(this)
{
    m_idle.setObjectName(QStringLiteral("Idle"));
    m_idle.setSingleShot(true);
    connect(&m_idle, &QTimer::timeout, this, &Program_Lock::Lock);
    qApp->installEventFilter(this);
    Count_Idle_Time();
}

Program_Lock::~Program_Lock() = default;

void Program_Lock::Lock()
{
    if (m_locked || !Can_Come_Back())
        return;
    m_locked = true;
    QGuiApplication::inputMethod()->commit(); // what is composed belongs to what is typed
    emit About_To_Lock();
    Hide_Windows();
    Show_Login();
}

void Program_Lock::Hide_Windows()
{
    while (QWidget *menu = QApplication::activePopupWidget())
        menu->close();
    m_hidden.clear();
    while (QWidget *dialog = QApplication::activeModalWidget())
        Hide(*dialog);
    if (QWidget *active = QApplication::activeWindow())
        Hide(*active);
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            Hide(*window);
    }
    if (!m_hidden.contains(&m_main)) // it comes back, wherever it was put away
        m_hidden << &m_main;
}

void Program_Lock::Hide(QWidget &window)
{
    Empty_Boxes(window);
    // A dialog that the desktop shows instead of this window is called off: only the desktop could hide it.
    if (auto *dialog = qobject_cast<QDialog *>(&window);
        dialog != nullptr && dialog->testAttribute(Qt::WA_DontShowOnScreen))
        return dialog->reject();
    if (!Is_Passing(window))
        m_hidden << &window;
    Set_Visible(window, false);
    // A tip keeps its words as long as it lives, and the desktop the name of a hidden window as long as it has it.
    if (window.inherits("QTipLabel"))
        window.deleteLater();
    else if (QWindow *known = window.windowHandle())
        known->destroy();
}

void Program_Lock::Show_Login()
{
    m_login = std::make_unique<frmLogin>(nullptr, App().Curr_User);
    m_login->setWindowModality(Qt::ApplicationModal);
    // How many, and not which: whoever comes by reads this.
    if (const qsizetype outside = Left_Outside ? Left_Outside().size() : 0; outside > 0)
        m_login->Tell(Filled(Pack_Text("frmLogin", "_Outside"), {QString::number(outside)}));
    connect(m_login.get(), &QDialog::accepted, this, &Program_Lock::Unlock);
    m_login->show();
    Bring_Back();
}

void Program_Lock::Bring_Back()
{
    m_login->raise();
    m_login->activateWindow();
}

void Program_Lock::Unlock()
{
    m_locked = false;
    Empty_Boxes(*m_login);
    const QList<QPointer<QWidget>> hidden = std::exchange(m_hidden, {});
    for (auto window = hidden.rbegin(); window != hidden.rend(); ++window) {
        if (*window != nullptr)
            Set_Visible(**window, true);
    }
    for (const QPointer<QWidget> &window : hidden) {
        if (window != nullptr) {
            window->raise();
            window->activateWindow();
            break;
        }
    }
    Count_Idle_Time();
    emit Unlocked();
}

/// Neither the login nor a box that it has opened itself.
bool Program_Lock::Is_Foreign(const QWidget &window) const
{
    return m_login != nullptr && window.isWindow() && &window != m_login.get() && !Is_Passing(window) &&
           !m_login->Opens_Box();
}

/// A window that opens while the program is locked is never seen: it waits among the hidden ones.
void Program_Lock::Keep_Back(QWidget &window)
{
    window.setAttribute(Qt::WA_DontShowOnScreen);
    const auto hide = [this, kept = QPointer<QWidget>(&window)] {
        if (kept == nullptr)
            return;
        Set_Visible(*kept, false);
        kept->setAttribute(Qt::WA_DontShowOnScreen, false);
        if (kept->parentWidget() == m_login.get())
            kept->setParent(&m_main, kept->windowFlags());
        if (!m_locked)
            return Set_Visible(*kept, true);
        if (!m_hidden.contains(kept))
            m_hidden.prepend(kept);
    };
    QMetaObject::invokeMethod(this, hide, Qt::QueuedConnection);
}

void Program_Lock::Count_Idle_Time()
{
    constexpr int Minute = 60'000;
    const int minutes = Config().Lock_Minutes.toInt();
    if (minutes > 0 && !m_locked)
        m_idle.start(minutes * Minute);
    else
        m_idle.stop();
}

bool Program_Lock::eventFilter(QObject *watched, QEvent *event)
{
    if (Is_Input(event->type()))
        Count_Idle_Time();
    if (event->type() == QEvent::Show && m_locked) {
        auto *window = qobject_cast<QWidget *>(watched);
        if (window != nullptr && window->isWindow() && Is_Foreign(*window))
            Keep_Back(*window);
    }
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    auto *key = static_cast<QKeyEvent *>(event);
    if (!m_command.shortcuts().contains(QKeySequence(key->keyCombination())))
        return false;
    event->accept(); // it reaches no other command
    if (event->type() == QEvent::KeyPress)
        QTimer::singleShot(0, this, &Program_Lock::Lock);
    return true;
}
