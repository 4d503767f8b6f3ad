// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/document_deletion.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "core/system_log.h"
#include "documents/document_sql.h"
#include "documents/html_pictures.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"

#include <algorithm>

namespace
{
const QString Recycle_Bin = QStringLiteral("000");

void Drop_Item(List_Model *list, int itemIndex)
{
    if (list != nullptr && itemIndex > 0 && itemIndex <= list->Row_Count())
        list->Remove(itemIndex - 1);
}

void Report_Number()
{
    Prompts::Message(QStringLiteral("Error:") + QString::number(Err().number), App().Box_Title,
                     Prompts::Icon::Exclamation);
}

/// The pictures of a web page that is about to go.
QStringList Pictures_Of(const QString &code_id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Type_And_Content, code_id), App().Conn_Str);
    if (row.Eof() || row[QStringLiteral("Code_Type")].Text().compare(QLatin1String("htm"), Qt::CaseInsensitive) != 0)
        return {};
    return Html::Own_Pictures(row[QStringLiteral("code_content")].Text(), Config().Pic_Dir);
}

void Delete_Rows(const QString &code_id)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        for (const char16_t *statement : {Sql::Delete_Document, Sql::Delete_Attachments, Sql::Delete_Tags})
            Run_Statement(Sql_Text(statement, code_id), App().Conn_Str);
    });
}

struct Asked_Document {
    QString id;
    QString title;
    QString folder;
};

QList<Asked_Document> Look_Up(const QStringList &ids)
{
    QList<Asked_Document> found;
    for (const QString &id : ids) {
        Recordset row;
        row.Open(Sql_Text(Sql::Title_And_Folder, id), App().Conn_Str);
        if (!row.Eof())
            found.append(
                {id, row[QStringLiteral("Code_Title")].Text(), row[QStringLiteral("Cate_ID")].Text().trimmed()});
    }
    return found;
}

/// No is the answer that Enter gives.
bool Is_Wanted(const QList<Asked_Document> &documents, bool forGood, const char *section)
{
    const bool one = documents.size() == 1;
    const char *key = one ? (forGood ? "_ToDelete" : "_ToRecycle") : (forGood ? "_ToDeleteMore" : "_ToRecycleMore");
    const QString about = one ? documents.first().title : QString::number(documents.size());
    return Prompts::Ask(Pack_Text(section, key).arg(about),
                        Pack_Text(section, one ? "_ComfirmDelete" : "_ComfirmDeleteMore"), Prompts::Choice::Yes_No,
                        Prompts::Answer::No,
                        {.yes = Pack_Text("Buttons", forGood ? "_Delete" : "_To_Bin"),
                         .no = Pack_Text("Buttons", "_Cancel")}) == Prompts::Answer::Yes;
}

void Note_Folder(Deletion &deletion, const QString &folder)
{
    if (!folder.isEmpty() && !deletion.folders.contains(folder))
        deletion.folders << folder;
}
} // namespace

bool MoveCode_Ex(const QString &code_id, List_Model *list, int itemIndex)
{
    return Trap(
        QStringLiteral("Mod_DataBase\\MoveCode_Ex"),
        [&] {
            Run_Statement(Sql_Text(Sql::Move_To_Bin, code_id), App().Conn_Str);
            Drop_Item(list, itemIndex);
            return true;
        },
        Report_Number);
}

bool DelCode_Ex(const QString &code_id, List_Model *list, int itemIndex)
{
    return Trap(
        QStringLiteral("Mod_DataBase\\AddClass"),
        [&] {
            const QStringList pictures = Pictures_Of(code_id);
            Delete_Rows(code_id);
            Drop_Item(list, itemIndex);
            for (const QString &picture : pictures) // the document is gone whether or not its files can go
                Resume_Next([&] { Files::Delete_If_Present(picture); });
            return true;
        },
        Report_Number);
}

Deletion Ask_And_Delete(const QStringList &ids, Asked_In place,
                        const std::function<bool(const QString &id, bool forGood)> &may_go)
{
    return Trap(
        QStringLiteral("Mod_DataBase\\Ask_And_Delete"),
        [&] {
            Deletion deletion;
            const char *section = place == Asked_In::Form ? "Frm_Doc_Standard" : "Frm_Main";
            const QList<Asked_Document> documents = Look_Up(ids);
            const bool forGood = std::all_of(documents.begin(), documents.end(),
                                             [](const Asked_Document &one) { return one.folder == Recycle_Bin; });
            if (documents.isEmpty() || !Is_Wanted(documents, forGood, section))
                return deletion;
            for (const Asked_Document &one : documents) {
                if (!may_go(one.id, forGood))
                    continue;
                if (!(forGood ? DelCode_Ex(one.id) : MoveCode_Ex(one.id)))
                    break;
                deletion.gone << one.id;
                deletion.status = one.title + Pack_Text(section, forGood ? "_DelOk" : "_RecycleTo");
                Add_Log(Log_Type::Deleted, deletion.status);
                Note_Folder(deletion, one.folder);
                Note_Folder(deletion, Recycle_Bin);
            }
            return deletion;
        },
        Report_Number);
}
