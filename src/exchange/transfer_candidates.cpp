// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/transfer_candidates.h"

#include "core/error_log.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "exchange/transfer_sql.h"
#include "platform/database/recordset.h"
#include "users/scrambling.h"

#include <QSet>

using Mod_DataBaseExport::Direction;

namespace
{
const QString No_Folder = QStringLiteral("--");

QString Statement(const QString &folderId, Direction direction)
{
    if (!folderId.isEmpty())
        return Sql_Text(Sql::Candidates_Of_Folder, folderId);
    return Sql_Text(direction == Direction::Export ? Sql::Candidates_To_Export : Sql::Candidates_To_Import);
}

} // namespace

namespace Mod_DataBaseExport
{
bool Is_Refused(const QString &folderId, const QString &connection, const std::function<QString()> &ask)
{
    if (folderId.isEmpty())
        return false;
    Recordset folder;
    folder.Open(Sql_Text(Sql::Lock_Of_Folder, folderId), connection);
    const QString lock = folder.Eof() ? QString() : folder[QStringLiteral("Cate_pass")].Text();
    return !lock.isEmpty() && ask() != Unscramble_Text(lock);
}

const QString &Folder_Names::Name(const QString &id)
{
    const auto known = m_names.constFind(id);
    return known != m_names.constEnd() ? *known : *m_names.insert(id, Read(id));
}

QString Folder_Names::Read(const QString &id) const
{
    QString name = No_Folder;
    Resume_Next([&] {
        Recordset folder;
        folder.Open(Sql_Text(Sql::Name_Of_Candidates_Folder, id), m_connection);
        if (!folder.Eof())
            name = folder[0].Text();
    });
    return name;
}

Candidates Fill_Candidates(const QString &folderId, List_Model &list, const QString &connection, Direction direction,
                           const std::function<QString()> &ask)
{
    list.Clear();
    bool refused = false;
    std::vector<List_Row> rows;
    Resume_Next([&] {
        refused = direction == Direction::Export && Is_Refused(folderId, connection, ask);
        if (refused)
            return;
        const bool tips = direction == Direction::Import && Is_On(&Settings_Record::CH_Lsv_ToolTips);
        Folder_Names folders(connection);
        Recordset found;
        for (found.Open(Statement(folderId, direction), connection); !found.Eof(); found.MoveNext()) {
            List_Row row;
            row.tag = found[QStringLiteral("Code_ID")].Text();
            row.texts = {row.tag, found[QStringLiteral("Code_Title")].Text(),
                         folders.Name(found[QStringLiteral("Cate_ID")].Text()),
                         found[QStringLiteral("Code_Keys")].Text()};
            if (tips)
                row.tool_tip = found[QStringLiteral("Code_Explain")].Text();
            rows.push_back(std::move(row));
        }
    });
    Clear_Pending();
    list.Replace(std::move(rows));
    return refused ? Candidates::Wrong_Password : Candidates::Listed;
}

void Add_To_Transfer_List(const List_Model &from, const QSet<QString> &ticked, List_Model &to)
{
    std::vector<List_Row> rows;
    QSet<QString> known;
    for (int i = 0; i < to.Row_Count(); ++i) {
        rows.push_back(to.Row(i));
        known.insert(to.Row(i).tag);
    }
    for (int i = 0; i < from.Row_Count(); ++i) {
        const List_Row &row = from.Row(i);
        if (ticked.contains(row.tag) && !known.contains(row.tag))
            rows.push_back(row);
    }
    to.Replace(std::move(rows));
}
} // namespace Mod_DataBaseExport
