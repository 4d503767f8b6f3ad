// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/message_link.h"

#include "platform/desktop/desktop_kind.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QTimer>
#include <utility>

namespace
{
const QString Object_Path = QStringLiteral("/k9/Frm_Main");

const char *Error_Of(Message_Link::Refusal refusal)
{
    switch (refusal) {
    case Message_Link::Refusal::Malformed:
        return "org.zelqor.Zelqor.Error.Malformed";
    case Message_Link::Refusal::Too_Large:
        return "org.zelqor.Zelqor.Error.TooLarge";
    default:
        return "org.zelqor.Zelqor.Error.Failed";
    }
}

/// UTF-8 is never shorter than this many bytes; the exact count is for texts near the bound only.
bool Is_Too_Large(const QString &text)
{
    return text.size() > Message_Link::Most_Bytes ||
           (text.size() > Message_Link::Most_Bytes / 3 && text.toUtf8().size() > Message_Link::Most_Bytes);
}
} // namespace

/// The object on the bus. Each message is answered behind its call, so that none disturbs another one.
class Message_Link::Service : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.zelqor.Zelqor.Link")

public:
    explicit Service(Handlers handlers) : m_handlers(std::move(handlers))
    {
        constexpr int Again = 50; // milliseconds
        m_waiting.setInterval(Again);
        connect(&m_waiting, &QTimer::timeout, this, &Service::Answer_Next);
        if (!Desktop_Kind::Has_Session_Bus())
            return;
        QDBusConnection bus = QDBusConnection::sessionBus();
        m_up =
            bus.isConnected() && bus.registerObject(Object_Path, this, QDBusConnection::ExportAllSlots) &&
            bus.interface()
                ->registerService(QLatin1String(Desktop_Kind::Application_Id), QDBusConnectionInterface::QueueService)
                .isValid();
    }
    ~Service() override
    {
        if (!m_up)
            return;
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.unregisterObject(Object_Path);
        bus.unregisterService(QLatin1String(Desktop_Kind::Application_Id));
    }

    [[nodiscard]] bool Is_Up() const { return m_up; }

public slots: // the methods of the interface
    QString Execute(const QString &command)
    {
        return Later({command}, [this, command] { return m_handlers.execute(command); });
    }
    QString Add(const QString &title, const QString &text)
    {
        return Later({title, text}, [this, title, text] { return m_handlers.add(title, text); });
    }
    void Show() { m_handlers.show(); }
    void Toggle() { m_handlers.toggle(); }
    void Note() { m_handlers.note(); }

private:
    struct Waiting {
        QDBusMessage call;
        std::function<Reply()> answer;
    };

    QString Later(const QStringList &texts, const std::function<Reply()> &answer)
    {
        constexpr qsizetype Most_Waiting = 64;
        if (std::any_of(texts.begin(), texts.end(), Is_Too_Large) || m_calls.size() >= Most_Waiting) {
            sendErrorReply(QLatin1String(Error_Of(Refusal::Too_Large)), QStringLiteral("More than is taken at once"));
            return {};
        }
        setDelayedReply(true);
        m_calls.append({message(), answer});
        QTimer::singleShot(0, this, &Service::Answer_Next);
        m_waiting.start();
        return {};
    }

    void Answer_Next()
    {
        if (m_calls.isEmpty())
            return m_waiting.stop();
        if (m_answering || !m_handlers.is_free())
            return;
        m_answering = true;
        const Waiting next = m_calls.takeFirst();
        const Reply reply = next.answer();
        m_answering = false;
        QDBusConnection::sessionBus().send(
            reply.refusal == Refusal::None
                ? next.call.createReply(reply.text)
                : next.call.createErrorReply(QLatin1String(Error_Of(reply.refusal)), reply.text));
    }

    Handlers m_handlers;
    QList<Waiting> m_calls;
    QTimer m_waiting;
    bool m_answering = false;
    bool m_up = false;
};

Message_Link::Message_Link(Handlers handlers, QObject *parent)
    : QObject(parent), m_service(std::make_unique<Service>(std::move(handlers)))
{
}

Message_Link::~Message_Link() = default;

bool Message_Link::Is_Up() const
{
    return m_service->Is_Up();
}

#include "message_link.moc"
