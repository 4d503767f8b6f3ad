// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QUrl>
#include <memory>

/// The one door to networks: nothing else in the program asks one, and nobody asks here without the user's word.
///
/// Only http and https are spoken. Nothing is sent but the address and the program's name: no cookies, no stored
/// passwords, no page that the address stands in. Certificates must be good. What comes is bounded in size and time, is
/// taken as it comes (no packed content) and is never run.
namespace Network
{
/// Which machines may be asked, by the addresses that a name has.
enum class Reach {
    Public,   ///< none of this machine's own networks
    As_First, ///< these only where the first address lies there: nobody outside leads inside
    Any,
};

struct Limits {
    qint64 most_bytes = 0;
    int milliseconds = 0; ///< for everything, from the look-up of the name to the last byte
    int redirects = 5;
    Reach reach = Reach::Public;
};

enum class End { Done, Bad_Address, Own_Network, Too_Large, Too_Slow, Too_Many_Redirects, Refused, Failed };

struct Answer {
    End end = End::Failed;
    int status = 0; ///< of HTTP, 0 where none came
    QByteArray bytes;
    QByteArray type; ///< what the server says of the content
    QUrl address;    ///< of the last redirect
    QString detail;  ///< for a log
};

/// Whether an address is one that this door asks: http or https, with a host and without a name or password.
bool Is_Askable(const QUrl &address);

/// One question. It begins when the event loop runs; deleting it ends it.
class Fetch : public QObject
{
    Q_OBJECT

public:
    Fetch(const QUrl &address, const Limits &limits, QObject *parent = nullptr);
    ~Fetch() override;

signals:
    void Came(qint64 bytes);
    /// Once.
    void Ended(const Network::Answer &answer);

private:
    struct State;
    void Ask(const QUrl &address);
    void Send(const QUrl &address);
    void Take();
    void Finish();
    void Follow(const QUrl &target);
    void Say(End end, const QString &detail = {});

    std::unique_ptr<State> m_state;
};
} // namespace Network
