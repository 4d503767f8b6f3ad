// SPDX-License-Identifier: GPL-3.0-or-later
#include "users/login.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/system_log.h"
#include "platform/database/recordset.h"
#include "users/login_sql.h"
#include "users/scrambling.h"

#include <optional>

namespace
{
const QString Locked_Mark = QStringLiteral("X");

/// The stored password of a user, without outer blanks; nothing for an unknown name.
std::optional<QString> Stored_Password(const QString &name)
{
    Recordset user;
    user.Open(Sql_Text(Sql::Login_User, name), App().Conn_Str);
    if (user.Eof())
        return std::nullopt;
    return user[QStringLiteral("User_Pass")].Text().trimmed();
}

void Take_As_Current(const QString &name)
{
    App().Curr_User = name;
    Last_Login.Keep(name);
    Add_Log(Log_Type::Changed, name + QStringLiteral("Login...."));
}
} // namespace

QStringList Login_Names()
{
    QStringList names;
    Recordset users;
    for (users.Open(Sql_Text(Sql::Login_Names), App().Conn_Str); !users.Eof(); users.MoveNext())
        names << users[QStringLiteral("user_name")].Text();
    return names;
}

bool Is_User(const QString &name)
{
    return Stored_Password(name).has_value();
}

Login_Result Try_Login(const QString &name, const QString &password)
{
    if (Has_Special_Characters(password))
        return Login_Result::Special_Character;
    const QString user = name.trimmed();
    const std::optional<QString> stored = Stored_Password(user);
    if (!stored)
        return Login_Result::Unknown_User;
    if (*stored != Encode(password))
        return Login_Result::Wrong_Password;
    if (*stored == Locked_Mark)
        return Login_Result::Locked;
    Take_As_Current(user);
    return Login_Result::Success;
}
