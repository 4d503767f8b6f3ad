// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_editing.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "tree/folder_allocation.h"
#include "tree/folder_ids.h"
#include "tree/folder_sql.h"
#include "tree/folder_trouble.h"

using Folder_Editing::Trap_Editing;

namespace
{
void Run(const QString &statement)
{
    Run_Statement(statement, App().Conn_Str);
}

QString Node_Id(const Tree_Model &tree, int node)
{
    return GetKeyPart(tree.Node(node).key, Key_Part::After_Underscore);
}

void Rename_Root(const QString &name, const QString &icon, Tree_Model &tree)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        Run(Sql_Text(Sql::Set_Root_Name, name));
        Run(Sql_Text(Sql::Set_Root_Icon, icon));
    });
    App().Com_Name = name;
    App().Com_Icon = icon;
    tree.Set_Caption(0, name);
    tree.Set_Image(0, icon);
}

void Write_Folder(const QString &id, const Folder_Facts &facts)
{
    Recordset row;
    row.CursorType = Cursor_Type::Keyset;
    row.LockType = Lock_Type::Optimistic;
    row.Open(Sql_Text(Sql::Folder_Fields, id), App().Conn_Str);
    row[QStringLiteral("Cate_id")].Set(id);
    row[QStringLiteral("Cate_name")].Set(facts.name);
    row[QStringLiteral("Icon_Name")].Set(facts.icon);
    row[QStringLiteral("Cate_Memo")].Set(facts.memo);
    row[QStringLiteral("Cate_Exp")].Set(facts.expanded ? QStringLiteral("1") : QStringLiteral("0"));
    row.Update();
}

Folder_Facts Root_Facts()
{
    Recordset remark;
    remark.Open(Sql_Text(Sql::Root_Remark), App().Conn_Str);
    return {App().Com_Name, App().Com_Icon.toUpper(), remark.Eof() ? QString() : remark[0].Text(), true};
}

QString Rename_Root_In_Place(Tree_Model &tree, const QString &text)
{
    Run(Sql_Text(Sql::Set_Root_Name, text));
    App().Com_Name = text;
    tree.Set_Caption(0, text);
    return Pack_Text("Frm_Main", "_RootTo") + text;
}

std::optional<QString> Rename_Folder_In_Place(Tree_Model &tree, int node, const QString &text)
{
    const QString name = GetKeyPart(text, Key_Part::Before_Bracket);
    const QString id = Node_Id(tree, node);
    if (name.isEmpty() || id == Recycle_Bin_Id)
        return std::nullopt;
    const QString old = tree.Node(node).caption;
    Run(Sql_Text(Sql::Set_Folder_Name, name, id));
    tree.Set_Caption(node, name + GetKeyPart(old, Key_Part::From_Bracket));
    return Caption_Name(old) + Pack_Text("Frm_Main", "_NodeTo") + name;
}
} // namespace

QString AddClass_Ex(const QString &selectedId, const QString &name, Tree_Model &tree, const QString &icon,
                    bool asSibling, const QString &memo, const QString &expanded)
{
    return Trap_Editing(QStringLiteral("Mod_DataBase\\AddClass_Ex"), [&] {
        const QString parent = asSibling ? Parent_Id(selectedId) : selectedId;
        QString id;
        Database_Engine::One_Action(App().Conn_Str, [&] { // the free id is free until it is taken
            id = Next_Id_From_First(parent);
            Require_Place(id);
            Run(Sql_Text(Sql::Add_Folder, id, name, icon.toUpper(), Order_Of_Id(id), memo, expanded));
        });
        Tree_Node node;
        node.key = Folder_Key(id);
        node.caption = Make_Caption(name, 0);
        node.image = icon.toUpper();
        node.expanded = expanded != QLatin1String("0");
        tree.Add(Parent_Key(id), node);
        return id;
    });
}

QString Find_Cate_Id(const QString &parentId, const QString &name)
{
    Recordset known;
    known.Open(Sql_Text(Sql::Folder_By_Name, parentId, name), App().Conn_Str);
    return known.Eof() ? QString() : known[0].Text();
}

QString MakeExistCateId(const QString &parentId, const QString &name)
{
    return Trap_Editing(QStringLiteral("Mod_DataBase\\MakeExistCateId"), [&] {
        QString id;
        Database_Engine::One_Action(App().Conn_Str, [&] {
            id = Find_Cate_Id(parentId, name);
            if (!id.isEmpty())
                return;
            id = Next_Id_From_First(parentId);
            Require_Place(id);
            Run(Sql_Text(Sql::Add_Import_Folder, id, name, Order_Of_Id(id)));
        });
        return id;
    });
}

std::optional<Folder_Facts> Read_Folder(const QString &id)
{
    return Trap_Editing(QStringLiteral("Frm_ReName_Ex\\Form_Load"), [&]() -> std::optional<Folder_Facts> {
        if (id.isEmpty())
            return Root_Facts();
        Recordset row;
        row.Open(Sql_Text(Sql::Folder_Fields, id), App().Conn_Str);
        if (row.Eof())
            return std::nullopt;
        return Folder_Facts{row[QStringLiteral("Cate_name")].Text(), row[QStringLiteral("Icon_Name")].Text().toUpper(),
                            row[QStringLiteral("Cate_Memo")].Text(),
                            row[QStringLiteral("Cate_Exp")].Text() != QLatin1String("0")};
    });
}

bool ReNameClass_Ex(const QString &id, const QString &oldName, const QString &newName, const QString &memo,
                    Tree_Model &tree, int node, const QString &icon, bool expanded)
{
    return Trap_Editing(QStringLiteral("Mod_DataBase\\ReNameClass_Ex"), [&] {
        const QString image = icon.toUpper();
        if (id.isEmpty()) {
            Rename_Root(newName, image, tree);
            return true;
        }
        Write_Folder(id, {newName, image, memo, expanded});
        QString caption = tree.Node(node).caption;
        if (!oldName.isEmpty())
            caption.replace(oldName, newName);
        tree.Set_Caption(node, caption);
        tree.Set_Image(node, image);
        tree.Set_Expanded(node, expanded);
        return true;
    });
}

std::optional<QString> ReName_In_Place(Tree_Model &tree, int node, const QString &text)
{
    return Trap_Editing(QStringLiteral("Frm_Main\\Trv_Code_Class_AfterLabelEdit"), [&]() -> std::optional<QString> {
        if (text.isEmpty())
            return std::nullopt;
        if (!Is_Folder_Key(tree.Node(node).key))
            return Rename_Root_In_Place(tree, text);
        return Rename_Folder_In_Place(tree, node, text);
    });
}

bool Set_Node_Icon(Tree_Model &tree, int node, const QString &icon)
{
    return Trap_Editing(QStringLiteral("Frm_Node_Icon\\Cmd_Apply_Click"), [&] {
        const QString image = icon.toUpper();
        const QString id = Node_Id(tree, node);
        if (id == Recycle_Bin_Id)
            return false;
        if (Is_Folder_Key(tree.Node(node).key)) {
            Run(Sql_Text(Sql::Set_Folder_Icon, image, id));
        } else {
            Run(Sql_Text(Sql::Set_Root_Icon, image));
            App().Com_Icon = image;
        }
        tree.Set_Image(node, image);
        return true;
    });
}
