// SPDX-License-Identifier: GPL-3.0-or-later
//
// On a session bus of its own, with a stand-in for the desktop's portal.

#include "platform/desktop/hot_keys_portal.h"
#include "platform/desktop/message_link.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// As the bus carries it.
struct Bound_Key {
    QString id;
    QVariantMap facts;
};
static QDBusArgument &operator<<(QDBusArgument &argument, const Bound_Key &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.facts;
    argument.endStructure();
    return argument;
}
static const QDBusArgument &operator>>(const QDBusArgument &argument, Bound_Key &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.facts;
    argument.endStructure();
    return argument;
}

Q_DECLARE_METATYPE(Bound_Key)

namespace
{
/// A connection that is not the program's own.
QDBusConnection Other_Side()
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"other side"_s);
}
} // namespace

/// Binds one shortcut of those that are wished, or none.
class Portal : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.GlobalShortcuts")

public:
    bool willing = true;
    QList<Bound_Key> wished;

    static constexpr auto Session = "/org/freedesktop/portal/desktop/session/1";
    void Press(const QString &id, const QString &session = QLatin1String(Session))
    {
        QDBusMessage signal = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                                         u"org.freedesktop.portal.GlobalShortcuts"_s, u"Activated"_s);
        signal << QVariant::fromValue(QDBusObjectPath(session)) << id << quint64(1) << QVariantMap();
        Other_Side().send(signal);
    }

public slots:
    QDBusObjectPath CreateSession(const QVariantMap &options)
    {
        return Answer(options, {{u"session_handle"_s, QLatin1String(Session)}});
    }
    QDBusObjectPath BindShortcuts(const QDBusObjectPath & /*session*/, const QList<Bound_Key> &shortcuts,
                                  const QString & /*parent*/, const QVariantMap &options)
    {
        wished = shortcuts;
        const QList<Bound_Key> bound{{shortcuts.value(0).id, {{u"trigger_description"_s, u"Meta+K"_s}}}};
        return Answer(options, {{u"shortcuts"_s, QVariant::fromValue(bound)}});
    }

private:
    QDBusObjectPath Answer(const QVariantMap &options, const QVariantMap &answer)
    {
        const QString path = u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(
            message().service().mid(1).replace(u'.', u'_'), options[u"handle_token"_s].toString());
        QDBusMessage signal = QDBusMessage::createSignal(path, u"org.freedesktop.portal.Request"_s, u"Response"_s);
        signal << (willing ? 0U : 1U) << answer;
        Other_Side().send(signal);
        return QDBusObjectPath(path);
    }
};

class Test_Session_Bus : public QObject
{
    Q_OBJECT

    static QDBusMessage Ask(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(u"org.zelqor.Zelqor"_s, u"/k9/Frm_Main"_s,
                                                           u"org.zelqor.Zelqor.Link"_s, method);
        call.setArguments(arguments);
        QDBusPendingCall pending = Other_Side().asyncCall(call);
        while (!pending.isFinished())
            QTest::qWait(5);
        return pending.reply();
    }

private slots:
    void Messages_Are_Answered_Or_Refused()
    {
        bool free = true;
        int depth = 0;
        Message_Link::Handlers handlers;
        handlers.execute = [](const QString &command) {
            return Message_Link::Reply{u"SaveDone"_s + command, Message_Link::Refusal::None};
        };
        handlers.add = [&](const QString &title, const QString &text) {
            ++depth;
            QTest::qWait(20); // the store lets others run
            const Message_Link::Reply reply{title + text + QString::number(depth), Message_Link::Refusal::None};
            --depth;
            return title.isEmpty() ? Message_Link::Reply{u"no"_s, Message_Link::Refusal::Malformed} : reply;
        };
        int toggled = 0;
        handlers.toggle = [&] {
            ++toggled;
        };
        handlers.is_free = [&] {
            return free;
        };
        const Message_Link link(handlers);
        QVERIFY(link.Is_Up());
        QCOMPARE(Ask(u"Execute"_s, {u"abc"_s}).arguments().value(0).toString(), u"SaveDoneabc"_s);
        QCOMPARE(Ask(u"Add"_s, {QString(), u"x"_s}).errorName(), u"org.zelqor.Zelqor.Error.Malformed"_s);
        QCOMPARE(Ask(u"Execute"_s, {5}).type(), QDBusMessage::ErrorMessage);
        QCOMPARE(Ask(u"Execute"_s, {QString(Message_Link::Most_Bytes, u'x')}).type(), QDBusMessage::ReplyMessage);
        for (const QString &large :
             {QString(Message_Link::Most_Bytes + 1, u'x'), QString(Message_Link::Most_Bytes / 3 + 1, u'字')})
            QCOMPARE(Ask(u"Execute"_s, {large}).errorName(), u"org.zelqor.Zelqor.Error.TooLarge"_s);
        Ask(u"Toggle"_s, {});
        QCOMPARE(toggled, 1);

        // One after the other, and none while the program must not be disturbed.
        QDBusMessage call = QDBusMessage::createMethodCall(u"org.zelqor.Zelqor"_s, u"/k9/Frm_Main"_s,
                                                           u"org.zelqor.Zelqor.Link"_s, u"Add"_s);
        call << u"t"_s << u"x"_s;
        free = false;
        QList<QDBusPendingCall> calls;
        for (int i = 0; i < 3; ++i)
            calls << Other_Side().asyncCall(call);
        QTest::qWait(150);
        QVERIFY(!calls[0].isFinished());
        free = true;
        for (const QDBusPendingCall &pending : calls) {
            QTRY_VERIFY(pending.isFinished());
            QCOMPARE(pending.reply().arguments().value(0).toString(), u"tx1"_s);
        }
    }

    void The_Portal_Binds_What_It_Will_data()
    {
        QTest::addColumn<bool>("willing");
        QTest::newRow("willing") << true;
        QTest::newRow("the user says no") << false;
    }
    void The_Portal_Binds_What_It_Will()
    {
        QFETCH(bool, willing);
        qDBusRegisterMetaType<Bound_Key>();
        qDBusRegisterMetaType<QList<Bound_Key>>();
        Portal portal;
        portal.willing = willing;
        QDBusConnection bus = Other_Side();
        QVERIFY(bus.registerObject(u"/org/freedesktop/portal/desktop"_s, &portal, QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(u"org.freedesktop.portal.Desktop"_s));
        Hot_Keys_Portal keys;
        QSignalSpy pressed(&keys, &Hot_Keys::Pressed);
        keys.Bind({{u"window"_s, {Hot_Keys::Alt, 'I'}, u"the window"_s},
                   {u"note"_s, {Hot_Keys::Control | Hot_Keys::Logo, 0x70}, u"the note"_s},
                   {u"none"_s, {Hot_Keys::Alt, 0}, u"no key"_s}});
        QCOMPARE(keys.Of(u"window"_s).state, Hot_Keys::State::Waiting);
        QTRY_VERIFY(keys.Of(u"window"_s).state != Hot_Keys::State::Waiting);
        QCOMPARE(keys.Of(u"none"_s).state, Hot_Keys::State::Off);
        QCOMPARE(keys.Of(u"note"_s).state, Hot_Keys::State::Refused);
        QCOMPARE(keys.Of(u"window"_s).state, willing ? Hot_Keys::State::Bound : Hot_Keys::State::Refused);
        if (willing) {
            QCOMPARE(keys.Of(u"window"_s).trigger, u"Meta+K"_s);
            QCOMPARE(portal.wished.size(), 2);
            QCOMPARE(portal.wished[0].facts[u"preferred_trigger"_s].toString(), u"ALT+i"_s);
            QCOMPARE(portal.wished[1].facts[u"preferred_trigger"_s].toString(), u"CTRL+LOGO+F1"_s);
            portal.Press(u"window"_s, u"/another/session"_s);
            portal.Press(u"window"_s);
            QTRY_COMPARE(pressed.count(), 1);
        }
        bus.unregisterService(u"org.freedesktop.portal.Desktop"_s);
        bus.unregisterObject(u"/org/freedesktop/portal/desktop"_s);
    }
};

QTEST_GUILESS_MAIN(Test_Session_Bus)
#include "test_session_bus.moc"
