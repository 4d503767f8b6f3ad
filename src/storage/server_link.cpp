// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/server_link.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/odbc_text.h"
#include "platform/database/recordset.h"
#include "platform/database/server.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "storage/database_choice.h"
#include "storage/database_lifecycle.h"
#include "storage/database_lifecycle_sql.h"
#include "storage/schema_sql.h"

#include <QFileInfo>

namespace
{
/// A field of the link and its names in a connection text, the one that is written first.
struct Part {
    QString Server_Link::*field;
    const char *name;
    const char *other;
};

constexpr Part Parts[] = {{&Server_Link::server, "SERVER", "SERVERNAME"},
                          {&Server_Link::port, "PORT", "PORT"},
                          {&Server_Link::database, "DATABASE", "INITIAL CATALOG"},
                          {&Server_Link::user, "UID", "USERNAME"},
                          {&Server_Link::password, "PWD", "PASSWORD"},
                          {&Server_Link::encryption, "SSLmode", "SSLmode"}};

QString Link_Text(const Server_Link &link)
{
    QString text = QStringLiteral("DRIVER=%1;").arg(Database_Server::Driver());
    for (const Part &part : Parts) {
        const QString value = (link.*part.field).trimmed();
        if (!value.isEmpty())
            text += QLatin1String(part.name) + QLatin1Char('=') + value + QLatin1Char(';');
    }
    return QStringLiteral("[oledb]\r\n; Everything after this line is an OLE DB initstring\r\n"
                          "Provider=MSDASQL.1;Persist Security Info=True;Extended Properties=\"") +
           text + QStringLiteral("\"\r\n");
}

/// A new file that takes an older one's place is for its owner only, whatever the older one was.
void Write_Private(const QString &path, const QString &text)
{
    const QFileInfo place(path);
    const QString fresh = path + QStringLiteral(".new");
    Files::Delete_If_Present(fresh);
    Files::Write_Bytes(fresh, text.toUtf8());
    Files::Rename_File(fresh, place.fileName());
}
} // namespace

Server_Link Present_Server_Link()
{
    Server_Link link;
    for (const auto &[name, value] : Odbc_Text::Parts_Of(Odbc_Text::Connection_String(Source_File_Text()))) {
        for (const Part &part : Parts) {
            if (name.compare(QLatin1String(part.name), Qt::CaseInsensitive) == 0 ||
                name.compare(QLatin1String(part.other), Qt::CaseInsensitive) == 0)
                link.*part.field = value;
        }
    }
    return link;
}

bool Can_Be_Written(const Server_Link &link)
{
    for (const Part &part : Parts) {
        for (const QChar sign : link.*part.field) {
            if (QStringLiteral(";{}\"'=").contains(sign) || sign.unicode() < ' ')
                return false;
        }
    }
    return true;
}

void Write_Server_Link(const Server_Link &link)
{
    Write_Private(Source_File_Path(), Link_Text(link));
}

Server_State Look_Behind(const Server_Link &link)
{
    const QString path = Files::Native_Path(App().App_Path + QStringLiteral("data/temp/server.udl"));
    const QString connStr = QStringLiteral("File Name=") + path;
    Files::Make_Directory(QFileInfo(path).path());
    Write_Private(path, Link_Text(link));
    Server_State state = Server_State::Library;
    const auto end = [&] {
        Resume_Next([&] { Database_Engine::Let_Go(connStr); });
        Files::Delete_If_Present(path);
    };
    try {
        if (Database_Server::Is_Empty(connStr)) {
            state = Server_State::Empty;
        } else {
            Recordset rows;
            rows.Open(Sql_Text(Sql::Opening_Test), connStr);
        }
    } catch (const Run_Time_Error &error) {
        end();
        if (error.failure != Failure::Missing_Table)
            throw;
        return Server_State::Other_Tables;
    }
    end();
    return state;
}

bool Make_Library_If_Empty(const QString &connStr)
{
    if (!Database_Engine::File_Of(connStr).isEmpty() || !Database_Server::Is_Empty(connStr))
        return false;
    Database_Engine::One_Action(connStr, [&] {
        // Whose turn comes later finds the tables of who came first.
        if (!Database_Server::Is_Empty(connStr))
            return;
        for (const char16_t *statement : Schema::All_Tables)
            Run_Statement(Sql_Text(statement), connStr);
    });
    return true;
}
