// SPDX-License-Identifier: GPL-3.0-or-later
#include "users/user_list.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/machine/machine.h"
#include "users/scrambling.h"
#include "users/user_list_sql.h"

namespace
{
/// Counted before adding: the sixth user is still accepted.
constexpr qint64 Most_Before_Adding = 5;
const QString Lock_Mark = QStringLiteral("X");

struct Profile_Field {
    const char *column;
    QString User::*text;
};

constexpr Profile_Field Profile_Fields[] = {
    {"user_title", &User::title},  {"user_Name1", &User::name1},   {"user_Name2", &User::name2},
    {"user_Addr", &User::address}, {"user_Tel", &User::telephone}, {"user_Fax", &User::fax},
    {"user_Email", &User::email},
};

Recordset Rows(const QString &statement, Lock_Type lock = Lock_Type::Read_Only)
{
    Recordset rows;
    rows.CursorType = lock == Lock_Type::Read_Only ? Cursor_Type::Forward_Only : Cursor_Type::Keyset;
    rows.LockType = lock;
    rows.Open(statement, App().Conn_Str);
    return rows;
}

qint64 User_Count()
{
    return Rows(Sql_Text(Sql::Count_Users))[0].Number();
}

/// A date column takes no empty text.
QVariant Day_Value(const QString &typed)
{
    const QString day = typed.trimmed();
    return day.isEmpty() ? QVariant() : QVariant(day);
}

void Put_Credentials(Recordset &row, const User &user)
{
    row[QStringLiteral("user_pass")].Set(Encode(user.password.trimmed()));
    row[QStringLiteral("user_lock")].Set(user.locked ? Lock_Mark : QString());
    row[QStringLiteral("user_start")].Set(Day_Value(user.start));
    row[QStringLiteral("user_end")].Set(Day_Value(user.end));
}

void Put_Profile(Recordset &row, const User &user)
{
    for (const Profile_Field &field : Profile_Fields)
        row[QLatin1String(field.column)].Set((user.*field.text).trimmed());
}

/// A new row that has its name.
Recordset New_Row(const char16_t *statement, const QString &name)
{
    Recordset row = Rows(Sql_Text(statement), Lock_Type::Optimistic);
    row.AddNew();
    row[QStringLiteral("user_name")].Set(name);
    return row;
}

/// A field that does not take its text ends this before either row is written.
void Write(Recordset &credentials, Recordset &profile, const User &user)
{
    Put_Credentials(credentials, user);
    Put_Profile(profile, user);
    credentials.Update();
    profile.Update();
}

User_Refusal Check(const User &user)
{
    if (Has_Special_Characters(user.password))
        return User_Refusal::Special_Character;
    if (user.name.trimmed().isEmpty())
        return User_Refusal::No_Name;
    if (user.password.trimmed() != user.repeated.trimmed())
        return User_Refusal::Passwords_Differ;
    return User_Refusal::None;
}
} // namespace

QStringList User_Names()
{
    QStringList names;
    for (Recordset users = Rows(Sql_Text(Sql::Users_By_Name)); !users.Eof(); users.MoveNext())
        names << users[QStringLiteral("user_name")].Text();
    return names;
}

User Read_User(const QString &name)
{
    User user;
    user.name = name;
    if (Recordset row = Rows(Sql_Text(Sql::Credentials_Of, name)); !row.Eof()) {
        user.password = user.repeated = Decode(row[QStringLiteral("user_pass")].Text());
        user.locked = row[QStringLiteral("user_lock")].Text() == Lock_Mark;
        user.start = row[QStringLiteral("user_start")].Text();
        user.end = row[QStringLiteral("user_end")].Text();
    }
    if (Recordset row = Rows(Sql_Text(Sql::Profile_Of, name)); !row.Eof()) {
        for (const Profile_Field &field : Profile_Fields)
            user.*field.text = row[QLatin1String(field.column)].Text();
    }
    return user;
}

User Blank_User()
{
    User user;
    user.start = user.end = Machine::Now().date().toString(QStringLiteral("yyyy-MM-dd"));
    return user;
}

QString Day_Text(const QString &typed)
{
    const QDateTime day = Database_Engine::Date_From_Text(typed.trimmed());
    return day.isValid() ? Database_Engine::Short_Date(day.date().startOfDay()) : typed;
}

User_Refusal Add_User(const User &user)
{
    if (const User_Refusal refusal = Check(user); refusal != User_Refusal::None)
        return refusal;
    const QString name = user.name.trimmed();
    if (!Rows(Sql_Text(Sql::User_Is_There, name)).Eof())
        return User_Refusal::Exists;
    if (User_Count() > Most_Before_Adding)
        return User_Refusal::Too_Many;
    Database_Engine::One_Action(App().Conn_Str, [&] {
        Recordset credentials = New_Row(Sql::New_Credentials, name);
        Recordset profile = New_Row(Sql::New_Profile, name);
        Write(credentials, profile, user);
    });
    return User_Refusal::None;
}

User_Refusal Change_User(const User &user)
{
    if (const User_Refusal refusal = Check(user); refusal != User_Refusal::None)
        return refusal;
    const QString name = user.name.trimmed();
    User_Refusal refusal = User_Refusal::None;
    Database_Engine::One_Action(App().Conn_Str, [&] {
        Recordset credentials = Rows(Sql_Text(Sql::Credentials_Of, name), Lock_Type::Optimistic);
        Recordset profile = Rows(Sql_Text(Sql::Profile_Of, name), Lock_Type::Optimistic);
        if (credentials.Eof() || profile.Eof()) {
            refusal = User_Refusal::Unknown;
            return;
        }
        Write(credentials, profile, user);
    });
    return refusal;
}

User_Refusal May_Delete_User()
{
    return User_Count() < 2 ? User_Refusal::Only_One : User_Refusal::None;
}

void Delete_User(const QString &name)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        Run_Statement(Sql_Text(Sql::Delete_Credentials, name), App().Conn_Str);
        Run_Statement(Sql_Text(Sql::Delete_Profile, name), App().Conn_Str);
    });
}

User_Refusal Change_Password(const QString &oldPassword, const QString &newPassword, const QString &repeated)
{
    if (Has_Special_Characters(oldPassword) || Has_Special_Characters(newPassword))
        return User_Refusal::Special_Character;
    if (newPassword != repeated)
        return User_Refusal::Passwords_Differ;
    Recordset row = Rows(Sql_Text(Sql::Own_Credentials, App().Curr_User.trimmed()), Lock_Type::Optimistic);
    if (row.Eof() || row[QStringLiteral("user_pass")].Text() != Encode(oldPassword))
        return User_Refusal::Wrong_Old_Password;
    row[QStringLiteral("user_pass")].Set(Encode(newPassword));
    row.Update();
    return User_Refusal::None;
}
