// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/connection_pool.h"

#include "platform/database/database.h"
#include "platform/database/engine_error.h"
#include "platform/database/file_layer.h"
#include "platform/database/server.h"
#include "platform/database/server_ddl.h"
#include "platform/files/paths.h"

#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <atomic>
#include <mutex>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace Connection_Pool
{
namespace
{
constexpr int Usual_Busy_Timeout = 2000;
constexpr qint32 Application_Id = 0x5A454C51; // "ZELQ"

const QStringList Password_Names{u"pwd"_s, u"password"_s};

struct Kept_Server {
    QString text;                                  ///< of the connection
    std::shared_ptr<Server_Connection> connection; ///< null for another kind of data source
};

struct Pool {
    QHash<QString, std::shared_ptr<Connection>> byFile;
    QHash<QString, Kept_Server> byLink;
    QHash<QString, int> groups; ///< depth of the open groups of a file or a link
};

std::atomic<int> Longest_Wait{Usual_Busy_Timeout};

/// SQLite's connections are not shared by threads.
Pool &The_Pool()
{
    static thread_local Pool pool;
    return pool;
}

/// The value of "name=value;" in a connection string. A value may stand in quotes, doubled where it holds some.
QString Value_Of(const QString &text, QLatin1StringView name)
{
    static const QRegularExpression part(uR"re(\s*([^=;]+?)\s*=\s*(?:"((?:[^"]|"")*)"\s*|([^;]*))(?:;|$))re"_s);
    for (auto parts = part.globalMatch(text); parts.hasNext();) {
        const QRegularExpressionMatch found = parts.next();
        if (found.capturedView(1).compare(name, Qt::CaseInsensitive) == 0) {
            return found.hasCaptured(2) ? found.captured(2).replace(u"\"\""_s, u"\""_s) : found.captured(3).trimmed();
        }
    }
    return {};
}

/// Passwords that were given for links without one, by the links' files.
struct Passwords {
    std::mutex mutex;
    QHash<QString, QString> byLink;
};

Passwords &The_Passwords()
{
    static Passwords passwords;
    return passwords;
}

bool Has_Part(const QString &connectionText, const QStringList &names)
{
    const Odbc_Text::Parts parts = Odbc_Text::Parts_Of(connectionText);
    return std::any_of(parts.begin(), parts.end(), [&names](const auto &part) {
        return names.contains(part.first, Qt::CaseInsensitive) && !part.second.isEmpty();
    });
}

QString Given_Password(const QString &dataLink)
{
    const std::scoped_lock lock(The_Passwords().mutex);
    return The_Passwords().byLink.value(dataLink);
}

QString Connection_Text(const QString &dataLink)
{
    QString text = Odbc_Text::Connection_String(Odbc_Text::Text_Of_File(dataLink));
    const QString password = Given_Password(dataLink);
    if (!password.isEmpty() && !Has_Part(text, Password_Names)) {
        text += u"PWD={"_s + password + u"};"_s;
    }
    return text;
}

std::shared_ptr<Row_Store> Kept(const Pool &pool, const Target &target)
{
    if (!target.file.isEmpty()) {
        return pool.byFile.value(target.file);
    }
    return pool.byLink.value(target.dataLink).connection;
}

void Let_Go_Server(Pool &pool, const QString &dataLink)
{
    const std::shared_ptr<Server_Connection> connection = pool.byLink.take(dataLink).connection;
    while (connection != nullptr && connection->In_Group()) {
        connection->End_Group();
    }
}

void Remove_File(const QString &file)
{
    for (const QString &name : {file, file + u"-journal"_s, file + u"-wal"_s, file + u"-shm"_s}) {
        QFile::remove(name);
    }
}
} // namespace

Target Parse(const QString &connectionString)
{
    Target target;
    target.file = Files::Native_Path(Value_Of(connectionString, "Data Source"_L1));
    if (target.file.isEmpty()) {
        target.dataLink = Files::Native_Path(Value_Of(connectionString, "File Name"_L1));
    }
    if (target.file.isEmpty() && target.dataLink.isEmpty()) {
        throw Engine_Error::Failed(u"The connection string names neither a database file nor a data source."_s);
    }
    return target;
}

std::shared_ptr<Server_Connection> Get_Server(const QString &dataLink)
{
    Pool &pool = The_Pool();
    const auto found = pool.byLink.constFind(dataLink);
    if (found != pool.byLink.constEnd() && found->connection != nullptr && found->connection->In_Group()) {
        return found->connection;
    }
    const QString text = Connection_Text(dataLink);
    if (found != pool.byLink.constEnd() && found->text == text) {
        return found->connection;
    }
    const Odbc_Text::Parts parts = Odbc_Text::Checked(text, Odbc_Link::Installed_Drivers());
    std::shared_ptr<Server_Connection> connection = Server_Connection::Open_If_Postgres(parts);
    for (int depth = pool.groups.value(dataLink); depth > 0 && connection != nullptr; --depth) {
        connection->Begin_Group();
    }
    pool.byLink.insert(dataLink, {text, connection});
    return connection;
}

int Busy_Timeout()
{
    return Longest_Wait;
}

void Set_Busy_Timeout(int milliseconds)
{
    Longest_Wait = milliseconds;
}

std::shared_ptr<Connection> Get(const QString &file)
{
    Pool &pool = The_Pool();
    const auto found = pool.byFile.constFind(file);
    if (found != pool.byFile.constEnd()) {
        if ((*found)->In_Group() || (*found)->Is_Current()) {
            return *found;
        }
        pool.byFile.erase(found);
    }
    std::shared_ptr<Connection> connection = Connection::Open(file);
    for (int depth = pool.groups.value(file); depth > 0; --depth) {
        connection->Begin_Group();
    }
    pool.byFile.insert(file, connection);
    return connection;
}
} // namespace Connection_Pool

namespace Database_Engine
{
using namespace Connection_Pool;

QString File_Connection_String(const QString &path)
{
    const bool plain = !path.contains(u';') && !path.contains(u'"');
    const QString value = plain ? path : u'"' + QString(path).replace(u"\""_s, u"\"\""_s) + u'"';
    return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + value + u";Persist Security Info=False"_s;
}

QString File_Of(const QString &connectionString)
{
    return Parse(connectionString).file;
}

void Create_File(const QString &connectionString)
{
    const QString file = Parse(connectionString).file;
    if (QFile::exists(file)) {
        throw Engine_Error::Failed(u"The database file '%1' exists already."_s.arg(file), Failure::Path_Access);
    }
    sqlite3 *db = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    int code = sqlite3_open_v2(file.toUtf8().constData(), &db, flags, File_Layer::Name());
    if (code == SQLITE_OK) {
        const QByteArray sql =
            "PRAGMA synchronous = FULL; PRAGMA application_id = " + QByteArray::number(Application_Id) +
            "; PRAGMA user_version = 1";
        code = sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr);
    }
    if (code != SQLITE_OK) {
        const Run_Time_Error error = Engine_Error::From_Sqlite(db, file);
        sqlite3_close(db);
        Remove_File(file);
        throw error;
    }
    sqlite3_close(db);
}

void Settle(const QString &connectionString)
{
    const Target target = Parse(connectionString);
    if (!target.file.isEmpty()) {
        Get(target.file)->Settle();
    } else if (const auto server = Get_Server(target.dataLink)) {
        Server_Ddl::Settle(*server);
    }
}

void Let_Go(const QString &connectionString)
{
    Pool &pool = The_Pool();
    const Target target = connectionString.isEmpty() ? Target() : Parse(connectionString);
    const QString &only = target.file;
    for (const QString &link : connectionString.isEmpty() ? pool.byLink.keys() : QList<QString>{target.dataLink}) {
        Let_Go_Server(pool, link);
    }
    if (!target.dataLink.isEmpty()) {
        return;
    }
    const QList<QString> files = only.isEmpty() ? pool.byFile.keys() : QList<QString>{only};
    for (const QString &file : files) {
        // What a running group has written so far must not be lost with its connection.
        const std::shared_ptr<Connection> connection = pool.byFile.take(file);
        if (connection != nullptr) {
            connection->Stop_Work();
        }
        while (connection != nullptr && connection->In_Group()) {
            connection->End_Group();
        }
    }
}

void One_Action(const QString &connectionString, const std::function<void()> &body)
{
    const Target target = Parse(connectionString);
    const QString &place = target.file.isEmpty() ? target.dataLink : target.file;
    Pool &pool = The_Pool();
    const auto begin = [&] {
        ++pool.groups[place];
        if (const auto connection = Kept(pool, target)) {
            connection->Begin_Group();
        }
    };
    const auto end = [&] {
        if (--pool.groups[place] == 0) {
            pool.groups.remove(place);
        }
        if (const auto connection = Kept(pool, target)) {
            connection->End_Group();
        }
    };
    begin();
    try {
        body();
    } catch (...) {
        try {
            end();
        } catch (const Run_Time_Error &) {
            // The body's own error is the one to tell: nothing was written either way.
        }
        throw;
    }
    end();
}
} // namespace Database_Engine

namespace Database_Server
{
using namespace Connection_Pool;

namespace
{
std::shared_ptr<Server_Connection> Server_Of(const QString &connectionString)
{
    const Target target = Parse(connectionString);
    return target.dataLink.isEmpty() ? nullptr : Get_Server(target.dataLink);
}
} // namespace

bool Is_Server(const QString &connectionString)
{
    return Server_Of(connectionString) != nullptr;
}

QString Driver()
{
    const QStringList drivers = Odbc_Link::Installed_Drivers().filter(u"PostgreSQL"_s, Qt::CaseInsensitive);
    const QStringList unicode = drivers.filter(u"Unicode"_s, Qt::CaseInsensitive);
    if (drivers.isEmpty()) {
        throw Engine_Error::From_Server(u"IM002"_s, u"There is no ODBC driver for PostgreSQL."_s);
    }
    return unicode.isEmpty() ? drivers.first() : unicode.first();
}

bool Is_Empty(const QString &connectionString)
{
    const auto server = Server_Of(connectionString);
    if (server == nullptr) {
        return false;
    }
    server->Forget_Tables();
    return server->Tables().Tables().empty();
}

void Set_Password(const QString &connectionString, const QString &password)
{
    const std::scoped_lock lock(The_Passwords().mutex);
    The_Passwords().byLink.insert(Parse(connectionString).dataLink, password);
}

bool Has_Password(const QString &connectionString)
{
    const QString link = Parse(connectionString).dataLink;
    return !link.isEmpty() && Has_Part(Odbc_Text::Connection_String(Odbc_Text::Text_Of_File(link)), Password_Names);
}

void Ask_Ahead(const QString &connectionString, const QStringList &statements)
{
    try {
        if (const auto server = Server_Of(connectionString)) {
            server->Ask_Ahead(statements);
        }
    } catch (const Run_Time_Error &) {
        // The statement itself will meet the same trouble, and tell it where it is waited for.
    }
}

QStringList Changed_By_Others(const QString &connectionString)
{
    const auto server = Server_Of(connectionString);
    return server == nullptr ? QStringList() : server->Changed_By_Others();
}

qint64 Round_Trips()
{
    return Odbc_Link::Round_Trips();
}
} // namespace Database_Server
