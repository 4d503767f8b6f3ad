// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/database_lifecycle.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "storage/database_lifecycle_sql.h"
#include "storage/schema_sql.h"

#include <QFile>
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

Database_Check Test_File_Database()
{
    App().Conn_Str = File_Conn_Str(Config().DATABASE_NAME);
    App().Conn_OK = Opening_Test(App().Conn_Str);
    return Database_Check::Go_On;
}

/// A database that is not there goes back to the default path, and is made when that path holds none. One that
/// cannot be made ends the search: the failure path of start-up tells why. Where the settings file refuses the path,
/// which would be read again for ever, this run goes on with it.
Database_Check Make_Missing_Database()
{
    WriteIni(QStringLiteral("DataBase"), QStringLiteral("DATABASE_NAME"), Default_Database);
    const bool noted = GetIni(QStringLiteral("DataBase"), QStringLiteral("DATABASE_NAME")) == Default_Database;
    Config().DATABASE_NAME = Full_Database_Path(Default_Database);
    const bool placed = Resume_Next(Make_Data_Directories);
    if (placed && (Exists(Config().DATABASE_NAME) || CreateDataBase(Config().DATABASE_NAME)))
        return noted ? Database_Check::Read_Again : Test_File_Database();
    if (!placed) {
        App().Conn_Trouble = Err();
        Clear_Pending();
    }
    App().Conn_OK = false;
    return Database_Check::Go_On;
}

Database_Check Find_File_Database()
{
    App().Conn_Str = File_Conn_Str(Config().DATABASE_NAME);
    if (Config().DATABASE_NAME.isEmpty() || !Exists(Config().DATABASE_NAME))
        return Make_Missing_Database();
    return Test_File_Database();
}

Database_Check Find_Source_Database()
{
    if (!Exists(App().App_Path + Source_File)) {
        Load_Language(QStringLiteral("Main/GetConfigInfo"));
        Prompts::Message(Pack_Text("Main", "_OdbcLost"), App().Box_Title, Prompts::Icon::Information);
        std::exit(0);
    }
    App().Conn_Str = Source_Conn_Str();
    App().Conn_OK = Opening_Test(App().Conn_Str);
    return Database_Check::Go_On;
}

Database_Check Find_And_Test()
{
    return Config().Op_DB_Type == QLatin1String("0") ? Find_File_Database() : Find_Source_Database();
}

qint64 Days_Since(const QString &date)
{
    const QDateTime last = Database_Engine::Date_From_Text(date);
    return last.isValid() ? last.date().daysTo(Machine::Now().date()) : std::numeric_limits<qint32>::max();
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
        Recordset test;
        test.CursorLocation = Cursor_Location::Server;
        test.CursorType = Cursor_Type::Static;
        test.LockType = Lock_Type::Read_Only;
        test.Open(Sql_Text(Sql::Opening_Test), connStr);
        test.Close();
    });
    if (!opened) {
        App().Conn_Trouble = Err();
        Clear_Pending();
    }
    return opened;
}

bool CreateDataBase(const QString &path)
{
    const QString native = Files::Native_Path(path);
    const QString connStr = File_Conn_Str(native);
    bool fileMade = false;
    const bool made = Resume_Next([&] {
        Database_Engine::Create_File(connStr);
        fileMade = true;
        Database_Engine::One_Action(connStr, [&] {
            for (const char16_t *statement : Schema::All_Tables)
                Run_Statement(Sql_Text(statement), connStr);
        });
    });
    if (made)
        return true;
    App().Conn_Trouble = Err();
    Clear_Pending();
    Database_Engine::Let_Go(connStr);
    if (fileMade)
        QFile::remove(native);
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
    return Files::Native_Path(Full_Database_Path(Config().DATABASE_NAME));
}

QString Compact_Database(const QString &path, const QString & /*engineType*/)
{
    const QString source = Files::Native_Path(path);
    if (!Exists(source))
        return QStringLiteral("Compact No...");
    const QString target = QFileInfo(source).path() + QStringLiteral("/temp.mdb");
    Files::Delete_If_Present(target);
    Database_Engine::CompactDatabase(File_Conn_Str(source), File_Conn_Str(target));
    Database_Engine::Let_Go();
    Files::Copy_File(target, source);
    Files::Delete_If_Present(target);
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
    Trap(QStringLiteral("Frm_Main\\Form_QueryUnload\\BackUp"), [&] {
        const QString folder = Files::With_Final_Separator(Files::Native_Path(Config().Backup_Path));
        Files::Make_Directory(folder);
        Database_Engine::Let_Go(App().Conn_Str);
        Files::Copy_File(Database_Path(), folder + QStringLiteral("zelqor_") + today + QStringLiteral(".db"));
    });
    Config().Backup_Date = today;
    WriteIni(QStringLiteral("Col"), QStringLiteral("Backup_Date"), today);
}

void Clean_Database()
{
    Database_Engine::One_Action(App().Conn_Str, [] {
        Run_Statement(Sql_Text(Sql::Clean_Attachments), App().Conn_Str);
        Run_Statement(Sql_Text(Sql::Clean_Documents), App().Conn_Str);
    });
}
