// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/by_date.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/machine/machine.h"
#include "tree/folder_ids.h"
#include "views/by_date_sql.h"

namespace
{
constexpr int Months = 12;
/// The second separator of a date is sought from its sixth character on.
constexpr qsizetype Behind_First_Separator = 5;

QString Separator()
{
    return App().Date_Sep.isEmpty() ? QStringLiteral("-") : App().Date_Sep;
}

QString Two_Digits(int number)
{
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

QString Four_Digits(int number)
{
    return QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0'));
}

QString Caption(const QString &name, const char *unit, qint64 count)
{
    return name + Pack_Text("Frm_Main", unit) + QStringLiteral(" [%1]").arg(count);
}

qint64 Count_Of(const QString &prefix)
{
    Recordset count;
    count.Open(Sql_Text(Sql::Count_Of_Period, prefix), App().Conn_Str);
    return count[0].Number();
}

/// The year that a statement's first row is of; the present one without rows or date.
int Year_Of(const char16_t *statement)
{
    Recordset row;
    row.Open(Sql_Text(statement), App().Conn_Str);
    const QDate date = row.Eof() ? QDate() : row[QStringLiteral("code_date")].Value().toDateTime().date();
    return date.isValid() ? date.year() : Machine::Now().date().year();
}

bool First_Row_Has_No_Date()
{
    Recordset row;
    row.Open(Sql_Text(Sql::First_Date), App().Conn_Str);
    return !row.Eof() && row[QStringLiteral("code_date")].Is_Null();
}

Tree_Node Root_Node()
{
    Tree_Node root;
    root.key = Root_Key;
    root.caption = App().Com_Name;
    root.image = App().Com_Icon.toUpper();
    root.expanded = true;
    return root;
}

Tree_Node Period_Node(const QString &key, const QString &caption, const char *image)
{
    Tree_Node node;
    node.key = key;
    node.caption = caption;
    node.image = QLatin1String(image);
    return node;
}

std::vector<Tree_Node> Month_Nodes(const QString &year)
{
    const QString separator = Separator();
    std::vector<Tree_Node> nodes;
    for (int month = 1; month <= Months; ++month) {
        const QString first = year + separator + Two_Digits(month) + separator + QStringLiteral("01");
        const QString day = Database_Engine::Short_Date(Database_Engine::Date_From_Text(first));
        const QString prefix = day.left(day.indexOf(separator, Behind_First_Separator));
        nodes.push_back(Period_Node(QStringLiteral("M_") + prefix,
                                    Caption(Two_Digits(month), "_Month", Count_Of(prefix)), "calendar.ico"));
    }
    return nodes;
}

std::vector<Tree_Node> Day_Nodes(const QString &prefix)
{
    std::vector<Tree_Node> nodes;
    Recordset days;
    days.Open(Sql_Text(Sql::Days_Of_Month, prefix), App().Conn_Str);
    for (; !days.Eof(); days.MoveNext()) {
        const QString day = Two_Digits(days[1].Value().toDateTime().date().day());
        nodes.push_back(Period_Node(QStringLiteral("D_") + prefix + Separator() + day,
                                    Caption(day, "_Day", days[0].Number()), "calendar.ico"));
    }
    return nodes;
}
} // namespace

void Reload_ByDate(Tree_Model &tree)
{
    Tree_Builder builder;
    builder.Add({}, Root_Node());
    Trap(QStringLiteral("Mod_DataBase\\Reload_ByDate"), [&] {
        const int last = Year_Of(Sql::Last_Date);
        for (int year = Year_Of(First_Row_Has_No_Date() ? Sql::First_Known_Date : Sql::First_Date); year <= last;
             ++year) {
            const QString text = Four_Digits(year);
            builder.Add(Root_Key, Period_Node(QStringLiteral("Y_") + text, Caption(text, "_Year", Count_Of(text)),
                                              "calendar.ico"));
        }
    });
    tree.Replace(builder.Take());
}

void Load_Date_Node(Tree_Model &tree, int node)
{
    if (node < 0 || !tree.Node(node).children.empty())
        return;
    const QString key = tree.Node(node).key;
    const QString period = GetKeyPart(key, Key_Part::After_Underscore);
    Trap(QStringLiteral("Frm_Main\\Trv_ByDate_NodeClick"), [&] {
        if (key.startsWith(QLatin1Char('Y')))
            tree.Add_Children(node, Month_Nodes(period));
        else if (key.startsWith(QLatin1Char('M')))
            tree.Add_Children(node, Day_Nodes(period));
    });
}

QString Date_Text_Of(const QString &nodeKey)
{
    if (nodeKey == Root_Key)
        return {};
    const QString text = GetKeyPart(nodeKey, Key_Part::After_Underscore);
    return nodeKey.startsWith(QLatin1Char('D')) ? Database_Engine::Short_Date(Database_Engine::Date_From_Text(text))
                                                : text;
}

QStringList Date_Path(const QString &nodeKey)
{
    if (nodeKey.isEmpty() || nodeKey == Root_Key)
        return nodeKey.isEmpty() ? QStringList() : QStringList(nodeKey);
    const QStringList parts = GetKeyPart(nodeKey, Key_Part::After_Underscore).split(Separator());
    QStringList path;
    for (qsizetype i = 0; i < parts.size() && i < 3; ++i)
        path << QStringLiteral("YMD").mid(i, 1) + QLatin1Char('_') + parts.mid(0, i + 1).join(Separator());
    return path;
}
