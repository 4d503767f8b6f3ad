// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_moving.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "tree/folder_allocation.h"
#include "tree/folder_ids.h"
#include "tree/folder_sql.h"
#include "tree/folder_trouble.h"

#include <QSet>

using Folder_Editing::Trap_Editing;

namespace
{
constexpr qsizetype Longest_Id = 250;
const QString Arrow = QStringLiteral(" ==>  ");

QStringList Subtree_Ids(const QString &id)
{
    QStringList ids;
    Recordset rows;
    rows.Open(Sql_Text(Sql::Subtree, id), App().Conn_Str);
    for (; !rows.Eof(); rows.MoveNext())
        ids << rows[0].Text();
    return ids;
}

QString Renumbered(const QString &rowId, const QString &oldId, const QString &newId)
{
    return newId + rowId.mid(oldId.size());
}

/// @throws Run_Time_Error for what would end the rewriting half way.
void Check_Move(const QStringList &rows, const QString &oldId, const QString &newId)
{
    Require_Place(newId);
    const QStringList there = Subtree_Ids(newId);
    const QSet<QString> taken(there.begin(), there.end());
    for (const QString &row : rows) {
        const QString id = Renumbered(row, oldId, newId);
        if (id.size() > Longest_Id)
            throw Run_Time_Error(Error_Number::Db_Too_Long, Pack_Text("Frm_Main", "_Too_Deep") + id, Failure::Other);
        if (taken.contains(id) || id.contains(u'\''))
            throw Run_Time_Error(Error_Number::Db_Failed, Pack_Text("Frm_Main", "_No_Place") + id, Failure::Other);
    }
}

QString Node_Id(const Tree_Model &tree, int node)
{
    return GetKeyPart(tree.Node(node).key, Key_Part::After_Underscore);
}

QString Node_Name(const Tree_Model &tree, int node)
{
    return Caption_Name(tree.Node(node).caption);
}

/// What is moved, in a question; afterwards its word stands without a colon.
QString Labelled(const char *what)
{
    return Pack_Text("Frm_Main", what).trimmed() + Pack_Text("Frm_Main", "_Colon");
}

QString Moved_Text(const char *what, const QString &from, const QString &to)
{
    return Pack_Text("Frm_Main", "_UpdateDone") + Pack_Text("Frm_Main", what) + from + Arrow +
           Pack_Text("Frm_Main", "_NodeNew") + to;
}
} // namespace

QString Mod_Cate_Action(const QString &oldId, const QString &newParentId)
{
    return Trap_Editing(QStringLiteral("Mod_Cate\\Mod_Cate_Action"), [&] {
        if (!Is_Folder_Id(oldId) || !Is_Folder_Id(newParentId + oldId))
            throw Run_Time_Error(Error_Number::Db_Failed, Pack_Text("Frm_Main", "_No_Place") + oldId, Failure::Other);
        QString newId;
        Database_Engine::One_Action(App().Conn_Str, [&] {
            newId = Lowest_Free_Id(newParentId);
            const QStringList rows = Subtree_Ids(oldId);
            Check_Move(rows, oldId, newId);
            for (const QString &row : rows) {
                const QString moved = Renumbered(row, oldId, newId);
                Run_Statement(Sql_Text(Sql::Renumber_Folder, moved, row), App().Conn_Str);
                Run_Statement(Sql_Text(Sql::Renumber_Documents, moved, row), App().Conn_Str);
            }
        });
        return newId;
    });
}

std::optional<Move_Report> Drop_Folder(const Tree_Model &tree, int node, int target)
{
    Folder_Editing::Forget_Trouble();
    if (tree.Node(target).key.contains(tree.Node(node).key))
        return std::nullopt;
    const QString name = Node_Name(tree, node);
    const QString targetName = Node_Name(tree, target);
    if (!Folder_Editing::Confirm(Pack_Text("Frm_Main", "_NodeUpdate") + QStringLiteral("\n\n") + Labelled("_NodeOld") +
                                 name + Arrow + Pack_Text("Frm_Main", "_NodeNew") + targetName))
        return std::nullopt;
    const QString oldId = Node_Id(tree, node);
    const QString newId = Mod_Cate_Action(oldId, Node_Id(tree, target));
    if (newId.isEmpty())
        return std::nullopt;
    return Move_Report{Moved_Text("_NodeOld", name, targetName), oldId, newId};
}

std::optional<Move_Report> Drop_Documents(const QStringList &codeIds, const Tree_Model &tree, int target)
{
    return Trap_Editing(QStringLiteral("Frm_Main\\Trv_Code_Class_OLEDragDrop"), [&]() -> std::optional<Move_Report> {
        // What another program dragged in shall not be part of a statement's syntax.
        QStringList ids = codeIds;
        ids.removeIf([](const QString &id) { return id.isEmpty() || id.contains(u'\''); });
        if (ids.isEmpty() || !Is_Folder_Key(tree.Node(target).key))
            return std::nullopt;
        Recordset first;
        first.Open(Sql_Text(Sql::Title_And_Folder, ids.first()), App().Conn_Str);
        if (first.Eof())
            return std::nullopt;
        const QString title = first[0].Text();
        const QString oldFolder = first[1].Text();
        const QString newFolder = Node_Id(tree, target);
        const QString name = Node_Name(tree, target);
        if (!Folder_Editing::Confirm(Pack_Text("Frm_Main", "_ListViewUpdate") + QStringLiteral("\n\n") +
                                     Labelled("_Title") + title + Arrow + Pack_Text("Frm_Main", "_NodeNew") + name))
            return std::nullopt;
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (const QString &id : ids)
                Run_Statement(Sql_Text(Sql::Move_Document, newFolder, id), App().Conn_Str);
        });
        return Move_Report{Moved_Text("_Title", title, name), oldFolder, newFolder};
    });
}
