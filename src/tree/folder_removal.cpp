// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_removal.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/prompts/prompts.h"
#include "tree/folder_ids.h"
#include "tree/folder_moving.h"
#include "tree/folder_sql.h"
#include "tree/folder_trouble.h"
#include "tree/tree_loading.h"

#include <QStringList>

using Folder_Editing::Trap_Editing;

namespace
{
QString Folder_Name(const QString &id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Name_Of_Folder, id), App().Conn_Str);
    return row.Eof() ? QString() : Shown_Folder_Name(id, row[0].Text());
}

bool Agreed(const QString &question, bool forGood)
{
    const Prompts::Button_Texts verbs{.yes = Pack_Text("Buttons", forGood ? "_Delete" : "_To_Bin"),
                                      .no = Pack_Text("Buttons", "_Cancel")};
    return Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No,
                        forGood ? Prompts::Answer::No : Prompts::Answer::Yes, verbs) == Prompts::Answer::Yes;
}

bool Deletion_Agreed(const QString &name, bool forGood)
{
    const QString tip = QString(8, QLatin1Char(' ')) + QStringLiteral("Tips:") +
                        Pack_Text("Frm_Main", forGood ? "_DelForGood" : "_DelToBin");
    return Agreed(Pack_Text("Frm_Main", "_DelAsk") + name + Pack_Text("Frm_Main", "_DelNeed") + QStringLiteral("\n\n") +
                      tip,
                  forGood);
}

void Run(const QString &statement)
{
    Run_Statement(statement, App().Conn_Str);
}

/// Documents at and below an id, their attachments first. An id that no statement can hold keeps its document no more
/// than any other; its attachments are left to the cleaning.
void Delete_Documents(const QString &id)
{
    QStringList documents;
    Recordset rows;
    rows.Open(Sql_Text(Sql::Documents_Below, id), App().Conn_Str);
    for (; !rows.Eof(); rows.MoveNext())
        documents << rows[0].Text();
    rows.Close();
    for (const QString &document : documents)
        Resume_Next([&] { Run(Sql_Text(Sql::Delete_Attachments, document)); });
    Run(Sql_Text(Sql::Delete_Documents_Below, id));
}

void Delete_For_Good(const QString &id)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        Delete_Documents(id);
        Run(Sql_Text(Sql::Delete_Folders_Below, id));
    });
}
} // namespace

bool DelClass_Ex(const QString &id, int nodeIndex, Tree_Model &tree, QString *newId)
{
    const QString folder = id.trimmed();
    return Trap_Editing(QStringLiteral("Mod_DataBase\\DelClass_Ex"), [&] {
        if (folder.isEmpty())
            return false;
        if (!Is_Folder_Id(folder))
            throw Run_Time_Error(Error_Number::Db_Failed, Pack_Text("Frm_Main", "_No_Place") + folder, Failure::Other);
        const bool forGood = In_Recycle_Bin(folder);
        if (!Deletion_Agreed(Folder_Name(folder), forGood))
            return false;
        if (!forGood) {
            const QString moved = Mod_Cate_Action(folder, Recycle_Bin_Id);
            if (newId != nullptr)
                *newId = moved;
            return !moved.isEmpty();
        }
        Delete_For_Good(folder);
        const QString key = tree.Node(nodeIndex).key;
        tree.Remove_If([&](const Tree_Node &node) { return node.key == key; });
        return true;
    });
}

bool Clean_RecycleBin_Ex(Tree_Model &tree)
{
    return Trap_Editing(QStringLiteral("Mod_DataBase\\Clean_RecycleBin_Ex"), [&] {
        if (!Agreed(Pack_Text("Frm_Main", "_CleanAsk").arg(Folder_Name(Recycle_Bin_Id)), true))
            return false;
        Database_Engine::One_Action(App().Conn_Str, [] {
            Delete_Documents(Recycle_Bin_Id);
            Run(Sql_Text(Sql::Empty_Bin_Folders));
        });
        tree.Remove_If(
            [](const Tree_Node &node) { return node.key.size() >= 6 && node.key.startsWith(QLatin1String("C_000")); });
        const int bin = tree.Find(Folder_Key(Recycle_Bin_Id));
        if (bin >= 0)
            tree.Set_Caption(bin, Shown_Folder_Name(Recycle_Bin_Id, Recycle_Bin_Name) + QStringLiteral("[0]"));
        return true;
    });
}
