// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QVariantMap>

/// A question to the desktop portal (org.freedesktop.portal.Request): its answer comes as a signal of an object whose
/// path is agreed on before the question is asked. It deletes itself behind its answer.
class Portal_Request : public QObject
{
    Q_OBJECT

public:
    /// How a question ends, as the portal counts it.
    enum Result : uint { Done = 0, Refused = 1, Failed = 2 };

    /// @param arguments  those before the options
    Portal_Request(const QString &interface, const QString &method, const QVariantList &arguments, QVariantMap options,
                   QObject *parent);

    /// Whether the portal of this session has an interface. Waits a moment for a portal that is slow to start.
    static bool Has(const QString &interface);
    /// Tells the portal, once, which program this is; older portals do not ask.
    static void Introduce_Program();

signals:
    void Answered(uint result, const QVariantMap &answer);

private slots:
    void Response(uint result, const QVariantMap &answer);
};
