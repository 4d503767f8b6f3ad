// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/system_log.h"
#include "documents/file_content.h"
#include "documents/outside_file.h"
#include "editor/links.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "ui/document/document_page.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/shell.h"

#include <QFileInfo>
#include <QUrl>

void Frm_Doc_Standard::Open_Outside()
{
    if (!Keeps_File())
        return;
    const auto report = [](const QString &text) {
        Prompts::Message(text, App().App_Title, Prompts::Icon::Exclamation);
    };
    const Document_Form &form = m_session->Form();
    if (const QString place = m_session->Kept_Path(); !place.isEmpty()) { // only its place is stored
        const QString path = Files::Native_Path(place);
        return QFileInfo::exists(path) ? Links::Open(path) : report(place + Pack_Text("Frm_Doc_Standard", "_NoExist"));
    }
    QString copy;
    const bool written = Trap(
        QStringLiteral("Frm_Doc_Standard\\Open_Outside"),
        [&] {
            copy = m_session->Give_Outside().Path();
            return true;
        },
        [&] { report(Error_Text(Err())); });
    if (!written)
        return;
    if (!Is_Shown_Outside(form.type)) {
        const QString question =
            Pack_Text("Frm_Doc_Standard", "_Outside_Run").arg(QFileInfo(copy).fileName(), form.type);
        if (Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No, Prompts::Answer::No) !=
            Prompts::Answer::Yes)
            return;
    }
    m_outsideTimer.start();
    if (Links::Start(QUrl::fromLocalFile(copy)))
        m_shell.Set_Status(Pack_Text("Frm_Doc_Standard", "_Outside_Open"));
    else
        report(Pack_Text("Frm_Doc_Standard", "_OpenError") + QLatin1Char('\n') + copy);
}

bool Frm_Doc_Standard::Leave_Outside()
{
    for (Document_Page *page : m_pages)
        page->Leave();
    Outside_File *outside = m_session->Outside();
    if (outside == nullptr)
        return true;
    if (outside->Is_Changed())
        Take_Back();
    return (!outside->Is_Changed() && !outside->Is_In_Use()) ||
           Prompts::Ask(Title() + Pack_Text("Frm_Doc_Standard", "_Outside_Leave"), App().App_Title,
                        Prompts::Choice::Yes_No, Prompts::Answer::No) == Prompts::Answer::Yes;
}

QStringList Frm_Doc_Standard::Left_Outside() const
{
    QStringList names;
    if (m_session->Outside() != nullptr)
        names << Title();
    for (const Document_Page *page : m_pages)
        names << page->Left_Outside();
    return names;
}

void Frm_Doc_Standard::Follow_Outside()
{
    Outside_File *outside = m_session->Outside();
    if (outside == nullptr)
        m_outsideTimer.stop();
    else if (outside->Is_Settled_Change())
        Take_Back();
}

void Frm_Doc_Standard::Take_Back()
{
    m_showing = true;
    const bool stored = m_session->Take_Back();
    m_showing = false;
    if (!stored)
        return;
    Show_Card();
    const QString status = Pack_Text("Frm_Doc_Standard", "_ModifySucc") + Title();
    Add_Log(Log_Type::Changed, status);
    m_shell.Set_Status(status);
    m_shell.Document_Changed(Code_Id());
}
