// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/system_log.h"

#include "core/error_log.h"
#include "core/log_view_sql.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "platform/machine/machine.h"

void Add_Log(Log_Type type, const QString &text, const QString &var1, const QString &var2)
{
    Trap(QStringLiteral("Mod_DataBase\\Add_Log"), [&] {
        Recordset log;
        log.CursorType = Cursor_Type::Dynamic;
        log.LockType = Lock_Type::Optimistic;
        log.Open(Sql_Text(Sql::One_Line), App().Conn_Str);
        log.AddNew();
        log[QStringLiteral("type_id")].Set(QString::number(static_cast<int>(type)));
        log[QStringLiteral("log_text")].Set(text);
        log[QStringLiteral("log_user")].Set(App().Curr_User);
        log[QStringLiteral("log_date")].Set(Machine::Now());
        log[QStringLiteral("log_mac")].Set(Machine::Network_Address());
        log[QStringLiteral("log_comp")].Set(Machine::Computer_Name());
        log[QStringLiteral("log_var1")].Set(var1);
        log[QStringLiteral("log_var2")].Set(var2);
        log.Update();
        log.Close();
    });
}
