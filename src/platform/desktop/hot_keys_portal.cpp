// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/hot_keys_portal.h"

#include "platform/desktop/key_table.h"
#include "platform/desktop/portal_request.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCall>

namespace
{
const QString Interface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString Service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString Desktop_Path = QStringLiteral("/org/freedesktop/portal/desktop");

struct Portal_Shortcut {
    QString id;
    QVariantMap facts;
};

QDBusArgument &operator<<(QDBusArgument &argument, const Portal_Shortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.facts;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Portal_Shortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.facts;
    argument.endStructure();
    return argument;
}
} // namespace

Q_DECLARE_METATYPE(Portal_Shortcut)

Hot_Keys_Portal::Hot_Keys_Portal()
{
    qDBusRegisterMetaType<Portal_Shortcut>();
    qDBusRegisterMetaType<QList<Portal_Shortcut>>();
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(Service, Desktop_Path, Interface, QStringLiteral("Activated"), this, SLOT(Activated(QDBusMessage)));
    bus.connect(Service, Desktop_Path, Interface, QStringLiteral("ShortcutsChanged"), this,
                SLOT(Changed(QDBusMessage)));
}

Hot_Keys_Portal::~Hot_Keys_Portal()
{
    Close_Session();
}

bool Hot_Keys_Portal::Is_There()
{
    return Portal_Request::Has(Interface);
}

void Hot_Keys_Portal::Bind(const QList<Wish> &wishes)
{
    Close_Session();
    m_wishes = wishes;
    const int round = ++m_round;
    bool any = false;
    for (const Wish &wish : wishes) {
        const bool wanted = wish.combination.key != 0;
        Set_Standing(wish.id, {Way::Portal, wanted ? State::Waiting : State::Off, {}});
        any = any || wanted;
    }
    if (!any)
        return;
    auto *request =
        new Portal_Request(Interface, QStringLiteral("CreateSession"), {},
                           {{QStringLiteral("session_handle_token"), QStringLiteral("zelqor%1").arg(round)}}, this);
    connect(request, &Portal_Request::Answered, this, [this, round](uint result, const QVariantMap &answer) {
        if (round != m_round)
            return;
        if (result != Portal_Request::Done)
            return Give_Up(State::Refused);
        Bind_In_Session(answer.value(QStringLiteral("session_handle")).toString());
    });
}

void Hot_Keys_Portal::Bind_In_Session(const QString &session)
{
    m_session = session;
    QList<Portal_Shortcut> shortcuts;
    for (const Wish &wish : m_wishes) {
        if (wish.combination.key != 0)
            shortcuts.append({wish.id,
                              {{QStringLiteral("description"), wish.description},
                               {QStringLiteral("preferred_trigger"), Key_Table::Trigger_Of(wish.combination)}}});
    }
    auto *request = new Portal_Request(
        Interface, QStringLiteral("BindShortcuts"),
        {QVariant::fromValue(QDBusObjectPath(session)), QVariant::fromValue(shortcuts), QString()}, {}, this);
    connect(request, &Portal_Request::Answered, this, [this, round = m_round](uint result, const QVariantMap &answer) {
        if (round != m_round)
            return;
        if (result != Portal_Request::Done)
            return Give_Up(State::Refused);
        Take_Shortcuts(answer.value(QStringLiteral("shortcuts")));
    });
}

/// What the desktop has bound, which may be less than was wished.
void Hot_Keys_Portal::Take_Shortcuts(const QVariant &shortcuts)
{
    QHash<QString, QString> bound;
    for (const Portal_Shortcut &shortcut : qdbus_cast<QList<Portal_Shortcut>>(shortcuts))
        bound.insert(shortcut.id, shortcut.facts.value(QStringLiteral("trigger_description")).toString());
    for (const Wish &wish : m_wishes) {
        if (wish.combination.key == 0)
            continue;
        const bool is = bound.contains(wish.id);
        Set_Standing(wish.id, {Way::Portal, is ? State::Bound : State::Refused, bound.value(wish.id)});
    }
}

void Hot_Keys_Portal::Give_Up(State state)
{
    for (const Wish &wish : m_wishes) {
        if (wish.combination.key != 0)
            Set_Standing(wish.id, {Way::Portal, state, {}});
    }
}

void Hot_Keys_Portal::Close_Session()
{
    if (m_session.isEmpty())
        return;
    QDBusConnection::sessionBus().asyncCall(QDBusMessage::createMethodCall(
        Service, m_session, QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Close")));
    m_session.clear();
}

void Hot_Keys_Portal::Activated(const QDBusMessage &signal)
{
    const QVariantList said = signal.arguments(); // session, id, time, options
    if (!m_session.isEmpty() && said.value(0).value<QDBusObjectPath>().path() == m_session)
        emit Pressed(said.value(1).toString());
}

void Hot_Keys_Portal::Changed(const QDBusMessage &signal)
{
    const QVariantList said = signal.arguments();
    if (!m_session.isEmpty() && said.value(0).value<QDBusObjectPath>().path() == m_session)
        Take_Shortcuts(said.value(1));
}
