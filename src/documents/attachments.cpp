// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/attachments.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "core/yield.h"
#include "documents/attachment_place.h"
#include "documents/attachments_sql.h"
#include "documents/watched_copy.h"
#include "platform/database/blob_stream.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/atomic_file.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace
{
const QString Own_Source = QStringLiteral("S_SaveFile");

Database_Engine::Blob_Place Bytes_Of(qint64 id)
{
    return {App().Conn_Str, QStringLiteral("tab_file"), QStringLiteral("file_cont"), id};
}

constexpr double Kilobyte = 1024.0;

/// Kilobytes with two decimals.
QString Size_Text(qint64 bytes)
{
    return QString::number(static_cast<double>(bytes) / Kilobyte, 'f', 2) + QLatin1Char('K');
}

qint64 Next_Order(const QString &code_id)
{
    Recordset last;
    last.Open(Sql_Text(Sql::Last_Order, code_id), App().Conn_Str);
    return last.Eof() ? 1 : last[0].Number() + 1;
}

/// What a new row says.
struct New_Attachment {
    QString document;
    QString name;
    Attachment_Type type = Attachment_Type::External;
    qint64 size = 0;
    QString path;
    QString remark;
};

qint64 Add_Row(const New_Attachment &file)
{
    const qint64 order = Next_Order(file.document);
    Recordset row;
    row.CursorType = Cursor_Type::Keyset;
    row.LockType = Lock_Type::Batch_Optimistic;
    row.Open(Sql_Text(Sql::New_Attachment), App().Conn_Str);
    row.AddNew();
    row[QStringLiteral("code_id")].Set(file.document);
    row[QStringLiteral("file_name")].Set(file.name);
    row[QStringLiteral("file_type")].Set(static_cast<int>(file.type));
    row[QStringLiteral("file_path")].Set(file.path);
    row[QStringLiteral("file_infor")].Set(file.remark);
    row[QStringLiteral("file_size")].Set(Size_Text(file.size));
    row[QStringLiteral("file_date")].Set(Machine::Now());
    row[QStringLiteral("order_id")].Set(order);
    row.UpdateBatch();
    return row[QStringLiteral("file_id")].Number();
}

/// Signals that the user called the work off.
struct Called_Off {
};

/// Copies a file into a row. A row that stays without its bytes goes again.
void Copy_Into_Row(qint64 id, QFile &file, Work &work)
{
    const qint64 size = file.size();
    const QString name = QFileInfo(file).fileName();
    try {
        Database_Engine::Write_Blob(Bytes_Of(id), size, [&](char *block, qint64 wanted) {
            if (!work.Next(file.pos(), size, name))
                throw Called_Off();
            return file.read(block, wanted);
        });
    } catch (...) {
        Run_Statement(Sql_Text(Sql::Delete_Attachment, id), App().Conn_Str);
        throw;
    }
}

void Open_To_Copy(QFile &file, const QString &path)
{
    Files::Open_To_Read(file, path);
    if (file.size() > Database_Engine::Longest_Blob(App().Conn_Str))
        throw Run_Time_Error(Error_Number::Db_Failed,
                             QStringLiteral("%1 (%2 > %3)")
                                 .arg(file.fileName())
                                 .arg(file.size())
                                 .arg(Database_Engine::Longest_Blob(App().Conn_Str)),
                             Failure::Too_Large);
}

qint64 Add_Internal(const QString &code_id, const QString &path, const QString &name, const QString &remark, Work &work)
{
    QFile file;
    Open_To_Copy(file, path);
    const qint64 id = Add_Row({code_id, name, Attachment_Type::Internal, file.size(), QString(), remark});
    Copy_Into_Row(id, file, work);
    return id;
}

bool Is_Same_File(const QString &one, const QString &other)
{
    const auto digest = [](const QString &path) {
        QFile file;
        Files::Open_To_Read(file, path);
        QCryptographicHash hash(QCryptographicHash::Sha256);
        hash.addData(&file);
        return hash.result();
    };
    return QFileInfo(one).size() == QFileInfo(other).size() && digest(one) == digest(other);
}

/// Copies the file to `Addin`, a folder for each day. One of its name that is there already is the one where it holds
/// the same; else a number is put behind the name.
QString Copy_To_Addin(const QString &path, Work &work)
{
    const QString folder =
        App().App_Path + QStringLiteral("Addin/") + Machine::Now().toString(QStringLiteral("yyyyMMdd"));
    Files::Make_Directory(folder);
    const QFileInfo source(Files::Native_Path(path));
    const QString suffix = source.suffix().isEmpty() ? QString() : QLatin1Char('.') + source.suffix();
    QString copy = folder + QLatin1Char('/') + source.fileName();
    for (int i = 2; QFileInfo::exists(copy) && !Is_Same_File(copy, source.filePath()); ++i)
        copy = QStringLiteral("%1/%2 (%3)%4").arg(folder, source.fileName().chopped(suffix.size())).arg(i).arg(suffix);
    if (!QFileInfo::exists(copy) && !Copy_File_Watched(source.filePath(), copy, Files::Durability::Kept, work))
        throw Called_Off();
    return copy;
}

/// Runs an addition as one commit, with its failure as its result.
template <class Body>
Saved_Attachment Saved(Body &&body)
{
    Saved_Attachment saved;
    Trap(
        Own_Source,
        [&] {
            try {
                Database_Engine::One_Action(App().Conn_Str, [&] { saved.id = body(); });
            } catch (const Called_Off &) {
                saved.stopped = true;
            }
            return true;
        },
        [&] {
            saved.id = 0;
            saved.trouble = Err();
        });
    return saved;
}

Saved_Attachment Add_Link(const QString &code_id, const QString &name, const QString &path, qint64 size = 0)
{
    return Saved([&] { return Add_Row({code_id, name, Attachment_Type::External, size, path, QString()}); });
}

qint64 Order_Of(qint64 id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Order_Of_File, id), App().Conn_Str);
    return row.Eof() ? 0 : row[QStringLiteral("order_id")].Number();
}

void Set_Order(qint64 id, qint64 order)
{
    Run_Statement(Sql_Text(Sql::Set_File_Order, order, id), App().Conn_Str);
}

void Write_Page_Picture(Recordset &row)
{
    constexpr qsizetype Folder_Letters = 6;
    const QString name = row[QStringLiteral("file_name")].Text();
    const Field bytes = row[QStringLiteral("file_cont")];
    if (bytes.Is_Null())
        return;
    const QString folder = name.left(Folder_Letters);
    if (!Files::Is_Plain_Name(name) || !Files::Is_Plain_Name(folder))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Bad file name: ") + name);
    const QString directory = Files::With_Final_Separator(Files::Native_Path(Config().Pic_Dir)) + folder;
    Files::Make_Directory(directory);
    const QString path = directory + QLatin1Char('/') + name;
    if (!QFileInfo::exists(path))
        Files::Write_Bytes(path, bytes.Bytes(), Files::Durability::Staging);
}
} // namespace

Attachment Attachment_From(Recordset &row)
{
    Attachment file;
    file.id = row[QStringLiteral("file_id")].Number();
    file.type = static_cast<Attachment_Type>(row[QStringLiteral("file_type")].Number());
    file.name = row[QStringLiteral("file_name")].Text();
    file.size = row[QStringLiteral("file_size")].Text();
    file.date = row[QStringLiteral("file_date")].Text();
    file.path = row[QStringLiteral("file_path")].Text();
    file.remark = row[QStringLiteral("file_infor")].Text();
    return file;
}

qint64 Attachment_Bytes(const Attachment &attachment)
{
    return qRound64(attachment.size.chopped(attachment.size.endsWith(QLatin1Char('K'))).toDouble() * Kilobyte);
}

QString Attachment_Trouble(const Pending_Error &trouble)
{
    if (trouble.failure != Failure::Too_Large)
        return Error_Text(trouble);
    constexpr qint64 Megabyte = 1 << 20;
    return Pack_Text("Page_Attachments", "_Too_Large").arg(Database_Engine::Longest_Blob(App().Conn_Str) / Megabyte);
}

QList<Attachment> Attachments_Of(const QString &code_id)
{
    QList<Attachment> files;
    Recordset rows;
    for (rows.Open(Sql_Text(Sql::Attachments_Of, code_id), App().Conn_Str); !rows.Eof(); rows.MoveNext()) {
        files.append(Attachment_From(rows));
        files.back().document = code_id;
    }
    return files;
}

int Attachment_Count(const QString &code_id)
{
    Recordset count;
    count.Open(Sql_Text(Sql::Count_Of_Attachments, code_id), App().Conn_Str);
    return count.Eof() ? 0 : static_cast<int>(count[0].Number());
}

Saved_Attachment S_SaveFile(const QString &code_id, const QString &path, const QString &name, const QString &mode,
                            Work &work)
{
    if (mode == Addin_Mode::Nothing)
        return {};
    const QFileInfo source(Files::Native_Path(path));
    const QString shown = name.isEmpty() ? source.fileName() : name;
    if (mode == Addin_Mode::Internal)
        return Saved([&] { return Add_Internal(code_id, path, shown, QString(), work); });
    return Saved([&] {
        const QString link = mode == Addin_Mode::Copy ? Attachment_Place::Reduced(Copy_To_Addin(path, work)) : path;
        return Add_Row({code_id, shown, Attachment_Type::External, source.size(), link, QString()});
    });
}

Saved_Attachment Add_Reduced_Link(const QString &code_id, const QString &path)
{
    const QFileInfo source(Files::Native_Path(path));
    return Add_Link(code_id, source.fileName(), Attachment_Place::Reduced(path), source.size());
}

Saved_Attachment Add_Folder_Link(const QString &code_id, const QString &folder)
{
    return Add_Link(code_id, folder, Attachment_Place::Folder_Link(folder));
}

Saved_Attachment Add_Page_Link(const QString &code_id, const QString &address)
{
    return Add_Link(code_id, address, Attachment_Place::Page_Link(address));
}

Saved_Attachment Replace_Attachment(const Attachment &old, const QString &path, Work &work)
{
    return Saved([&] {
        const qint64 id = Add_Internal(old.document, path, old.name, old.remark, work);
        Run_Statement(Sql_Text(Sql::Delete_Attachment, old.id), App().Conn_Str);
        return id;
    });
}

void ChangeFileOrder(qint64 one, qint64 other)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        const qint64 first = Order_Of(one);
        Set_Order(one, Order_Of(other));
        Set_Order(other, first);
    });
}

void Delete_Attachments(const QList<qint64> &ids)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        for (const qint64 id : ids)
            Run_Statement(Sql_Text(Sql::Delete_Attachment, id), App().Conn_Str);
    });
}

void Set_Attachment_Remark(qint64 id, const QString &remark)
{
    Run_Statement(Sql_Text(Sql::Set_File_Remark, remark, id), App().Conn_Str);
}

void Set_Attachment_Place(const Attachment &link, const QString &path)
{
    const bool folder = Attachment_Place::Expanded(link.path).kind == Attachment_Place::Kind::Folder;
    const bool follows = link.path.startsWith(QLatin1Char('<')) && !folder;
    Recordset row;
    row.CursorType = Cursor_Type::Keyset;
    row.LockType = Lock_Type::Optimistic;
    row.Open(Sql_Text(Sql::One_Attachment, link.id), App().Conn_Str);
    if (row.Eof())
        return;
    row[QStringLiteral("file_path")].Set(folder    ? Attachment_Place::Folder_Link(path)
                                         : follows ? Attachment_Place::Reduced(path)
                                                   : path);
    row[QStringLiteral("file_size")].Set(Size_Text(folder ? 0 : QFileInfo(path).size()));
    row.Update();
}

void Give_Attachments(const QList<qint64> &ids, const QString &code_id)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        for (const qint64 id : ids) {
            const qint64 order = Next_Order(code_id);
            Run_Statement(Sql_Text(Sql::Give_Attachment, code_id, order, id), App().Conn_Str);
        }
    });
}

bool Write_Attachment(qint64 id, const QString &path, Work &work, Files::Durability durability)
{
    Files::Atomic_File file(path, durability);
    qint64 written = 0;
    bool whole = true;
    const QString name = QFileInfo(path).fileName();
    const qint64 all = Database_Engine::Blob_Size(Bytes_Of(id));
    Database_Engine::Read_Blob(Bytes_Of(id), [&](const char *block, qint64 size) {
        whole = work.Next(written, all, name);
        if (whole)
            file.Write(block, size);
        written += size;
        return whole;
    });
    if (whole)
        file.Commit();
    return whole;
}

QByteArray Attachment_Digest(qint64 id, Work &work, const QString &name)
{
    QCryptographicHash digest(QCryptographicHash::Sha256);
    bool whole = true;
    qint64 done = 0;
    const qint64 all = Database_Engine::Blob_Size(Bytes_Of(id));
    Database_Engine::Read_Blob(Bytes_Of(id), [&](const char *block, qint64 size) {
        whole = work.Next(done, all, name);
        digest.addData(QByteArrayView(block, size));
        done += size;
        return whole;
    });
    return whole ? digest.result() : QByteArray();
}

void s_ReadAllFile(const QString &code_id)
{
    Trap(QStringLiteral("s_ReadAllFile"), [&] {
        Recordset rows;
        for (rows.Open(Sql_Text(Sql::Pictures_Of_Page, code_id), App().Conn_Str); !rows.Eof(); rows.MoveNext()) {
            if (!Resume_Next([&] { Write_Page_Picture(rows); }))
                Error_Log(QStringLiteral("s_ReadAllFile"));
            Yield();
        }
        return true;
    });
}
