// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/review_groups.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/trouble.h"
#include "documents/review_sql.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"

#include <QRegularExpression>

namespace
{
constexpr double Usual_Factor = 1.7;
constexpr double Smallest_Factor = 1.5;
constexpr double Largest_Factor = 2.0;
const QString First_Period = QStringLiteral("H");

Recordset Stored_Group(const QString &name)
{
    Recordset row;
    row.CursorType = Cursor_Type::Keyset;
    row.LockType = Lock_Type::Optimistic;
    row.Open(Sql_Text(Sql::Group_By_Name, name), App().Conn_Str);
    return row;
}

void Store(Review_Group &group, bool isDefault)
{
    Recordset row = Stored_Group(group.name);
    const bool added = row.Eof();
    if (added)
        row.AddNew();
    row[QStringLiteral("Gene_Name")].Set(group.name);
    row[QStringLiteral("Gene_Default")].Set(isDefault ? QStringLiteral("X") : QString());
    row[QStringLiteral("Gene_Num")].Set(static_cast<double>(group.factor));
    row[QStringLiteral("Gene_Per")].Set(group.period);
    row.Update();
    group.id = static_cast<int>(row[added ? QStringLiteral("Gene_Index") : QStringLiteral("Gene_Id")].Number());
    if (!added)
        return;
    // As its row's number, the id of a group that was deleted never comes again.
    Run_Statement(Sql_Text(Sql::Set_Group_Id, group.id, group.id), App().Conn_Str);
}

bool Is_In_Use(int id)
{
    Recordset count;
    count.Open(Sql_Text(Sql::Count_Group_Use, id), App().Conn_Str);
    return count[0].Number() > 0;
}
} // namespace

float Factor_Of_Text(const QString &text)
{
    static const QRegularExpression leading(QStringLiteral("^\\s*[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)"));
    const double number = leading.match(text).captured().trimmed().toDouble();
    return static_cast<float>(number < Smallest_Factor || number > Largest_Factor ? Usual_Factor : number);
}

QString Refusal_Text(Group_Refusal refusal)
{
    switch (refusal) {
    case Group_Refusal::No_Name:
        return Pack_Text("Frm_Config", "_InputName");
    case Group_Refusal::In_Use:
        return Pack_Text("Frm_Config", "_InUse");
    case Group_Refusal::Failed:
        return Last_Trouble();
    case Group_Refusal::None:
        break;
    }
    return {};
}

bool Group_Editor::Load()
{
    m_groups.clear();
    m_checked = -1;
    return Trap_Told(QStringLiteral("Frm_Config\\Load_Gene"), [&] {
        Recordset rows;
        rows.Open(Sql_Text(Sql::Groups_By_Name), App().Conn_Str);
        for (; !rows.Eof(); rows.MoveNext()) {
            if (rows[QStringLiteral("Gene_Default")].Text() == QLatin1String("X"))
                m_checked = static_cast<int>(m_groups.size());
            m_groups.push_back(
                {static_cast<int>(rows[QStringLiteral("Gene_Id")].Number()), rows[QStringLiteral("Gene_Name")].Text(),
                 rows[QStringLiteral("Gene_Num")].Value().toFloat(), rows[QStringLiteral("Gene_Per")].Text()});
        }
        return true;
    });
}

Group_Refusal Group_Editor::Put(int row, const QString &name, const QString &factor, const QString &period)
{
    Review_Group group;
    group.name = name.trimmed();
    if (group.name.isEmpty())
        return Group_Refusal::No_Name;
    group.factor = Factor_Of_Text(factor);
    group.period = period.isEmpty() ? First_Period : period.left(1);
    if (row < 0) {
        m_groups.push_back(group);
    } else {
        group.id = m_groups[static_cast<size_t>(row)].id;
        m_groups[static_cast<size_t>(row)] = group;
    }
    return Group_Refusal::None;
}

Group_Refusal Group_Editor::Delete(int row)
{
    if (row < 0 || row >= static_cast<int>(m_groups.size()))
        return Group_Refusal::No_Name;
    Group_Refusal refusal = Group_Refusal::Failed;
    Trap_Told(QStringLiteral("Frm_Config\\Cmd_Gene_Del_Click"), [&] {
        const int id = m_groups[static_cast<size_t>(row)].id;
        const bool stored = id != 0; // what is not stored yet leaves the list only
        if (stored && Is_In_Use(id)) {
            refusal = Group_Refusal::In_Use;
            return;
        }
        if (stored)
            Run_Statement(Sql_Text(Sql::Delete_Group, id), App().Conn_Str);
        m_groups.erase(m_groups.begin() + row);
        m_checked = m_groups.empty() ? -1 : 0;
        refusal = Group_Refusal::None;
    });
    return refusal;
}

bool Group_Editor::Apply()
{
    return Trap_Told(QStringLiteral("Frm_Config\\Cmd_Apply_Click"), [&] {
        for (const Review_Group &group : m_groups)
            Stored_Group(group.name); // a name that no statement takes is met before anything is written
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (size_t row = 0; row < m_groups.size(); ++row)
                Store(m_groups[row], static_cast<int>(row) == m_checked);
        });
        return true;
    });
}
