// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/tree_loading.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "platform/database/server.h"
#include "platform/files/door.h"
#include "tree/folder_ids.h"
#include "tree/folder_sql.h"
#include "tree/tree_loading_sql.h"

#include <QSet>
#include <algorithm>
#include <map>
#include <vector>

namespace
{
const QString Missing_Icon = QStringLiteral("RECYCLEBIN.ICO");

struct Folder_Row {
    QString id;
    QString name;
    QString icon;
    bool expanded;
};

QList<Folder_Row> Read_Folders(const QString &connection)
{
    QList<Folder_Row> folders;
    Recordset rows;
    rows.Open(Sql_Text(Sql::All_Folders), connection);
    for (; !rows.Eof(); rows.MoveNext()) {
        const Field expanded = rows[QStringLiteral("Cate_Exp")];
        const QString id = rows[QStringLiteral("cate_ID")].Text();
        folders.append({id, Shown_Folder_Name(id, rows[QStringLiteral("cate_Name")].Text()),
                        rows[QStringLiteral("Icon_Name")].Text().toUpper(),
                        expanded.Is_Null() || expanded.Text() != QLatin1String("0")});
    }
    return folders;
}

/// Documents by folder: what "count(*) ... like 'id%'" (subtree) and "= 'id'" give for any folder, from one grouped
/// statement. In the order of the ids a subtree is one run of rows, so that a count is the difference of two sums.
class Document_Counts
{
public:
    explicit Document_Counts(const QString &connection)
    {
        std::map<QString, qint64> numbers;
        Recordset rows;
        rows.Open(Sql_Text(Sql::Count_By_Folder), connection);
        for (; !rows.Eof(); rows.MoveNext())
            numbers[rows[0].Text().toLower()] += rows[1].Number();
        qint64 before = 0;
        for (const auto &[id, number] : numbers) {
            m_rows.push_back({id, before});
            before += number;
        }
        m_all = before;
    }
    [[nodiscard]] qint64 Of(const QString &folder, bool subtree) const
    {
        const QString id = folder.toLower();
        const auto first = std::lower_bound(m_rows.begin(), m_rows.end(), id,
                                            [](const Row &row, const QString &sought) { return row.id < sought; });
        const auto end = std::partition_point(
            first, m_rows.end(), [&](const Row &row) { return subtree ? row.id.startsWith(id) : row.id == id; });
        return Before(end) - Before(first);
    }

private:
    struct Row {
        QString id;
        qint64 before; ///< documents of all rows in front of it
    };
    [[nodiscard]] qint64 Before(std::vector<Row>::const_iterator row) const
    {
        return row == m_rows.end() ? m_all : row->before;
    }

    std::vector<Row> m_rows;
    qint64 m_all = 0;
};

QSet<QString> Icon_Files()
{
    QSet<QString> names;
    for (const Files::Entry &entry : Files::Entries(App().App_Path + QStringLiteral("data/ico"))) {
        if (!entry.is_folder)
            names.insert(entry.name.toUpper());
    }
    return names;
}

QString Folder_Image(const Folder_Row &folder, const QSet<QString> &icons)
{
    return folder.id != Recycle_Bin_Id && icons.contains(folder.icon) ? folder.icon : Missing_Icon;
}

Tree_Node Root_Node(const QString &caption)
{
    Tree_Node root;
    root.key = Root_Key;
    root.caption = caption;
    root.image = App().Com_Icon.toUpper();
    root.expanded = true;
    return root;
}

Tree_Node Folder_Node(const Folder_Row &folder, const QSet<QString> &icons, qint64 count)
{
    Tree_Node node;
    node.key = Folder_Key(folder.id);
    node.caption = Make_Caption(folder.name, count);
    node.image = Folder_Image(folder, icons);
    node.expanded = folder.expanded;
    return node;
}

/// Adds a folder below its parent. One that has no parent hangs below the root, under a name that says so; one without
/// an id is the root's own and has no node.
/// @returns whether it is in its place; the error is pending otherwise
bool Add_Folder(Tree_Builder &builder, Folder_Row folder, const QSet<QString> &icons, qint64 count)
{
    if (Resume_Next([&] { builder.Add(Parent_Key(folder.id), Folder_Node(folder, icons, count)); }))
        return true;
    folder.name = Pack_Text("Frm_Main", "_Lost_Folder").arg(folder.name, folder.id);
    if (!folder.id.isEmpty())
        builder.Add(Root_Key, Folder_Node(folder, icons, count));
    return false;
}

qint64 Count_Of(const QString &id, const QString &connection, bool subtree)
{
    Recordset count;
    count.Open(Sql_Text(subtree ? Sql::Count_Subtree : Sql::Count_Folder, id), connection);
    return count[0].Number();
}

QString Combo_Line(const QString &id, const QString &name)
{
    if (id.size() == 3)
        return name;
    return QString(std::max<qsizetype>(id.size() - 3, 0), QLatin1Char(' ')) + QStringLiteral("├ ") + name;
}

void Append_Combo_Lines(Folder_Combo &combo, const char16_t *statement)
{
    Recordset rows;
    rows.Open(Sql_Text(statement), App().Conn_Str);
    for (; !rows.Eof(); rows.MoveNext()) {
        const QString id = rows[QStringLiteral("cate_ID")].Text();
        combo.items.append(Combo_Line(id, Shown_Folder_Name(id, rows[QStringLiteral("cate_Name")].Text())));
        Cate_ID_List().last() = id;
        Cate_ID_List().append(QString());
    }
}

/// A fact of the database; a missing or empty one is made with its default.
QString Fact_Or_Default(const QString &name, const QString &preset)
{
    Recordset fact;
    fact.Open(Sql_Text(Sql::Fact, name), App().Conn_Str);
    QString value = fact.Eof() ? QString() : fact[0].Text();
    if (!value.isEmpty())
        return value;
    Run_Statement(Sql_Text(Sql::New_Fact, name, preset), App().Conn_Str);
    return preset;
}
} // namespace

QString Shown_Folder_Name(const QString &id, const QString &name)
{
    return id == Recycle_Bin_Id && name == Recycle_Bin_Name ? Pack_Text("Frm_Main", "_RecycleBin") : name;
}

bool GetClassInfo_Ex(Tree_Model &tree, const QString &connection, const QString &defaultRootName)
{
    const QString source = QStringLiteral("Mod_DataBase\\GetClassInfo_Ex");
    Tree_Builder builder;
    builder.Add({}, Root_Node(App().Com_Name.isEmpty() ? defaultRootName : App().Com_Name));
    const bool complete = Trap(source, [&] {
        Database_Server::Ask_Ahead(
            connection, {Sql_Text(Sql::All_Folders), Sql_Text(Sql::Count_By_Folder), Sql_Text(Sql::Locked_Folders)});
        const QList<Folder_Row> folders = Read_Folders(connection);
        const Document_Counts counts(connection);
        const bool subtree = Is_On(&Settings_Record::ShowLow);
        const QSet<QString> icons = Icon_Files();
        bool inPlace = true;
        for (const Folder_Row &folder : folders)
            inPlace = Add_Folder(builder, folder, icons, counts.Of(folder.id, subtree)) && inPlace;
        if (!inPlace)
            Error_Log(source);
        return inPlace;
    });
    tree.Replace(builder.Take());
    return complete;
}

void Update_Tree_Num_Ex(Tree_Model &tree, const QString &id, const QString &connection, bool subtree)
{
    Trap(QStringLiteral("Mod_DataBase\\Update_Tree_Num_Ex"), [&] {
        for (int i = 1; i < tree.Node_Count(); ++i) {
            const QString nodeId = tree.Node(i).key.trimmed().mid(2);
            if (!id.startsWith(nodeId))
                continue;
            const QString name = GetKeyPart(tree.Node(i).caption, Key_Part::Before_Bracket);
            tree.Set_Caption(i, Make_Caption(name, Count_Of(nodeId, connection, subtree)));
        }
    });
}

void Copy_Tree(const Tree_Model &source, Tree_Model &target)
{
    Tree_Builder builder;
    builder.Add({}, Root_Node(App().Com_Name));
    constexpr qsizetype Top_Level_Key = 5; // "C_" and three digits
    for (int i = 1; i < source.Node_Count(); ++i) {
        const Tree_Node &original = source.Node(i);
        Tree_Node copy;
        copy.key = original.key;
        copy.caption = GetKeyPart(original.caption, Key_Part::Before_Bracket);
        copy.image = original.image;
        copy.expanded = original.expanded;
        builder.Add(original.key.size() == Top_Level_Key ? Root_Key : source.Node(original.parent).key, copy);
    }
    target.Replace(builder.Take());
}

QStringList &Cate_ID_List()
{
    static QStringList ids{QString()};
    return ids;
}

void Reload_Cate(Folder_Combo &combo, const QString &allFolders)
{
    Cate_ID_List() = QStringList{QString()};
    combo.items.clear();
    if (combo.name == QLatin1String("Comb_Find_Cate"))
        combo.items.append(allFolders.isEmpty() ? QStringLiteral("全部节点") : allFolders);
    Trap(QStringLiteral("Mod_DataBase\\Reload_Cate"), [&] {
        Database_Server::Ask_Ahead(App().Conn_Str, {Sql_Text(Sql::Combo_Folders), Sql_Text(Sql::Combo_Recycle_Bin)});
        Append_Combo_Lines(combo, Sql::Combo_Folders);
        Append_Combo_Lines(combo, Sql::Combo_Recycle_Bin);
    });
}

void Save_Tree_Status(const QString &id, bool expanded)
{
    Trap(QStringLiteral("Frm_Main\\Save_Tree_Status"), [&] {
        Keep_Setting(&Settings_Record::Tree_LastKey, id);
        Run_Statement(Sql_Text(Sql::Save_Expanded, expanded ? 1 : 0, id), App().Conn_Str);
    });
}

void Load_Root_Facts()
{
    Database_Server::Ask_Ahead(App().Conn_Str, {Sql_Text(Sql::Fact, QStringLiteral("COM_NAME")),
                                                Sql_Text(Sql::Fact, QStringLiteral("COM_ICON"))});
    App().Com_Name = Fact_Or_Default(QStringLiteral("COM_NAME"), QStringLiteral("Zelqor"));
    App().Com_Icon = Fact_Or_Default(QStringLiteral("COM_ICON"), QStringLiteral("ZELQOR.ICO"));
}
