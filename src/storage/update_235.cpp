// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/update_235.h"

#include "core/error_log.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"
#include "platform/lzma/zelqorfun.h"
#include "storage/ladder_run.h"
#include "storage/update_235_sql.h"

using namespace Update_235_Sql;

namespace
{
/// RTF is bytes of ASCII: other characters are written as \uN with "?" for readers that do not know it (RTF 1.9.1,
/// "Unicode RTF").
QByteArray Rtf_Bytes(const QString &content)
{
    if (!content.startsWith(QLatin1String("{\\rtf")))
        return content.toUtf8();
    QByteArray bytes;
    bytes.reserve(content.size());
    for (const QChar character : content) {
        if (character.unicode() < 0x80)
            bytes += static_cast<char>(character.unicode());
        else
            bytes += "\\u" + QByteArray::number(static_cast<qint16>(character.unicode())) + '?';
    }
    return bytes;
}

/// The coder's output for some bytes, and one more byte, as a stored stream has. The staging files are dropped.
QByteArray Packed(const QByteArray &bytes)
{
    const QString plain = Copies_Folder() + QStringLiteral("zip.db");
    const QString packed = Copies_Folder() + QStringLiteral("zip.dd");
    Files::Delete_If_Present(packed);
    Files::Write_Bytes(plain, bytes);
    zelqorfun("e", plain.toUtf8().constData(), packed.toUtf8().constData());
    QByteArray stream = Files::Read_Bytes(packed);
    Files::Delete_If_Present(plain);
    Files::Delete_If_Present(packed);
    return stream.append('\0');
}

void Pack_Document(Recordset &row)
{
    Field stream = row[QStringLiteral("Code_Content_IO")];
    Field content = row[QStringLiteral("Code_Content")];
    if (!stream.Is_Null() || content.Text().isEmpty())
        return;
    const QByteArray bytes = Rtf_Bytes(content.Text());
    const QString name = row[QStringLiteral("Code_ID")].Text() + QStringLiteral(".rtf");
    if (Files::Is_Plain_Name(name))
        Files::Write_Bytes(Copies_Folder() + name, bytes);
    stream.Set(Packed(bytes));
    content.Set(QString());
    row.Update();
}

void Pack_Contents(const QString &connStr, const std::function<void(qint64 done)> &step)
{
    Recordset row;
    row.CursorType = Cursor_Type::Keyset;
    row.LockType = Lock_Type::Optimistic;
    row.Open(Sql_Text(Contents), connStr);
    for (qint64 done = 0; !row.Eof(); row.MoveNext()) {
        Pack_Document(row);
        step(++done);
    }
}

void Fill_Classes(Recordset &file, const QString &connStr)
{
    Recordset document;
    document.Open(Sql_Text(Classes_Of_Document, Quoted(file[QStringLiteral("code_id")].Text())), connStr);
    if (document.Eof())
        return;
    for (const QString &column : {QStringLiteral("Class_ID"), QStringLiteral("SmallClass_ID")})
        file[column].Set(document[column].Value());
    file.Update();
}

void Fill_Classes_Of_Files(const QString &connStr)
{
    Recordset file;
    file.CursorType = Cursor_Type::Keyset;
    file.LockType = Lock_Type::Optimistic;
    file.Open(Sql_Text(Update_235_Sql::Files), connStr);
    for (; !file.Eof(); file.MoveNext())
        Fill_Classes(file, connStr);
}

void Run_If_Possible(const char16_t *statement, const QString &connStr)
{
    Resume_Next([&] { Run_Statement(Sql_Text(statement), connStr); });
    Clear_Pending();
}
} // namespace

qint64 Update_235_Count(const QString &connStr)
{
    Recordset count;
    count.Open(Sql_Text(Document_Count), connStr);
    return count[QStringLiteral("qty")].Number();
}

void Update_235(const QString &connStr, const std::function<void(qint64 done)> &step)
{
    Ladder_Run(connStr, {}).Copy_To(Copies_Folder() + QStringLiteral("zelqor.db"));
    Database_Engine::One_Action(connStr, [&] {
        Run_If_Possible(Add_Compressed_Content, connStr);
        Pack_Contents(connStr, step);
        Run_Statement(Sql_Text(Add_Classes_Of_Files), connStr);
        Fill_Classes_Of_Files(connStr);
        for (const char16_t *statement : Later_Needs)
            Run_If_Possible(statement, connStr);
    });
}
