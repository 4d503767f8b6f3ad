// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/review_backlog.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/trouble.h"
#include "documents/review_session.h"
#include "documents/review_sql.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"

#include <algorithm>

Backlog_Plan Plan_Backlog(const QDate &today, int days)
{
    return Trap(QStringLiteral("Frm_Main\\Plan_Backlog"), [&] {
        Backlog_Plan plan;
        const std::vector<Due_Document> overdue = Due_Documents(today.addDays(-1));
        const auto count = static_cast<qint64>(overdue.size());
        for (qint64 i = 0; i < count; ++i) {
            const Due_Document &document = overdue[static_cast<size_t>(i)];
            const QDate day = today.addDays(i * std::max(days, 1) / count);
            plan.push_back(
                {document.code_id, document.title, document.next, Database_Engine::Short_Date(day.startOfDay())});
        }
        return plan;
    });
}

bool Apply_Backlog(const Backlog_Plan &plan)
{
    return Trap_Told(QStringLiteral("Frm_Main\\Apply_Backlog"), [&] {
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (const New_Reading &reading : plan)
                Run_Statement(Sql_Text(Sql::Postpone, reading.to, reading.code_id, reading.from), App().Conn_Str);
        });
        return true;
    });
}

Backlog_Plan Turned_Back(Backlog_Plan plan)
{
    for (New_Reading &reading : plan)
        std::swap(reading.from, reading.to);
    return plan;
}
