// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/book_candidates.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "exchange/book_export_sql.h"
#include "platform/database/recordset.h"

using namespace Mod_DataBaseExport;

namespace
{
constexpr qsizetype Shown_Of_Text = 120;
} // namespace

Candidates Fill_Book_Candidates(const QString &folderId, List_Model &list, const std::function<QString()> &ask,
                                QStringList &refused)
{
    if (Is_Refused(folderId, App().Conn_Str, ask))
        return Candidates::Wrong_Password;
    std::vector<List_Row> rows;
    Folder_Names folders(App().Conn_Str);
    Recordset found;
    for (found.Open(Sql_Text(Sql::Candidates_For_Book, folderId), App().Conn_Str); !found.Eof(); found.MoveNext()) {
        const QString title = found[QStringLiteral("Code_Title")].Text();
        const QString text = found[QStringLiteral("Code_Content")].Text();
        if (text.isEmpty()) {
            refused << title;
            continue;
        }
        List_Row row;
        row.tag = found[QStringLiteral("Code_ID")].Text();
        row.texts = {row.tag,
                     title,
                     folders.Name(found[QStringLiteral("Cate_ID")].Text()),
                     found[QStringLiteral("Code_Keys")].Text(),
                     found[QStringLiteral("Code_Type")].Text(),
                     text.left(Shown_Of_Text).simplified()};
        rows.push_back(std::move(row));
    }
    list.Replace(std::move(rows));
    return Candidates::Listed;
}
