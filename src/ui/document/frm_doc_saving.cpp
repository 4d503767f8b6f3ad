// SPDX-License-Identifier: GPL-3.0-or-later
//
// Saves, drafts, and the mark of what is unsaved.

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/data_update.h"
#include "platform/prompts/prompts.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/document/stored_version.h"
#include "ui/kit/shell.h"
#include "ui_frm_doc_standard.h"

#include <QScopedValueRollback>

namespace
{
/// Milliseconds from a keystroke to its draft; what is typed meanwhile goes with it.
constexpr int Draft_After = 1500;
/// The draft of a long text waits for a pause in the typing, but not for ever, and takes a small part of the time.
constexpr int Pause = 800;
constexpr qint64 Longest_Wait = 60'000;
constexpr qint64 Share_Of_Time = 20;
constexpr int Long_Characters = 400'000;
constexpr qint64 Felt = 60; // milliseconds
} // namespace

bool Frm_Doc_Standard::Save(Asking asking)
{
    if (m_saving)
        return false;
    const QScopedValueRollback saving(m_saving, true);
    Commit_Composition();
    Read_Form();
    if (m_session->Form().type.isEmpty()) {
        Refuse(Save_Refusal::Nothing_To_Save);
        return false;
    }
    if (Is_On(&Settings_Record::CH_Save) && Prompts::Ask(Pack_Text("Frm_Doc_Standard", "_IsSave"), App().App_Title,
                                                         Prompts::Choice::Yes_No) != Prompts::Answer::Yes)
        return false;
    const Save_Refusal refusal = m_session->Check();
    if (refusal != Save_Refusal::None) {
        Refuse(refusal);
        return false;
    }
    return Store(asking);
}

bool Frm_Doc_Standard::Store(Asking asking)
{
    QString status;
    if (!Store_Consented(asking, status))
        return false;
    Tell_Pages_Saved();
    m_ui->Txt_Title->setText(m_session->Form().title);
    Show_Style();
    Clear_Changed();
    Show_Card();
    if (m_session->Came_In_Late()) { // as from an input method: that is not stored yet
        m_session->Form().content->setModified(true);
        Show_Modify();
    }
    Tell_Stored(status);
    Set_Editor(); // the list has the document now, with its neighbours
    m_factsTimer.start();
    return true;
}

void Frm_Doc_Standard::Tell_Stored(const QString &status)
{
    m_shell.Set_Status(status);
    const QString left = m_session->Left_Folder();
    const QString folder = m_session->Form().folder;
    if (left.isEmpty())
        m_shell.Document_Changed(Code_Id());
    else
        m_shell.Documents_Moved({Code_Id()}, folder);
    for (const QString &id : {left, folder}) {
        if (!id.isEmpty())
            m_shell.Folder_Changed(id);
    }
}

bool Frm_Doc_Standard::Store_Consented(Asking asking, QString &status)
{
    Save_Outcome outcome = Save_Outcome::Failed;
    do {
        if (Is_Long()) // the store lets the window paint itself
            m_shell.Set_Status(Pack_Text("Frm_Doc_Standard", "_Saving") + Title());
        outcome = m_session->Store(status);
        if (outcome != Save_Outcome::Stored && Is_Long())
            m_shell.Set_Status({});
    } while (outcome != Save_Outcome::Stored && Settle(outcome, asking));
    m_session->Consents().replace = false;
    return outcome == Save_Outcome::Stored;
}

bool Frm_Doc_Standard::Settle(Save_Outcome outcome, Asking asking)
{
    if (outcome == Save_Outcome::Failed) {
        Show_Too_Long();
        return false;
    }
    if (asking == Asking::Never) {
        Store_Draft();
        m_shell.Set_Status(Title() + Pack_Text("Frm_Doc_Standard", "_Draft_Kept"));
        return false;
    }
    if (outcome == Save_Outcome::Changed_Elsewhere)
        return Settle_Conflict();
    const bool agreed = Prompts::Ask(Title() + Pack_Text("Frm_Doc_Standard", "_Lock_Open_Ask"), App().App_Title,
                                     Prompts::Choice::Yes_No, Prompts::Answer::No) == Prompts::Answer::Yes;
    m_session->Consents().open_lock = agreed;
    return agreed;
}

/// Facts alone make no second document.
bool Frm_Doc_Standard::Settle_Conflict()
{
    enum Way { Look, Replace, Keep_Both };
    QStringList ways{Pack_Text("Frm_Doc_Standard", "_Look"), Pack_Text("Frm_Doc_Standard", "_Replace")};
    if (!m_session->Form().keeps_content)
        ways << Pack_Text("Frm_Doc_Standard", "_Keep_Both");
    const std::optional<Last_Change> last = Last_Change_Of(Code_Id());
    const QString who =
        last ? QLatin1Char('\n') + Pack_Text("Frm_Doc_Standard", "_Changed_By").arg(last->who, last->when) : QString();
    const QString question = Title() + Pack_Text("Frm_Doc_Standard", "_Changed_Elsewhere") + who;
    int way = Look;
    while ((way = Prompts::Choose(question, App().App_Title, ways)) == Look)
        Show_Stored_Version(Code_Id(), this);
    m_session->Consents().replace = way == Replace;
    if (way == Keep_Both)
        m_session->Become_New();
    return way >= 0;
}

void Frm_Doc_Standard::Refuse(Save_Refusal refusal)
{
    Prompts::Message(Pack_Text("Frm_Doc_Standard", Refusal_Key(refusal)), App().App_Title, Prompts::Icon::Exclamation);
    switch (refusal) {
    case Save_Refusal::No_Folder:
        m_ui->Comb_Cate->Fill();
        return Focus(m_ui->Pag_Addon, m_ui->Comb_Cate);
    case Save_Refusal::Create_Date:
        return Focus(m_ui->Pag_Addon, m_ui->Txt_Create);
    case Save_Refusal::Update_Date:
        return Focus(m_ui->Pag_Addon, m_ui->Txt_Update);
    case Save_Refusal::Title_Too_Long:
        return Focus(m_ui->Pag_Addon, m_ui->Txt_Title);
    case Save_Refusal::Password:
    case Save_Refusal::Password_Characters:
        return Focus(m_ui->Pag_Password, m_ui->Txt_Password);
    case Save_Refusal::None:
    case Save_Refusal::Nothing_To_Save:
        return;
    }
}

/// What was changed and changed back is not unsaved.
void Frm_Doc_Standard::Show_Modify()
{
    if (m_showing)
        return;
    Read_Form();
    const bool changed = m_session->Differs();
    m_sinceChange.start();
    m_factsTimer.start();
    // Never started anew by a keystroke: who types without a pause has a draft too.
    if (changed && !m_draftTimer.isActive()) {
        m_sinceDraft.start();
        m_draftTimer.start(static_cast<int>(
            std::clamp(m_session->Draft_Milliseconds() * Share_Of_Time, qint64(Draft_After), Longest_Wait)));
    }
    if (changed == m_changed)
        return;
    m_changed = changed;
    if (!changed) {
        m_draftTimer.stop();
        m_session->Drop_Draft();
    }
    Show_Mark();
}

void Frm_Doc_Standard::Show_Mark()
{
    m_ui->Fra_Code_Content->setText(m_changed ? Pack_Text("Frm_Doc_Standard", "_NeedSave") + QLatin1Char('*')
                                              : QString());
    emit Mark_Changed();
    Tell_Facts();
}

bool Frm_Doc_Standard::Is_Long() const
{
    return m_session->Draft_Milliseconds() > Felt || m_session->Form().content->characterCount() > Long_Characters;
}

void Frm_Doc_Standard::Draft_Is_Due()
{
    const bool typing = m_sinceChange.isValid() && m_sinceChange.elapsed() < Pause;
    if (m_saving || (typing && Is_Long() && m_sinceDraft.elapsed() < Longest_Wait))
        return m_draftTimer.start(Pause);
    Write_Draft();
}

bool Frm_Doc_Standard::Write_Draft()
{
    return !m_saving && m_changed && !m_session->Is_Partial() && Store_Draft();
}

bool Frm_Doc_Standard::Store_Draft()
{
    const bool written = Trap(QStringLiteral("Frm_Doc_Standard\\Write_Draft"), [&] {
        Read_Form();
        m_session->Write_Draft();
        return true;
    });
    if (!written)
        m_shell.Set_Status(Pack_Text("Frm_Doc_Standard", "_Draft_Failed"));
    return written;
}

void Frm_Doc_Standard::Keep_Draft()
{
    Commit_Composition();
    if (m_saving)
        return m_draftTimer.start(Draft_After);
    Write_Draft();
}

bool Frm_Doc_Standard::Leave_Draft()
{
    const bool left = m_changed && !m_session->Is_Partial() && Store_Draft();
    if (left)
        m_session->Leave_Draft();
    return left;
}
