// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/portal_request.h"

#include "platform/desktop/desktop_kind.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>
#include <utility>

namespace
{
const QString Service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString Desktop_Path = QStringLiteral("/org/freedesktop/portal/desktop");

QDBusMessage Call(const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(Service, Desktop_Path, interface, method);
    call.setArguments(arguments);
    return call;
}

/// A name that this process has given nothing yet.
QString New_Token()
{
    static int last = 0;
    return QStringLiteral("zelqor_%1").arg(++last);
}
} // namespace

Portal_Request::Portal_Request(const QString &interface, const QString &method, const QVariantList &arguments,
                               QVariantMap options, QObject *parent)
    : QObject(parent)
{
    Introduce_Program();
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QString token = New_Token();
    const QString sender = bus.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
    bus.connect(Service, Desktop_Path + QStringLiteral("/request/%1/%2").arg(sender, token),
                QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"), this,
                SLOT(Response(uint, QVariantMap)));
    options.insert(QStringLiteral("handle_token"), token);
    auto *watcher =
        new QDBusPendingCallWatcher(bus.asyncCall(Call(interface, method, QVariantList(arguments) << options)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *call) {
        if (call->isError()) // else the answer comes later
            Response(Failed, {});
    });
}

void Portal_Request::Response(uint result, const QVariantMap &answer)
{
    emit Answered(result, answer);
    deleteLater();
}

bool Portal_Request::Has(const QString &interface)
{
    if (!Desktop_Kind::Has_Session_Bus())
        return false;
    constexpr int Moment = 2000; // milliseconds
    Introduce_Program();
    const QDBusMessage reply =
        QDBusConnection::sessionBus().call(Call(QStringLiteral("org.freedesktop.DBus.Properties"),
                                                QStringLiteral("Get"), {interface, QStringLiteral("version")}),
                                           QDBus::Block, Moment);
    return reply.type() == QDBusMessage::ReplyMessage;
}

void Portal_Request::Introduce_Program()
{
    static bool done = false;
    if (std::exchange(done, true))
        return;
    QDBusConnection::sessionBus().asyncCall(Call(QStringLiteral("org.freedesktop.host.portal.Registry"),
                                                 QStringLiteral("Register"),
                                                 {QLatin1String(Desktop_Kind::Application_Id), QVariantMap()}));
}
