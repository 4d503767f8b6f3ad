// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/outside_file.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "documents/coder.h"
#include "documents/data_update.h"
#include "documents/document_sql.h"
#include "documents/document_store.h"
#include "documents/draft_folder.h"
#include "documents/staging.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "tree/folder_ids.h"

#include <QCborMap>
#include <QCborValue>
#include <QScopeGuard>

namespace
{
const QString Copy_Suffix = QStringLiteral(".copy");
const QString Record_Name = QStringLiteral("record.cbor");

/// A name that a person recognises in the other program's title bar.
QString Copy_Name(const QString &title, const QString &type)
{
    QString name = Files::Name_For(title, QStringLiteral("_"));
    for (const char sign : {'.', '~'}) // those programs name files of their own with them
        name.replace(QLatin1Char(sign), QLatin1Char('_'));
    return name + QLatin1Char('.') + type.toLower();
}

/// When the document was changed last; "" when it is gone.
QString Updated(const QString &id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Read_Document, id), App().Conn_Str);
    return row.Eof() ? QString() : row[QStringLiteral("Code_Update")].Text();
}
} // namespace

bool Is_Open_In_Office(const QString &path)
{
    const QString name = path.section(QLatin1Char('/'), -1);
    const QString directory = path.chopped(name.size());
    // Office programs put one of these beside the file: the whole name, or the name with its first two characters gone.
    for (const QString &lock :
         {QStringLiteral(".~lock.%1#").arg(name), QStringLiteral("~$") + name, QStringLiteral("~$") + name.mid(2)}) {
        if (Files::Look(directory + lock))
            return true;
    }
    return false;
}

Outside_File::Outside_File(const QString &code_id) : m_directory(Draft_Folder::New_Path(Copy_Suffix))
{
    Recordset row;
    row.Open(Sql_Text(Sql::Read_Document, code_id), App().Conn_Str);
    if (row.Eof())
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Document is gone: ") + code_id);
    m_record = {code_id,
                row[QStringLiteral("Code_Title")].Text(),
                row[QStringLiteral("Cate_ID")].Text(),
                row[QStringLiteral("Code_Type")].Text(),
                {},
                row[QStringLiteral("Code_Update")].Text(),
                {}};
    m_record.file = Copy_Name(m_record.title, m_record.type);
    if (!Files::Is_Plain_Name(m_record.file))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Bad document type: ") + m_record.file);
    const QString raw = QStringLiteral("zip.cc");
    const Staging staging(10000, {raw});
    auto giveUp = qScopeGuard([this] { Files::Delete_Folder(m_directory); });
    Files::Write_Bytes(staging.Path(raw), row[QStringLiteral("Code_Content_IO")].Bytes(), Files::Durability::Staging);
    Files::Make_Directory(m_directory);
    Run_Coder("d", staging.Path(raw), Path());
    staging.Drop(raw);
    if (!Files::Is_File(Path()))
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("File not found: ") + Path(),
                             Failure::No_Output);
    m_record.taken = m_seen = Now();
    Write_Record();
    giveUp.dismiss();
}

Outside_File::Outside_File(QString directory, Record record)
    : m_directory(std::move(directory)), m_record(std::move(record))
{
}

Outside_File::~Outside_File()
{
    if (!Is_In_Use() && !Is_Changed())
        Files::Delete_Folder(m_directory);
}

QString Outside_File::Path() const
{
    return m_directory + QLatin1Char('/') + m_record.file;
}

bool Outside_File::Is_Changed() const
{
    const State now = Now();
    return m_failed || (now != m_record.taken && now.size > 0);
}

bool Outside_File::Is_Settled_Change()
{
    const State now = Now();
    const bool settled = now == m_seen && now != m_record.taken && now.size > 0;
    m_seen = now;
    return settled;
}

bool Outside_File::Take_Back(QString &text)
{
    const State taken = Now();
    m_failed = !Replace_File_Content(m_record.id, Path(), text);
    if (!m_failed)
        Note_Taken(taken);
    else
        m_record.taken = taken; // tried once for each save in the other program
    return !m_failed;
}

void Outside_File::Note_Taken(const State &taken)
{
    m_record.taken = taken;
    m_record.updated = Updated(m_record.id);
    Write_Record();
}

QList<Stored_Copy> Outside_File::Take_Back_Left()
{
    QList<Stored_Copy> stored;
    for (const QString &directory : Draft_Folder::Left(Copy_Suffix)) {
        if (!Files::Is_File(directory + QLatin1Char('/') + Record_Name)) { // killed before the copy was given away
            Files::Delete_Folder(directory);
            continue;
        }
        Trap(QStringLiteral("Outside_File\\Take_Back_Left"), [&] {
            Outside_File copy(directory, Read_Record(directory));
            if (copy.Is_Changed() && copy.Take_Back_Late())
                stored.append({copy.m_record.id, copy.m_record.title});
        });
    }
    return stored;
}

/// @returns false after a failure, which has been shown
bool Outside_File::Take_Back_Late()
{
    if (Updated(m_record.id) != m_record.updated) {
        const QString folder = Is_Folder(m_record.folder) ? m_record.folder : Recycle_Bin_Id;
        const QString id =
            AddCodeContent_File_Ex(Path(), folder, QStringLiteral("0"), m_record.title, m_record.type, false);
        if (id.isEmpty())
            return false;
        m_record.id = id;
        Note_Taken(Now());
        return true;
    }
    QString text;
    return Take_Back(text);
}

Outside_File::Record Outside_File::Read_Record(const QString &directory)
{
    const QByteArray bytes = Files::Read_Bytes(directory + QLatin1Char('/') + Record_Name);
    const QCborMap map = QCborValue::fromCbor(bytes).toMap();
    const auto text = [&](const char *key) {
        return map[QLatin1String(key)].toString();
    };
    Record record{text("id"),
                  text("title"),
                  text("folder"),
                  text("type"),
                  text("file"),
                  text("updated"),
                  {map[QStringLiteral("size")].toInteger(), {}}};
    record.taken.written = QDateTime::fromMSecsSinceEpoch(map[QStringLiteral("written")].toInteger());
    if (!Files::Is_Plain_Name(record.file))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Damaged record: ") + directory);
    return record;
}

void Outside_File::Write_Record() const
{
    const QCborMap map{{QStringLiteral("id"), m_record.id},
                       {QStringLiteral("title"), m_record.title},
                       {QStringLiteral("folder"), m_record.folder},
                       {QStringLiteral("type"), m_record.type},
                       {QStringLiteral("file"), m_record.file},
                       {QStringLiteral("updated"), m_record.updated},
                       {QStringLiteral("size"), m_record.taken.size},
                       {QStringLiteral("written"), m_record.taken.written.toMSecsSinceEpoch()}};
    Files::Write_Bytes(m_directory + QLatin1Char('/') + Record_Name, map.toCborValue().toCbor(),
                       Files::Durability::Staging);
}

Outside_File::State Outside_File::Now() const
{
    const std::optional<Files::Entry> file = Files::Look(Path());
    return file ? State{file->size, file->changed} : State();
}
