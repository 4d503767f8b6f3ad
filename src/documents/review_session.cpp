// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/review_session.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "documents/review_sql.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "tree/folder_ids.h"

#include <algorithm>

namespace
{
QDate Day_Of(const Due_Document &document)
{
    return Database_Engine::Date_From_Text(document.next).date();
}

bool Is_Due_As_Before(const Due_Document &document)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Next_Reading, document.code_id), App().Conn_Str);
    return !row.Eof() && !In_Recycle_Bin(row[QStringLiteral("Cate_ID")].Text()) &&
           row[QStringLiteral("Code_ReadDateNext")].Text() == document.next;
}
} // namespace

std::vector<Due_Document> Due_Documents(const QDate &last_day)
{
    std::vector<Due_Document> due;
    Recordset rows;
    rows.Open(Sql_Text(Sql::Due_Before, Database_Engine::Short_Date(last_day.addDays(1).startOfDay())), App().Conn_Str);
    for (; !rows.Eof(); rows.MoveNext())
        due.push_back({rows[QStringLiteral("Code_ID")].Text(), rows[QStringLiteral("Code_Title")].Text(),
                       static_cast<int>(rows[QStringLiteral("Code_Color")].Text().count(QChar(u'★'))),
                       rows[QStringLiteral("Code_ReadDateNext")].Text()});
    std::stable_sort(due.begin(), due.end(), [](const Due_Document &a, const Due_Document &b) {
        return Day_Of(a) != Day_Of(b) ? Day_Of(a) < Day_Of(b) : a.stars > b.stars;
    });
    return due;
}

void Review_Session::Begin(const QDate &today)
{
    m_queue.clear();
    Trap(QStringLiteral("Frm_Main\\Review"), [&] {
        const std::vector<Due_Document> due = Due_Documents(today);
        m_queue.assign(due.begin(), due.end());
    });
}

std::optional<Due_Document> Review_Session::Next()
{
    return Trap(QStringLiteral("Frm_Main\\Review"), [&]() -> std::optional<Due_Document> {
        while (!m_queue.empty()) {
            const Due_Document next = m_queue.front();
            m_queue.pop_front();
            if (Is_Due_As_Before(next))
                return next;
        }
        return std::nullopt;
    });
}
