// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/epub_places.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "exchange/book_export_sql.h"
#include "exchange/directory_export_sql.h"
#include "platform/database/recordset.h"
#include "tree/tree_loading.h"

#include <algorithm>

namespace
{
constexpr qsizetype Segment = 3; ///< of a folder's id
} // namespace

Epub_Places::Epub_Places()
{
    Recordset rows;
    for (rows.Open(Sql_Text(Sql::Exported_Folders, QString()), App().Conn_Str); !rows.Eof(); rows.MoveNext()) {
        const QString id = rows[QStringLiteral("cate_ID")].Text();
        m_ranks.insert(id, m_ranks.size());
        m_names.insert(id, Shown_Folder_Name(id, rows[QStringLiteral("cate_Name")].Text()));
    }
}

QList<Epub::Folder> Epub_Places::Folders_Of(const QString &code_id) const
{
    Recordset row;
    row.Open(Sql_Text(Sql::Document_For_Book, code_id), App().Conn_Str);
    const QString id = row.Eof() ? QString() : row[QStringLiteral("cate_ID")].Text();
    QList<Epub::Folder> folders;
    for (qsizetype end = Segment; end <= id.size(); end += Segment) {
        if (m_names.contains(id.left(end)))
            folders.append({id.left(end), m_names.value(id.left(end))});
    }
    return folders;
}

bool Epub_Places::Is_Before(const QList<Epub::Folder> &one, const QList<Epub::Folder> &other) const
{
    return std::lexicographical_compare(
        one.begin(), one.end(), other.begin(), other.end(),
        [&](const Epub::Folder &a, const Epub::Folder &b) { return m_ranks.value(a.id) < m_ranks.value(b.id); });
}
