// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/hot.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/server.h"
#include "platform/machine/machine.h"
#include "tree/folder_ids.h"
#include "views/hot_sql.h"

#include <algorithm>
#include <iterator>

namespace
{
const QString Group_Key = QStringLiteral("G_000");
const QString Overdue_Key = QStringLiteral("G_001");
const QString Today_Key = QStringLiteral("G_002");

struct Hot_List {
    const char *key;
    const char16_t *clause;
    bool by_year;
};
constexpr Hot_List Hot_Lists[] = {
    {"T_000", Sql::Hot_Most_Read, false}, {"T_001", Sql::Hot_Newest, true},  {"T_002", Sql::Hot_Updated, true},
    {"T_003", Sql::Hot_Read, true},       {"T_004", Sql::Hot_Tagged, false},
};

/// Days from today to a range's first and last one; a range of the week or month counts from the day before the week's
/// first, Sunday: the number of the weekday is taken off.
struct Due_Range {
    const char *key;
    int first;
    int last;
    bool first_by_week;
    bool last_by_week;
};
constexpr Due_Range Due_Ranges[] = {
    {"G_002", 0, 0, false, false}, {"G_003", 1, 1, false, false}, {"G_004", 0, 7, false, true},
    {"G_005", 8, 17, true, true},  {"G_006", 0, 31, false, true}, {"G_007", 31, 62, true, true},
};

template <class Row, size_t Size>
const Row *Row_Of(const Row (&table)[Size], const QString &key)
{
    const auto row =
        std::find_if(std::begin(table), std::end(table), [&](const Row &one) { return key == QLatin1String(one.key); });
    return row == std::end(table) ? nullptr : row;
}

/// Sunday is 1.
int Weekday(const QDate &date)
{
    return date.dayOfWeek() % 7 + 1;
}

QString Moment(const QDate &date, const char *time)
{
    return Database_Engine::Short_Date(date.startOfDay()) + QLatin1Char(' ') + QLatin1String(time);
}

QString Year_Of(const QDate &today)
{
    constexpr qsizetype Digits = 4;
    return Database_Engine::Short_Date(today.startOfDay()).left(Digits);
}

/// What is due by a node of the review, without its order; "" for any other.
QString Due_Condition(const QString &key, const QDate &today)
{
    const bool server = App().Date_Delim == QLatin1String("'");
    if (key == Overdue_Key)
        return Sql_Text(server ? Sql::Overdue_Server : Sql::Overdue, Moment(today, "00:00:00"));
    const Due_Range *range = Row_Of(Due_Ranges, key);
    if (range == nullptr)
        return {};
    const QDate first = today.addDays(range->first - (range->first_by_week ? Weekday(today) : 0));
    const QDate last = today.addDays(range->last - (range->last_by_week ? Weekday(today) : 0));
    return Sql_Text(server ? Sql::Due_Between_Server : Sql::Due_Between, Moment(first, "00:00:00"),
                    Moment(last, "23:59:59"));
}

QString Count_Statement(const QString &key, const QDate &today)
{
    return Sql_Text(Sql::Count_Where) + Due_Condition(key, today);
}

qint64 Count_Of(const QString &key, const QDate &today)
{
    Recordset count;
    count.Open(Count_Statement(key, today), App().Conn_Str);
    return count[0].Number();
}

Tree_Node Node_Of(const QString &key, const char *image)
{
    Tree_Node node;
    node.key = key;
    node.caption = Language().GetString(QStringLiteral("Frm_Main"), QLatin1Char('_') + key);
    node.image = QLatin1String(image);
    node.expanded = true;
    return node;
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
} // namespace

void Reload_Hot(Tree_Model &tree)
{
    Trap(QStringLiteral("Mod_DataBase\\Reload_Hot"), [&] {
        Tree_Builder builder;
        builder.Add({}, Root_Node());
        for (const Hot_List &list : Hot_Lists)
            builder.Add(Root_Key, Node_Of(QLatin1String(list.key), "note.ico"));
        builder.Add(Root_Key, Node_Of(Group_Key, "calendar.ico"));
        builder.Add(Group_Key, Node_Of(Overdue_Key, "calendar.ico"));
        for (const Due_Range &range : Due_Ranges)
            builder.Add(Group_Key, Node_Of(QLatin1String(range.key), "calendar.ico"));
        tree.Replace(builder.Take());
    });
}

QString Hot_Where(const QString &nodeKey, const QDate &today)
{
    if (const Hot_List *list = Row_Of(Hot_Lists, nodeKey)) {
        return Sql_Text(Sql::Hot_Where) +
               (list->by_year ? Sql_Text(list->clause, Year_Of(today)) : Sql_Text(list->clause));
    }
    const QString due = Due_Condition(nodeKey, today);
    if (due.isEmpty())
        return {};
    return Sql_Text(Sql::Hot_Where) + due +
           Sql_Text(nodeKey == Overdue_Key ? Sql::Order_Of_Overdue : Sql::Order_Of_Due);
}

Page_Info List_Hot(const QString &nodeKey, List_Model &list)
{
    const QString where = Hot_Where(nodeKey, Machine::Now().date());
    if (where.isEmpty())
        return {};
    return ShowCodeInfoToList_Ex_Key(where, list, {}, 1, Config().Hot_NUM.toInt());
}

Due_Counts Count_Due(const QDate &today)
{
    return Trap(QStringLiteral("Mod_DataBase\\Count_Due"), [&] {
        Database_Server::Ask_Ahead(App().Conn_Str,
                                   {Count_Statement(Overdue_Key, today), Count_Statement(Today_Key, today)});
        return Due_Counts{Count_Of(Overdue_Key, today), Count_Of(Today_Key, today)};
    });
}
