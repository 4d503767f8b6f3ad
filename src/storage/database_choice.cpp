// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/database_choice.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "platform/files/paths.h"
#include "storage/database_lifecycle.h"

#include <QStringDecoder>

namespace
{
constexpr Kept_Value Path_As_Written{"DataBase", "DATABASE_NAME"}; ///< the record has the full one
const QString Default_Path = QStringLiteral("\\data\\Zelqor.db");

QString Flag(bool set)
{
    return set ? QStringLiteral("1") : QStringLiteral("0");
}

QString Full_Path_Of(const Database_Choice &choice)
{
    return Files::Native_Path(Full_Database_Path(choice.path));
}

QString Conn_Str_Of(const Database_Choice &choice)
{
    return choice.data_source ? Source_Conn_Str() : File_Conn_Str(Full_Path_Of(choice));
}
} // namespace

Database_Choice Present_Database_Choice()
{
    return {Config().Op_DB_Type == QLatin1String("1"), Config().Op_DB_Sql == QLatin1String("1"), Path_As_Written.Read(),
            Config().CH_PATH.startsWith(QLatin1Char('1'))};
}

QString Default_Database_Choice(bool relative)
{
    return Spelled_Path(Default_Path, relative);
}

QString Spelled_Path(const QString &path, bool relative)
{
    if (path.isEmpty())
        return path;
    const QString full = Files::Native_Path(Full_Database_Path(path));
    const QString program = Files::Native_Path(App().App_Path);
    if (!full.startsWith(program))
        return path;
    return relative ? QLatin1Char('\\') + full.mid(program.size()).replace(QLatin1Char('/'), QLatin1Char('\\')) : full;
}

bool Is_Usable(const Database_Choice &choice)
{
    return Opening_Test(Conn_Str_Of(choice));
}

bool Apply_Database_Choice(const Database_Choice &choice)
{
    const QString fullPath = Full_Path_Of(choice);
    const QString connStr = Conn_Str_Of(choice);
    if (!Opening_Test(connStr))
        return false;
    const QString previous = App().Conn_Str;
    Keep_Setting(&Settings_Record::Op_DB_Type, Flag(choice.data_source));
    Keep_Setting(&Settings_Record::Op_DB_Sql, Flag(choice.server_dialect));
    App().Date_Delim = choice.server_dialect ? QStringLiteral("'") : QStringLiteral("#");
    App().Conn_Str = connStr;
    App().Conn_OK = true;
    Keep_Switch(&Settings_Record::CH_PATH, choice.relative);
    const bool sameAtStart = choice.relative || Files::Is_Absolute(choice.path);
    Keep_Setting(&Settings_Record::DATABASE_NAME, sameAtStart ? choice.path : fullPath);
    Config().DATABASE_NAME = fullPath;
    App().Root_Name = App().App_Title;
    if (!previous.isEmpty() && previous != connStr)
        Database_Engine::Let_Go(previous);
    return true;
}

QString Source_File_Path()
{
    return Files::Native_Path(App().App_Path + QStringLiteral("odbc.udl"));
}

QString Source_File_Text()
{
    QByteArray bytes;
    if (!Resume_Next([&] { bytes = Files::Read_Bytes(Source_File_Path()); })) {
        Clear_Pending();
        return {};
    }
    if (bytes.startsWith("\xff\xfe"))
        return QStringDecoder(QStringDecoder::Utf16LE).decode(bytes);
    return Files::Decode_Text(bytes);
}
