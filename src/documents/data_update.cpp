// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/data_update.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/system_log.h"
#include "documents/document_sql.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/richtext/rich_text.h"
#include "users/scrambling.h"

#include <QTextDocument>

namespace
{
constexpr qsizetype Longest_Title = 200;
constexpr qsizetype Title_From_Content = 20;

QString Title_Of(const QTextDocument &content)
{
    QString text = Rich_Text::Shown_Text(content);
    qsizetype blanks = 0;
    while (blanks < text.size() && text[blanks].isSpace())
        ++blanks;
    text = text.mid(blanks, Title_From_Content);
    return text.replace(QLatin1Char('\n'), QLatin1Char(' ')) + QStringLiteral("..... ");
}

bool Is_Date(const QString &text)
{
    return Database_Engine::Date_From_Text(text).isValid();
}

/// A document that is gone is stored as a new one, which costs nobody anything.
bool Is_Changed_Elsewhere(const Document_Form &form)
{
    const QString now = form.stored_state.isEmpty() ? QString() : Stored_State_Of(form.code_id);
    return !now.isEmpty() && now != form.stored_state;
}

/// Whether a password is told from every other one by its scrambled form, in which the blanks around it and all
/// characters beyond ASCII leave nothing of themselves.
bool Can_Lock(const QString &password)
{
    const QString kept = password.trimmed();
    return password.isEmpty() || (!kept.isEmpty() && Decode(Encode(kept)) == kept);
}
} // namespace

bool Is_Folder(const QString &id)
{
    bool found = !id.isEmpty();
    if (found && !Resume_Next([&] {
            Recordset row;
            row.Open(Sql_Text(Sql::Find_Folder, id), App().Conn_Str);
            found = !row.Eof();
        }))
        Clear_Pending();
    return found;
}

Save_Refusal Check_Before_Save(Document_Form &form, const QString &passwordAgain)
{
    if (form.type.isEmpty())
        return Save_Refusal::Nothing_To_Save;
    if (!Is_Folder(form.folder))
        return Save_Refusal::No_Folder;
    if (!Is_Date(form.create_date))
        return Save_Refusal::Create_Date;
    if (!Is_Date(form.update_date))
        return Save_Refusal::Update_Date;
    if (form.title.isEmpty())
        form.title = Title_Of(*form.content);
    if (form.title.size() > Longest_Title)
        return Save_Refusal::Title_Too_Long;
    if (form.password != passwordAgain)
        return Save_Refusal::Password;
    if (!Can_Lock(form.password))
        return Save_Refusal::Password_Characters;
    return Save_Refusal::None;
}

const char *Refusal_Key(Save_Refusal refusal)
{
    switch (refusal) {
    case Save_Refusal::Nothing_To_Save:
        return "_NoSave";
    case Save_Refusal::No_Folder:
        return "_SelectDir";
    case Save_Refusal::Create_Date:
        return "_CreateDate";
    case Save_Refusal::Update_Date:
        return "_UpdateDate";
    case Save_Refusal::Title_Too_Long:
        return "_Title";
    case Save_Refusal::Password:
        return "_PassWord";
    case Save_Refusal::Password_Characters:
        return "_SpecChar";
    case Save_Refusal::None:
        break;
    }
    return "";
}

std::optional<Last_Change> Last_Change_Of(const QString &code_id)
{
    std::optional<Last_Change> last;
    const bool read = Resume_Next([&] {
        Recordset row;
        row.Open(Sql_Text(Sql::Last_Change, code_id), App().Conn_Str);
        if (!row.Eof())
            last = {row[0].Text(), row[1].Text()};
    });
    if (!read)
        Clear_Pending();
    return last;
}

Save_Outcome Store_Form(Document_Form &form, bool stored, QString &status, Save_Consents consents)
{
    const QString idBefore = form.code_id;
    const QString stateBefore = form.stored_state;
    const Save_Outcome outcome = Trap(
        QStringLiteral("Mod_DataBase\\Store_Form"),
        [&] {
            Save_Outcome written = Save_Outcome::Changed_Elsewhere;
            Database_Engine::One_Action(App().Conn_Str, [&] {
                if (stored && !consents.replace && Is_Changed_Elsewhere(form))
                    return;
                written = Save_Document(form, stored ? form.code_id : QStringLiteral("0"), consents.open_lock);
                if (written != Save_Outcome::Stored)
                    return;
                status = Pack_Text("Frm_Doc_Standard", stored ? "_ModifySucc" : "_AddSucc") + form.title;
                Add_Log(stored ? Log_Type::Changed : Log_Type::Created, status);
                form.stored_state = Stored_State_Of(form.code_id);
            });
            return written;
        },
        Report_Failed_Save);
    if (outcome != Save_Outcome::Stored) { // the commit itself may have failed
        form.code_id = idBefore;
        form.stored_state = stateBefore;
    }
    return outcome;
}
