// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/blob_stream.h"

#include "platform/database/connection_pool.h"
#include "platform/database/engine_error.h"
#include "platform/database/long_rows.h"
#include "platform/database/server_blob.h"

#include <memory>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 Block = 1 << 20;
/// Room in a row for its other columns.
constexpr qint64 Rest_Of_Row = 1 << 20;

using Blob = std::unique_ptr<sqlite3_blob, decltype([](sqlite3_blob *blob) { sqlite3_blob_close(blob); })>;

/// The server that holds the value, or null.
std::shared_ptr<Server_Connection> Server_Of(const QString &connection)
{
    const QString link = Connection_Pool::Parse(connection).dataLink;
    return link.isEmpty() ? nullptr : Connection_Pool::Get_Server(link);
}

std::shared_ptr<Connection> Connection_To(const QString &connection)
{
    return Connection_Pool::Get(Connection_Pool::Parse(connection).file);
}

Blob Open(Connection &connection, const Database_Engine::Blob_Place &place, bool forWriting)
{
    sqlite3_blob *blob = nullptr;
    if (sqlite3_blob_open(connection.Handle(), "main", place.table.toUtf8().constData(),
                          place.column.toUtf8().constData(), place.row, forWriting ? 1 : 0, &blob) != SQLITE_OK)
        connection.Fail();
    return Blob(blob);
}

void Make_Room(Connection &connection, const Database_Engine::Blob_Place &place, qint64 size)
{
    const QString sql = u"UPDATE "_s + Quoted_Name(place.table) + u" SET "_s + Quoted_Name(place.column) +
                        u" = zeroblob(?1) WHERE rowid = ?2"_s;
    if (connection.Change(sql.toUtf8(), {size, place.row}) == 0)
        throw Engine_Error::No_Current_Row();
}

void Fill(Connection &connection, const Database_Engine::Blob_Place &place, qint64 size,
          const std::function<qint64(char *block, qint64 size)> &source)
{
    const Blob blob = Open(connection, place, true);
    QByteArray block(std::min(Block, size), Qt::Uninitialized);
    for (qint64 at = 0; at < size;) {
        const qint64 given = source(block.data(), std::min<qint64>(block.size(), size - at));
        if (given <= 0)
            throw Run_Time_Error(Error_Number::Path_Access, u"The source ended early."_s, Failure::Path_Access);
        if (sqlite3_blob_write(blob.get(), block.constData(), static_cast<int>(given), static_cast<int>(at)) !=
            SQLITE_OK)
            connection.Fail();
        at += given;
    }
}
} // namespace

namespace Database_Engine
{
qint64 Longest_Blob(const QString &connection)
{
    if (Server_Of(connection) != nullptr)
        return Server_Blob::Longest;
    Connection_To(connection); // a data source has none
    return Long_Rows::Longest() - Rest_Of_Row;
}

void Write_Blob(const Blob_Place &place, qint64 size, const std::function<qint64(char *block, qint64 size)> &source)
{
    if (size > Longest_Blob(place.connection))
        throw Engine_Error::Failed(u"A value of %1 bytes is longer than the database can hold."_s.arg(size),
                                   Failure::Too_Large);
    if (const auto server = Server_Of(place.connection)) {
        Server_Blob::Write(*server, place, size, source);
        return;
    }
    const std::shared_ptr<Connection> connection = Connection_To(place.connection);
    connection->Before_Write(place.table);
    connection->Whole([&] { // else a failure would leave the file as long as it has become
        const Long_Rows longRows(connection->Handle());
        Make_Room(*connection, place, size);
        if (size > 0)
            Fill(*connection, place, size, source);
    });
}

qint64 Blob_Size(const Blob_Place &place)
{
    if (const auto server = Server_Of(place.connection))
        return Server_Blob::Size(*server, place);
    const QString sql = u"SELECT ifnull(length("_s + Quoted_Name(place.column) + u"), 0) FROM "_s +
                        Quoted_Name(place.table) + u" WHERE rowid = ?1"_s;
    Row row;
    if (!Connection_To(place.connection)->Read_Row(sql.toUtf8(), {place.row}, row))
        throw Engine_Error::No_Current_Row();
    return std::get<qint64>(row.at(0));
}

void Read_Blob(const Blob_Place &place, const std::function<bool(const char *block, qint64 size)> &sink)
{
    if (const auto server = Server_Of(place.connection)) {
        Server_Blob::Read(*server, place, sink);
        return;
    }
    const std::shared_ptr<Connection> connection = Connection_To(place.connection);
    if (Blob_Size(place) == 0)
        return;
    const Blob blob = Open(*connection, place, false);
    const qint64 size = sqlite3_blob_bytes(blob.get());
    QByteArray block(std::min(Block, size), Qt::Uninitialized);
    for (qint64 at = 0; at < size; at += block.size()) {
        const qint64 part = std::min<qint64>(block.size(), size - at);
        if (sqlite3_blob_read(blob.get(), block.data(), static_cast<int>(part), static_cast<int>(at)) != SQLITE_OK)
            connection->Fail();
        if (!sink(block.constData(), part))
            return;
    }
}
} // namespace Database_Engine
