// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/system_log.h"
#include "documents/document_store.h"
#include "documents/file_content.h"
#include "documents/outside_file.h"
#include "editor/links.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "ui/document/document_page.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/shell.h"

#include <QFileInfo>
#include <QTextDocument>
#include <QUrl>

bool Frm_Doc_Standard::Is_Foreign() const
{
    return m_stored && !m_form.type.isEmpty() && m_form.type != QLatin1String("RTF");
}

void Frm_Doc_Standard::Open_Outside()
{
    if (!Is_Foreign())
        return;
    const auto report = [](const QString &text) {
        Prompts::Message(text, App().App_Title, Prompts::Icon::Exclamation);
    };
    if (!m_form.file.isEmpty()) { // only its place is stored
        const QString path = Files::Native_Path(m_form.file);
        return QFileInfo::exists(path) ? Links::Open(path)
                                       : report(m_form.file + Pack_Text("Frm_Doc_Standard", "_NoExist"));
    }
    const bool written = Trap(
        QStringLiteral("Frm_Doc_Standard\\Open_Outside"),
        [&] {
            if (m_outside == nullptr)
                m_outside = std::make_unique<Outside_File>(m_form.code_id);
            return true;
        },
        [&] { report(Error_Text(Err())); });
    if (!written)
        return;
    if (!Is_Shown_Outside(m_form.type)) {
        const QString question =
            Pack_Text("Frm_Doc_Standard", "_Outside_Run").arg(QFileInfo(m_outside->Path()).fileName(), m_form.type);
        if (Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No, Prompts::Answer::No) !=
            Prompts::Answer::Yes)
            return;
    }
    m_outsideTimer.start();
    if (Links::Start(QUrl::fromLocalFile(m_outside->Path())))
        m_shell.Set_Status(Pack_Text("Frm_Doc_Standard", "_Outside_Open"));
    else
        report(Pack_Text("Frm_Doc_Standard", "_OpenError") + QLatin1Char('\n') + m_outside->Path());
}

bool Frm_Doc_Standard::Leave_Outside()
{
    for (Document_Page *page : m_pages)
        page->Leave();
    if (m_outside == nullptr)
        return true;
    if (m_outside->Is_Changed())
        Take_Back();
    return (!m_outside->Is_Changed() && !m_outside->Is_In_Use()) ||
           Prompts::Ask(Title() + Pack_Text("Frm_Doc_Standard", "_Outside_Leave"), App().App_Title,
                        Prompts::Choice::Yes_No, Prompts::Answer::No) == Prompts::Answer::Yes;
}

void Frm_Doc_Standard::Follow_Outside()
{
    if (m_outside == nullptr)
        m_outsideTimer.stop();
    else if (m_outside->Is_Settled_Change())
        Take_Back();
}

void Frm_Doc_Standard::Take_Back()
{
    QString text;
    if (!m_outside->Take_Back(text))
        return;
    m_showing = true;
    m_form.content->setPlainText(text);
    m_form.content->setModified(false);
    m_showing = false;
    Trap(QStringLiteral("Frm_Doc_Standard\\Take_Back"),
         [this] { m_form.stored_state = Stored_State_Of(m_form.code_id); });
    const QString status = Pack_Text("Frm_Doc_Standard", "_ModifySucc") + Title();
    Add_Log(Log_Type::Changed, status);
    m_shell.Set_Status(status);
    m_shell.Document_Changed(m_form.code_id);
}
