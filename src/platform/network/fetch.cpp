// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/network/fetch.h"

#include <QHostInfo>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QTimer>
#include <algorithm>

namespace Network
{
namespace
{
constexpr int First_Redirect = 300;
constexpr int First_Error = 400;

/// Addresses that mean this machine or its neighbours (the registries of special-purpose addresses, RFC 6890).
constexpr const char *Own_Subnets[] = {
    "0.0.0.0/8",    "10.0.0.0/8",     "100.64.0.0/10", "127.0.0.0/8", "169.254.0.0/16", "172.16.0.0/12",
    "192.0.0.0/24", "192.168.0.0/16", "198.18.0.0/15", "224.0.0.0/4", "240.0.0.0/4",    "::/127",
    "fc00::/7",     "fe80::/10",      "fec0::/10",     "ff00::/8",
};

bool Is_Own(const QHostAddress &address)
{
    bool hasShort = false;
    const quint32 number = address.toIPv4Address(&hasShort); // also of one that is written as a longer one
    const QHostAddress plain = hasShort ? QHostAddress(number) : address;
    return std::any_of(std::begin(Own_Subnets), std::end(Own_Subnets), [&](const char *subnet) {
        return plain.isInSubnet(QHostAddress::parseSubnet(QLatin1String(subnet)));
    });
}

QNetworkRequest Request_For(const QUrl &address)
{
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        request.setAttribute(attribute, QNetworkRequest::Manual);
    request.setRawHeader("User-Agent", "Zelqor");
    request.setRawHeader("Accept-Encoding", "identity"); // a small packed answer may be a huge one
    return request;
}
} // namespace

struct Fetch::State {
    Limits limits;
    QNetworkAccessManager manager; // the one room that has it
    QNetworkReply *reply = nullptr;
    QTimer clock;
    Answer answer;
    int lookUp = -1;
    int redirects = 0;
    bool may_go_inside = false;
    bool said = false;
};

bool Is_Askable(const QUrl &address)
{
    const QString scheme = address.scheme();
    return address.isValid() && (scheme == QLatin1String("http") || scheme == QLatin1String("https")) &&
           !address.host().isEmpty() && address.userInfo().isEmpty();
}

Fetch::Fetch(const QUrl &address, const Limits &limits, QObject *parent)
    : QObject(parent), m_state(std::make_unique<State>())
{
    m_state->limits = limits;
    m_state->may_go_inside = limits.reach != Reach::Public;
    m_state->manager.setProxy(QNetworkProxy::NoProxy);
    m_state->clock.setSingleShot(true);
    connect(&m_state->clock, &QTimer::timeout, this, [this] { Say(End::Too_Slow); });
    m_state->clock.start(limits.milliseconds);
    QTimer::singleShot(0, this, [this, address] { Ask(address); });
}

Fetch::~Fetch()
{
    m_state->said = true;
    if (m_state->lookUp >= 0)
        QHostInfo::abortHostLookup(m_state->lookUp);
    delete m_state->reply;
}

/// The name is looked up before anything is sent; who connects finds the same answer kept.
void Fetch::Ask(const QUrl &address)
{
    m_state->answer.address = address;
    if (!Is_Askable(address))
        return Say(End::Bad_Address, address.toDisplayString());
    m_state->lookUp = QHostInfo::lookupHost(address.host(), this, [this, address](const QHostInfo &found) {
        m_state->lookUp = -1;
        if (found.addresses().isEmpty())
            return Say(End::Failed, found.errorString());
        const QList<QHostAddress> all = found.addresses();
        const bool inside = std::any_of(all.begin(), all.end(), Is_Own);
        if (inside && !m_state->may_go_inside)
            return Say(End::Own_Network, address.host());
        if (m_state->limits.reach == Reach::As_First)
            m_state->may_go_inside = inside;
        Send(address);
    });
}

void Fetch::Send(const QUrl &address)
{
    constexpr qint64 Room = 64 * 1024; // no more is held unread
    QNetworkReply *reply = m_state->manager.get(Request_For(address));
    m_state->reply = reply;
    reply->setReadBufferSize(Room);
    connect(reply, &QNetworkReply::readyRead, this, &Fetch::Take);
    connect(reply, &QNetworkReply::metaDataChanged, this, [this, reply] {
        if (reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_state->limits.most_bytes)
            Say(End::Too_Large);
    });
    connect(reply, &QNetworkReply::finished, this, &Fetch::Finish);
}

void Fetch::Take()
{
    if (m_state->said)
        return;
    m_state->answer.bytes += m_state->reply->readAll();
    if (m_state->answer.bytes.size() > m_state->limits.most_bytes)
        return Say(End::Too_Large);
    emit Came(m_state->answer.bytes.size());
}

void Fetch::Finish()
{
    if (m_state->said)
        return;
    const QNetworkReply *reply = m_state->reply;
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QUrl target = reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    m_state->answer.status = status;
    if (status >= First_Redirect && status < First_Error && target.isValid())
        return Follow(reply->url().resolved(target));
    if (reply->error() != QNetworkReply::NoError)
        return Say(status >= First_Error ? End::Refused : End::Failed, reply->errorString());
    Take();
    if (m_state->said)
        return;
    m_state->answer.type = reply->header(QNetworkRequest::ContentTypeHeader).toByteArray();
    Say(End::Done);
}

void Fetch::Follow(const QUrl &target)
{
    const bool loses = m_state->answer.address.scheme() == QLatin1String("https") &&
                       target.scheme() != QLatin1String("https"); // what was asked in secret stays so
    m_state->reply->deleteLater();
    m_state->reply = nullptr;
    m_state->answer.bytes.clear();
    if (loses)
        return Say(End::Bad_Address, target.toDisplayString());
    if (++m_state->redirects > m_state->limits.redirects)
        return Say(End::Too_Many_Redirects);
    Ask(target);
}

void Fetch::Say(End end, const QString &detail)
{
    if (m_state->said)
        return;
    m_state->said = true;
    m_state->clock.stop();
    m_state->answer.end = end;
    m_state->answer.detail = detail;
    if (end != End::Done)
        m_state->answer.bytes.clear();
    if (QNetworkReply *reply = m_state->reply; reply != nullptr) { // which may be in the middle of telling something
        reply->disconnect(this);
        QMetaObject::invokeMethod(reply, &QNetworkReply::abort, Qt::QueuedConnection);
    }
    emit Ended(m_state->answer);
}
} // namespace Network
