// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/database_lifecycle.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/database/server.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "storage/database_lifecycle_sql.h"
#include "storage/schema_sql.h"
#include "storage/server_link.h"

#include <QFileInfo>
#include <cstdlib>
#include <limits>

namespace
{
const QString Default_Database = QStringLiteral("\\data\\Zelqor.db");
const QString Source_File = QStringLiteral("odbc.udl");

QString Under_Program(const QString &relative)
{
    return App().App_Path.chopped(1) + relative;
}

void Resolve_Paths()
{
    if (!Config().CH_PATH.startsWith(QLatin1Char('1')))
        return;
    Config().DATABASE_NAME = Config().DATABASE_NAME.isEmpty() ? QString() : Full_Database_Path(Config().DATABASE_NAME);
    Config().EXPORT_NAME = Config().EXPORT_NAME.isEmpty() ? QString() : Full_Database_Path(Config().EXPORT_NAME);
}

void Make_Data_Directories()
{
    for (const char *name : {"data", "data/ico", "data/img"})
        Files::Make_Directory(App().App_Path + QLatin1String(name));
}

void Test_Database(const QString &connStr)
{
    App().Conn_Str = connStr;
    App().Conn_OK = Opening_Test(connStr);
}

void Read_Folders(const QString &connStr)
{
    Recordset test;
    test.CursorLocation = Cursor_Location::Server;
    test.CursorType = Cursor_Type::Static;
    test.LockType = Lock_Type::Read_Only;
    test.Open(Sql_Text(Sql::Opening_Test), connStr);
}

/// The server asks for another password than the link or the user gave.
bool Is_Denied(const Pending_Error &trouble)
{
    bool given = true;
    Resume_Next([&] { given = Database_Server::Has_Password(Source_Conn_Str()); });
    return trouble.number == Database_Server::Denied && !given;
}

/// The path of the record is the one that a new installation has.
bool Is_At_Default_Place(const QString &path)
{
    return Files::Native_Path(path) == Files::Native_Path(Full_Database_Path(Default_Database));
}

/// Writes the default path back as the settings spell it: where relative names are not looked for under the program
/// directory it is the full one, or the next start would look for it elsewhere.
void Keep_Default_Path()
{
    const QString full = Files::Native_Path(Full_Database_Path(Default_Database));
    const bool relative = Config().CH_PATH.startsWith(QLatin1Char('1'));
    Keep_Setting(&Settings_Record::DATABASE_NAME, relative ? Default_Database : full);
    Config().DATABASE_NAME = full;
}

/// The error that makes a database that is gone known to start-up.
void Tell_It_Is_Gone()
{
    App().Conn_OK = false;
    App().Conn_Trouble = {Error_Number::File_Not_Found,
                          QStringLiteral("Could not find the database file '%1'.").arg(Config().DATABASE_NAME),
                          Failure::File_Not_Found};
}

/// One at the default place is made, and one that cannot be made leaves its trouble to start-up. One that the user had
/// elsewhere is not replaced unasked (Database_Is_Gone).
Database_Check Find_File_Database()
{
    App().Conn_Str = File_Conn_Str(Config().DATABASE_NAME);
    if (Config().DATABASE_NAME.isEmpty() || Is_At_Default_Place(Config().DATABASE_NAME))
        return Use_Default_Database() ? Database_Check::Read_Again : Database_Check::Go_On;
    if (Exists(Config().DATABASE_NAME))
        Test_Database(App().Conn_Str);
    else
        Tell_It_Is_Gone();
    return Database_Check::Go_On;
}

/// A server may want a password that the link does not hold; it is asked for until it is right or the user gives up.
void Test_Source(const QString &connStr)
{
    Test_Database(connStr);
    Load_Language(QStringLiteral("Main/GetConfigInfo"));
    QString refusal; // of the password that was typed
    while (!App().Conn_OK && Is_Denied(App().Conn_Trouble)) {
        const QString password =
            Prompts::Input(Pack_Text("Main", "_Server_Password") + refusal, App().Box_Title, {}, true);
        if (password.isNull())
            return;
        Database_Server::Set_Password(connStr, password);
        Test_Database(connStr);
        refusal = QLatin1Char('\n') + App().Conn_Trouble.description;
    }
}

Database_Check Find_Source_Database()
{
    if (!Exists(App().App_Path + Source_File)) {
        Load_Language(QStringLiteral("Main/GetConfigInfo"));
        Prompts::Message(Pack_Text("Main", "_OdbcLost"), App().Box_Title, Prompts::Icon::Information);
        std::exit(0);
    }
    Test_Source(Source_Conn_Str());
    return Database_Check::Go_On;
}

Database_Check Find_And_Test()
{
    return Config().Op_DB_Type == QLatin1String("0") ? Find_File_Database() : Find_Source_Database();
}

/// Of no date, or one in the future, nothing is known: too many days.
qint64 Days_Since(const QString &date)
{
    const QDateTime last = Database_Engine::Date_From_Text(date);
    const qint64 days = last.isValid() ? last.date().daysTo(Machine::Now().date()) : -1;
    return days >= 0 ? days : std::numeric_limits<qint32>::max();
}
} // namespace

Database_Steps Database_Steps_For_Start()
{
    return {Resolve_Paths, Find_And_Test};
}

QString File_Conn_Str(const QString &path)
{
    return Database_Engine::File_Connection_String(path);
}

QString Source_Conn_Str()
{
    return QStringLiteral("File Name=") + App().App_Path + Source_File;
}

bool Opening_Test(const QString &connStr)
{
    App().Conn_Trouble = {};
    const bool opened = Resume_Next([&] {
        try {
            Read_Folders(connStr);
        } catch (const Run_Time_Error &error) {
            if (error.failure != Failure::Missing_Table || !Make_Library_If_Empty(connStr))
                throw;
        }
        Database_Engine::Settle(connStr);
    });
    if (!opened) {
        App().Conn_Trouble = Err();
        Clear_Pending();
        Database_Engine::Let_Go(connStr);
    }
    return opened;
}

bool Database_Is_Gone()
{
    return Config().Op_DB_Type == QLatin1String("0") && !Config().DATABASE_NAME.isEmpty() &&
           !Exists(Config().DATABASE_NAME) && !Is_At_Default_Place(Config().DATABASE_NAME);
}

bool Use_Default_Database()
{
    if (!Is_At_Default_Place(Config().DATABASE_NAME))
        Keep_Default_Path();
    App().Conn_OK = false;
    if (!Resume_Next(Make_Data_Directories)) {
        App().Conn_Trouble = Err();
        Clear_Pending();
        return false;
    }
    const bool missing = !Exists(Config().DATABASE_NAME);
    if (missing && !CreateDataBase(Config().DATABASE_NAME))
        return false;
    Test_Database(File_Conn_Str(Config().DATABASE_NAME));
    return missing;
}

/// It is made beside its place and takes it with all its tables: after a kill there is a database or none.
bool CreateDataBase(const QString &path)
{
    const QString native = Files::Native_Path(path);
    const QString beside = native + QStringLiteral(".new");
    const QString connStr = File_Conn_Str(beside);
    const bool made = Resume_Next([&] {
        if (Exists(native))
            throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("The file exists already: ") + native,
                                 Failure::Path_Access);
        for (const QString &left : {beside, beside + QStringLiteral("-journal")}) // by a kill
            Files::Delete_If_Present(left);
        Database_Engine::Create_File(connStr);
        Database_Engine::One_Action(connStr, [&] {
            for (const char16_t *statement : Schema::All_Tables)
                Run_Statement(Sql_Text(statement), connStr);
        });
        Database_Engine::Let_Go(connStr);
        Files::Rename_File(beside, QFileInfo(native).fileName());
    });
    if (made)
        return true;
    App().Conn_Trouble = Err();
    Clear_Pending();
    Database_Engine::Let_Go(connStr);
    if (!Resume_Next([&] { Files::Delete_If_Present(beside); }))
        Clear_Pending();
    return false;
}

QString Full_Database_Path(const QString &path)
{
    if (Files::Is_Absolute(path))
        return path;
    return path.startsWith(QLatin1Char('\\')) ? Under_Program(path) : App().App_Path + path;
}

QString Database_Path()
{
    return Database_Engine::File_Of(App().Conn_Str);
}

QString Compact_Database(const QString &path, const QString & /*engineType*/)
{
    const QString source = Files::Native_Path(path);
    if (!Exists(source))
        return QStringLiteral("Compact No...");
    Database_Engine::CompactDatabase(File_Conn_Str(source));
    return QStringLiteral("Compact Ok");
}

bool Backup_Is_Due()
{
    const bool isFile = Config().Op_DB_Sql.toInt() <= 0;
    return isFile && Days_Since(Config().Backup_Date) >= Config().Backup_Num.toInt();
}

void Back_Up()
{
    const QString today = Database_Engine::Short_Date(Machine::Now().date().startOfDay());
    const QString folder = Files::With_Final_Separator(Files::Native_Path(Config().Backup_Path));
    Files::Make_Directory(folder);
    Database_Engine::Copy_Database(App().Conn_Str, folder + QStringLiteral("zelqor_") + today + QStringLiteral(".db"));
    Keep_Setting(&Settings_Record::Backup_Date, today);
}

Cleaning_Count Count_For_Cleaning()
{
    const auto count = [](const char16_t *statement) {
        Recordset rows;
        rows.Open(Sql_Text(statement), App().Conn_Str);
        return rows[0].Number();
    };
    return {count(Sql::Count_Documents), count(Sql::Count_Attachments)};
}

QString Copy_Before_Cleaning()
{
    if (Database_Engine::File_Of(App().Conn_Str).isEmpty())
        return {};
    const QString folder = Files::Native_Path(App().App_Path + QStringLiteral("data/bak/"));
    const QString now = Machine::Now().toString(QStringLiteral("yyyy-MM-dd_HHmmss"));
    QString copy = folder + QStringLiteral("zelqor_cleaned_") + now + QStringLiteral(".db");
    Files::Make_Directory(folder);
    Database_Engine::Copy_Database(App().Conn_Str, copy);
    return copy;
}

void Clean_Database()
{
    Database_Engine::One_Action(App().Conn_Str, [] {
        Run_Statement(Sql_Text(Sql::Clean_Attachments), App().Conn_Str);
        Run_Statement(Sql_Text(Sql::Clean_Documents), App().Conn_Str);
    });
}
