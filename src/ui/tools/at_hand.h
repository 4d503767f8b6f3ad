// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/desktop/message_link.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

class Frm_Note;
class Frm_OnTop;
class Frm_OnTop_Drop;
class Hand_Keys;
class QWidget;
class Shell;
class Tray;
class Version_Check;
struct Version_Notice;

/// What is at hand while the main window is out of sight: the floating window, the tray, the keys that are heard
/// everywhere, the message link, the quick note, and the notice of a new version.
class At_Hand : public QObject
{
    Q_OBJECT

public:
    /// What the main window does for it.
    struct Window {
        std::function<void()> bring_back;
        std::function<void()> toggle;
        std::function<bool()> is_locked;
    };

    At_Hand(Shell &shell, QWidget &main, Window window);
    ~At_Hand() override;

    /// At the end of the window's load: keys, link and floating window.
    void Begin();
    /// The tray has the program's icon, so that the window may be hidden.
    [[nodiscard]] bool Is_In_Tray() const;
    /// Shows the floating window, or hides it.
    void Show_Floating(bool on);
    /// The folder for what arrives may be another one now.
    void Settings_Changed();
    void Open_Note();
    void Check_Versions();

    /// For the lock, and at the end: everything is taken off the screen.
    void Hide();
    void Return();

signals:
    /// Nothing is left by which a hidden window could be called.
    void Tray_Lost();

private:
    void Fill_Menu();
    void Connect_Keys();
    void Tell_Held_Keys();
    void Open_Link();
    [[nodiscard]] Message_Link::Reply Take_Message(const QString &title, const QString &text);
    void Take_Files(const QStringList &paths);
    Frm_OnTop_Drop *New_Drop();
    void Snap();
    void Start_Post_It();
    void Show_Notice(const Version_Notice &notice);
    void Arrived(const QString &code_id, const QString &folder, const QString &status);
    void Main_Command(const char *action);

    Shell &m_shell;
    QWidget &m_main;
    Window m_window;
    std::unique_ptr<Frm_OnTop> m_floating;
    std::unique_ptr<Tray> m_tray;
    std::unique_ptr<Hand_Keys> m_keys;
    std::unique_ptr<Message_Link> m_link;
    std::unique_ptr<Frm_Note> m_note;
    std::unique_ptr<Version_Check> m_versions;
    QList<QPointer<QWidget>> m_drops; ///< forms of dropped content
    bool m_told = false;              ///< of keys that others hold
};
