// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/version_check.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "platform/machine/machine.h"
#include "platform/network/fetch.h"

namespace
{
constexpr int Second = 1000; // milliseconds
const QString Section = QStringLiteral("Page");
const QString Address_Key = QStringLiteral("Update_Address");

const char *Name_Of(Network::End end)
{
    switch (end) {
    case Network::End::Bad_Address:
        return "not an address that is asked";
    case Network::End::Own_Network:
        return "it leads to a network of this machine's own";
    case Network::End::Too_Large:
        return "it is too large";
    case Network::End::Too_Slow:
        return "it is too slow";
    case Network::End::Too_Many_Redirects:
        return "it leads from one address to the next";
    case Network::End::Refused:
        return "the server refuses";
    default:
        return "no answer";
    }
}
} // namespace

Version_Check::~Version_Check()
{
    delete m_fetch;
}

QString Version_Check::Address()
{
    return GetIni(Section, Address_Key).trimmed();
}

void Version_Check::Set_Address(const QString &address)
{
    WriteIni(Section, Address_Key, address.trimmed());
}

void Version_Check::Begin()
{
    constexpr int First = 20 * Second; // the start has other things to do
    constexpr int Hour = 3600 * Second;
    connect(&m_clock, &QTimer::timeout, this, [this] {
        m_clock.setInterval(Hour);
        Check_If_Due();
    });
    m_clock.start(First);
}

void Version_Check::Check_If_Due()
{
    if (!m_failed && Is_Check_Due(Config().COB_UPDATE, Config().COB_UPDATE_DATE, Machine::Now()))
        Ask(false);
}

void Version_Check::Check_Now()
{
    if (Address().isEmpty())
        emit Told(Pack_Text("frm_ShowUp", "_No_Address"));
    else
        Ask(true);
}

void Version_Check::Ask(bool told)
{
    const QString address = Address();
    if (address.isEmpty() || m_fetch != nullptr)
        return;
    m_fetch = new Network::Fetch(
        QUrl(address, QUrl::StrictMode),
        {.most_bytes = Version_Notice::Longest_File, .milliseconds = 20 * Second, .reach = Network::Reach::As_First},
        this);
    connect(m_fetch, &Network::Fetch::Ended, this, [this, told](const Network::Answer &answer) {
        m_fetch->deleteLater();
        m_fetch = nullptr;
        Take(answer, told);
    });
}

void Version_Check::Take(const Network::Answer &answer, bool told)
{
    m_failed = answer.end == Network::End::Failed || answer.end == Network::End::Too_Slow;
    if (!m_failed) {
        Config().COB_UPDATE_DATE = Database_Engine::Short_Date(Machine::Now());
        WriteIni(Section, QStringLiteral("COB_UPDATE_DATE"), Config().COB_UPDATE_DATE);
    }
    if (answer.end != Network::End::Done)
        return Log_Trouble(QLatin1String(Name_Of(answer.end)) + QStringLiteral(" (") + answer.detail + u')', told);
    const std::optional<Version_Notice> notice = Version_Notice::Read(answer.bytes);
    if (!notice)
        return Log_Trouble(QStringLiteral("it names no version and page"), told);
    if (notice->Is_Newer_Than(Version_Text()))
        emit New_Version(*notice);
    else if (told)
        emit Told(Filled(Pack_Text("frm_ShowUp", "_Newest"), {App().App_Title, Version_Text()}));
}

void Version_Check::Log_Trouble(const QString &what, bool told)
{
    constexpr qsizetype Longest = 200; // a server has its say in it
    Set_Pending(
        Run_Time_Error(Error_Number::Path_Access, QStringLiteral("update.txt: ") + what.simplified().left(Longest)));
    Error_Log(QStringLiteral("frm_ShowUp\\Check"));
    if (told)
        emit Told(Pack_Text("frm_ShowUp", "_No_Answer"));
}
