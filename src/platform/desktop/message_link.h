// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

/// The program as a service on the session bus, for other programs of the same user: the object "/k9/Frm_Main" of the
/// name that the program is known by. No other bus is asked, and none is started for it. A second copy of the program
/// waits for the name and gets it when the first one ends.
class Message_Link : public QObject
{
    Q_OBJECT

public:
    enum class Refusal { None, Malformed, Too_Large, Failed };
    struct Reply {
        QString text;
        Refusal refusal = Refusal::None;
    };
    /// What is done with a message. A sender waits meanwhile; messages come one after the other.
    struct Handlers {
        std::function<Reply(const QString &command)> execute;
        std::function<Reply(const QString &title, const QString &text)> add;
        std::function<void()> show;
        std::function<void()> toggle;
        std::function<void()> note;
        /// False while the program does what must not be disturbed: messages wait.
        std::function<bool()> is_free;
    };
    static constexpr qsizetype Most_Bytes = 16 * 1024 * 1024; ///< of one message, in UTF-8

    explicit Message_Link(Handlers handlers, QObject *parent = nullptr);
    ~Message_Link() override;

    /// Whether the service stands on a bus: false where there is none.
    [[nodiscard]] bool Is_Up() const;

private:
    class Service;
    std::unique_ptr<Service> m_service;
};
