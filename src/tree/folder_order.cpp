// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_order.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "tree/folder_ids.h"
#include "tree/folder_sql.h"
#include "tree/folder_trouble.h"

#include <algorithm>
#include <vector>

using Folder_Editing::Trap_Editing;

namespace
{
struct Sibling {
    QString id;
    QString name;
    qint64 order = 0;
};

std::vector<Sibling> Siblings_Of(const QString &id)
{
    std::vector<Sibling> siblings;
    Recordset rows;
    rows.Open(Sql_Text(Sql::Siblings_In_Order, Parent_Id(id)), App().Conn_Str);
    for (; !rows.Eof(); rows.MoveNext())
        siblings.push_back({rows[0].Text(), rows[1].Text(), rows[QStringLiteral("Order_Id")].Number()});
    return siblings;
}

qint64 Highest_Number(const QString &id)
{
    Recordset highest;
    highest.Open(Sql_Text(Sql::Highest_Sibling, Parent_Id(id)), App().Conn_Str);
    return Order_Of_Id(highest[0].Text());
}

bool Agreed(const char *questionKey, const Sibling &own, const Sibling &partner)
{
    return Folder_Editing::Confirm(Pack_Text("Frm_Main", questionKey) + QStringLiteral("\n") + own.name +
                                   QStringLiteral(" ==> ") + partner.name);
}

void Exchange(const Sibling &own, const Sibling &partner)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        Run_Statement(Sql_Text(Sql::Set_Order, own.order, partner.id), App().Conn_Str);
        Run_Statement(Sql_Text(Sql::Set_Order, partner.order, own.id), App().Conn_Str);
    });
}

/// The folder's own values as they stand in its row now.
Sibling Own_Values(const QString &id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Own_Order, id), App().Conn_Str);
    return {id, row[1].Text(), row[0].Number()};
}

auto Place_Of(const std::vector<Sibling> &siblings, const QString &id)
{
    return std::find_if(siblings.begin(), siblings.end(), [&](const Sibling &one) { return one.id == id; });
}
} // namespace

bool Move_Node_Up(const QString &id)
{
    return Trap_Editing(QStringLiteral("Frm_Main\\Cmd_Node_Up_Call"), [&] {
        const std::vector<Sibling> siblings = Siblings_Of(id);
        const auto place = Place_Of(siblings, id);
        if (place == siblings.begin() || place == siblings.end()) {
            Folder_Editing::Tell(Pack_Text("Frm_Main", "_NodeFront"));
            return false;
        }
        const Sibling own = Own_Values(id);
        if (!Agreed("_NodeUpdate", own, *(place - 1)))
            return false;
        Exchange(own, *(place - 1));
        return true;
    });
}

bool Move_Node_Down(const QString &id, const char *questionKey)
{
    return Trap_Editing(QStringLiteral("Frm_Main\\Cmd_Node_Down_Call"), [&] {
        const std::vector<Sibling> siblings = Siblings_Of(id);
        const auto place = Place_Of(siblings, id);
        if (place == siblings.end() || place + 1 == siblings.end() || place->order == 0) {
            Folder_Editing::Tell(Pack_Text("Frm_Main", "_SameNode"));
            return false;
        }
        Sibling partner = *(place + 1);
        if (partner.order == place->order)
            partner.order = Highest_Number(id);
        if (!Agreed(questionKey, *place, partner))
            return false;
        Exchange(*place, partner);
        return true;
    });
}
