// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/desktop/hot_keys.h"

#include <QVariantMap>

class QDBusMessage;

/// Keys that the desktop hears for the program (org.freedesktop.portal.GlobalShortcuts). The desktop asks its user, and
/// may bind another key than the one that was wished.
class Hot_Keys_Portal : public Hot_Keys
{
    Q_OBJECT

public:
    Hot_Keys_Portal();
    ~Hot_Keys_Portal() override;

    static bool Is_There();
    void Bind(const QList<Wish> &wishes) override;

private slots:
    void Activated(const QDBusMessage &signal);
    void Changed(const QDBusMessage &signal);

private:
    void Bind_In_Session(const QString &session);
    void Take_Shortcuts(const QVariant &shortcuts);
    void Give_Up(State state);
    void Close_Session();

    QString m_session;
    QList<Wish> m_wishes;
    int m_round = 0; ///< an answer to a question of an earlier one is nothing any more
};
