// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "arrivals/version_notice.h"

#include <QObject>
#include <QTimer>

namespace Network
{
class Fetch;
struct Answer;
} // namespace Network

/// Looks from time to time whether there is a new version: it reads the file update.txt at the address of the settings.
/// Without an address nothing is asked. A wrong, slow or hostile answer is a line in the log.
class Version_Check : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~Version_Check() override;

    /// The address as the settings have it, "" for none.
    static QString Address();
    static void Set_Address(const QString &address);

    /// Checks now and then, as often as the settings say.
    void Begin();
    void Check_If_Due();
    /// Checks at the user's word: how it ended is told too.
    void Check_Now();

signals:
    void New_Version(const Version_Notice &notice);
    /// Only for a check that the user asked for.
    void Told(const QString &text);

private:
    void Ask(bool told);
    void Take(const Network::Answer &answer, bool told);
    void Log_Trouble(const QString &what, bool told);

    QTimer m_clock;
    Network::Fetch *m_fetch = nullptr;
    bool m_failed = false; ///< no network: it is not tried again in this run
};
