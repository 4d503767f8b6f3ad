// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/server_blob.h"

#include "platform/database/engine_error.h"
#include "platform/database/server_text.h"

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 Block = 1 << 20;

/// "table where row = n", "column" and the like in the server's words.
struct Words {
    QString table;
    QString column;
    QString row;
};

Words Words_Of(Server_Connection &server, const Database_Engine::Blob_Place &place)
{
    const Catalog_Table *table = server.Tables().Find(place.table);
    const Catalog_Column *column = table == nullptr ? nullptr : table->Find(place.column);
    if (column == nullptr || table->rowColumn.isEmpty())
        throw Engine_Error::Missing_Table(place.table);
    return {Quoted_Name(table->name), Quoted_Name(column->name),
            u" WHERE "_s + Quoted_Name(table->rowColumn) + u" = "_s + QString::number(place.row)};
}
} // namespace

namespace Server_Blob
{
/// The blocks lie in a table of the session until the last one is there; then the value is made of them at once.
void Write(Server_Connection &server, const Database_Engine::Blob_Place &place, qint64 size,
           const std::function<qint64(char *block, qint64 size)> &source)
{
    const Words words = Words_Of(server, place);
    server.Execute(u"CREATE TEMP TABLE IF NOT EXISTS zelqor_blocks (n bigint, bytes bytea) ON COMMIT DELETE ROWS; "
                   "DELETE FROM zelqor_blocks"_s);
    QByteArray block(std::min(Block, size), Qt::Uninitialized);
    for (qint64 at = 0; at < size;) {
        const qint64 given = source(block.data(), std::min<qint64>(block.size(), size - at));
        if (given <= 0)
            throw Run_Time_Error(Error_Number::Path_Access, u"The source ended early."_s, Failure::Path_Access);
        server.Execute(u"INSERT INTO zelqor_blocks VALUES ("_s + QString::number(at) + u", "_s +
                       Server_Text::Literal(block.left(given)) + u')');
        at += given;
    }
    const auto run =
        server.Execute(u"UPDATE "_s + words.table + u" SET "_s + words.column +
                       u" = (SELECT coalesce(string_agg(bytes, '' ORDER BY n), '') FROM zelqor_blocks)"_s + words.row);
    if (run->Changed_Rows() == 0)
        throw Engine_Error::No_Current_Row();
    server.Execute(u"DELETE FROM zelqor_blocks"_s);
}

void Read(Server_Connection &server, const Database_Engine::Blob_Place &place,
          const std::function<bool(const char *block, qint64 size)> &sink)
{
    const Words words = Words_Of(server, place);
    for (qint64 at = 0;; at += Block) {
        const auto run = server.Execute(u"SELECT substring("_s + words.column + u" from "_s + QString::number(at + 1) +
                                        u" for "_s + QString::number(Block) + u") FROM "_s + words.table + words.row);
        if (!run->Fetch())
            throw Engine_Error::No_Current_Row();
        const Cell cell = run->Read(0, Value_Type::Blob);
        const auto *bytes = std::get_if<QByteArray>(&cell);
        if (bytes == nullptr || bytes->isEmpty() || !sink(bytes->constData(), bytes->size()) || bytes->size() < Block)
            return;
    }
}

qint64 Size(Server_Connection &server, const Database_Engine::Blob_Place &place)
{
    const Words words = Words_Of(server, place);
    const auto run =
        server.Execute(u"SELECT coalesce(octet_length("_s + words.column + u"), 0) FROM "_s + words.table + words.row);
    if (!run->Fetch())
        throw Engine_Error::No_Current_Row();
    const Cell cell = run->Read(0, Value_Type::Count);
    const auto *size = std::get_if<qint64>(&cell);
    return size == nullptr ? 0 : *size;
}
} // namespace Server_Blob
