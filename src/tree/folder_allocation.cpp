// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_allocation.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "tree/folder_ids.h"
#include "tree/folder_sql.h"
#include "tree/folder_trouble.h"

namespace
{
constexpr qint32 Bad_Argument = 5;

/// The next number, padded to the width of an id below `parentId`. Counted digit by digit, so that no depth is too
/// deep for it.
QString Next_Id(const QString &id, const QString &parentId)
{
    QString number = id;
    qsizetype at = number.size() - 1;
    for (; at >= 0 && number.at(at) == u'9'; --at)
        number[at] = u'0';
    if (at < 0)
        number.prepend(u'1');
    else
        number[at] = QChar(number.at(at).unicode() + 1);
    while (number.size() > 1 && number.startsWith(u'0'))
        number.remove(0, 1);
    return PadLeft(number, static_cast<int>(parentId.size()) + 3, u'0');
}

/// The first id of a walk over existing children that is not theirs.
QString Walk(const char16_t *statement, const QString &parentId, QString candidate)
{
    Recordset children;
    children.Open(Sql_Text(statement, parentId), App().Conn_Str);
    for (; !children.Eof(); children.MoveNext()) {
        const QString id = children[0].Text();
        if (candidate.isEmpty())
            candidate = id;
        if (id != candidate)
            break;
        candidate = Next_Id(candidate, parentId);
    }
    return candidate.isEmpty() ? parentId + QStringLiteral("001") : candidate;
}
} // namespace

QString Next_Id_From_First(const QString &parentId)
{
    return Walk(Sql::Children_From_First, parentId, {});
}

QString Lowest_Free_Id(const QString &parentId)
{
    return Walk(Sql::Children_But_Bin, parentId, parentId + QStringLiteral("001"));
}

void Require_Place(const QString &id)
{
    const QString parent = Parent_Id(id);
    bool there = Is_Folder_Id(id);
    if (there && !parent.isEmpty()) {
        Recordset row;
        row.Open(Sql_Text(Sql::Folder_Exists, parent), App().Conn_Str);
        there = !row.Eof();
    }
    if (!there)
        throw Run_Time_Error(Bad_Argument, Pack_Text("Frm_Main", "_No_Place") + id);
}
