// SPDX-License-Identifier: GPL-3.0-or-later
#include "users/user_start.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "users/login.h"
#include "users/user_start_sql.h"

namespace
{
const QString Default_User = QStringLiteral("Zelqor");

/// A read-only database stays as it is, and is read as it is.
void Repair(const QString &statement)
{
    try {
        Run_Statement(statement, App().Conn_Str);
    } catch (const Run_Time_Error &error) {
        if (error.failure != Failure::Read_Only)
            throw;
    }
}

bool Has_Row(const char16_t *statement, const QString &user)
{
    Recordset rows;
    rows.Open(Sql_Text(statement, user), App().Conn_Str);
    return !rows.Eof();
}

/// The default user is remembered as the last one, so that the next start asks it for nothing either. This comes
/// before its rows are made: a process that dies between the two repairs them at the next start.
void Become_Default_User()
{
    Last_Login.Keep(Default_User);
    App().Root_Name = Default_User;
    App().Root_Icon = QStringLiteral("Home.ico").toUpper();
    App().Curr_User = Default_User;
}

bool No_Users()
{
    Recordset count;
    count.Open(Sql_Text(Sql::User_Count), App().Conn_Str);
    return count[0].Number() == 0;
}

void Add_Default_User()
{
    Repair(Sql_Text(Sql::Default_Credentials));
    Repair(Sql_Text(Sql::Default_Profile));
}
} // namespace

void Read_Last_User()
{
    App().Curr_User = Last_Login.Read();
    if (!App().Curr_User.isEmpty())
        return;
    Last_Login.Keep(App().Root_Name);
    App().Curr_User = App().Root_Name;
}

void Repair_Users()
{
    Repair(Sql_Text(Sql::Drop_Passwords_Without_User));
    Repair(Sql_Text(Sql::Drop_Users_Without_Password));
}

Login_Need Decide_Login()
{
    if (App().Curr_User.contains(QLatin1Char('\''))) // nobody's: no statement can ask for it
        return Login_Need::Dialog;
    Recordset credentials;
    credentials.Open(Sql_Text(Sql::User_Credentials, App().Curr_User), App().Conn_Str);
    if (credentials.Eof()) {
        if (!No_Users())
            return Login_Need::Dialog;
        Become_Default_User();
        Add_Default_User();
        return Login_Need::None;
    }
    const bool noPassword = credentials[QStringLiteral("User_Pass")].Text().trimmed().isEmpty();
    const bool noLock = credentials[QStringLiteral("User_Lock")].Text().trimmed().isEmpty();
    if (noPassword && noLock)
        return Login_Need::None;
    if (Has_Row(Sql::User_Profile, App().Curr_User))
        return Login_Need::Dialog;
    Repair(Sql_Text(Sql::Default_Profile));
    Become_Default_User();
    return Login_Need::None;
}

void Make_First_User()
{
    if (!Has_Row(Sql::User_Credentials, App().Curr_User) && No_Users())
        Add_Default_User();
}
