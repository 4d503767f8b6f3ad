// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/log_view.h"

#include "core/language_pack.h"
#include "core/log_view_sql.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "core/system_log.h"
#include "platform/database/recordset.h"

#include <QHash>

namespace
{
Log_Line Current_Line(Recordset &log, const QString &type)
{
    return {type,
            log[QStringLiteral("log_text")].Text(),
            log[QStringLiteral("log_user")].Text(),
            log[QStringLiteral("log_date")].Text(),
            log[QStringLiteral("log_mac")].Text(),
            log[QStringLiteral("log_comp")].Text()};
}
} // namespace

QString Log_Type_Text(const QString &typeId)
{
    for (int type = 0; type <= static_cast<int>(Log_Type::Exported); ++type) {
        if (typeId == QString::number(type))
            return Language().GetString(QStringLiteral("Frm_DbLog"), QStringLiteral("_Type_Id") + typeId);
    }
    return {};
}

QStringList Log_Users()
{
    QStringList names;
    Recordset users;
    for (users.Open(Sql_Text(Sql::Log_Users), App().Conn_Str); !users.Eof(); users.MoveNext())
        names << users[QStringLiteral("user_name")].Text();
    return names;
}

std::vector<Log_Line> Log_Lines(const QString &user, const QString &first, const QString &last)
{
    const char16_t *statement = Config().Op_DB_Sql == QLatin1String("1") ? Sql::Log_Lines_Server : Sql::Log_Lines;
    QHash<QString, QString> types;
    std::vector<Log_Line> lines;
    Recordset log;
    for (log.Open(Sql_Text(statement, user, first, last), App().Conn_Str); !log.Eof(); log.MoveNext()) {
        const QString typeId = log[QStringLiteral("type_id")].Text();
        if (!types.contains(typeId))
            types.insert(typeId, Log_Type_Text(typeId));
        lines.push_back(Current_Line(log, types.value(typeId)));
    }
    return lines;
}
