// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/outgoing_document.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/runtime_files.h"
#include "core/sql_text.h"
#include "documents/coder.h"
#include "documents/document_sql.h"
#include "documents/stored_stream.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/html/closed_door.h"
#include "platform/machine/machine.h"
#include "platform/office/office_engine.h"
#include "platform/richtext/rich_text.h"

#include <QStorageInfo>
#include <QTextDocument>
#include <QThread>

namespace
{
/// An outside program does not say why it failed: with less room on the disk than this, that is why.
constexpr qint64 Least_Room = 1 << 20;
constexpr qint64 Largest_File = Q_INT64_C(256) << 20;

const QStringList Text_Types{QStringLiteral("DOC"), QStringLiteral("DOCX")};
const QStringList Other_Types{QStringLiteral("XLS"), QStringLiteral("XLSX"), QStringLiteral("PPT"),
                              QStringLiteral("PPTX")};
/// PDF and SWF are kept outside of the database.
const QStringList No_File_Types{QString(), QStringLiteral("RTF"), QStringLiteral("PDF"), QStringLiteral("SWF")};

bool Is_Of_Kind(const QString &type, File_Kind kind)
{
    switch (kind) {
    case File_Kind::Office_Text:
        return Text_Types.contains(type);
    case File_Kind::Office:
        return (Text_Types + Other_Types).contains(type);
    case File_Kind::Any:
        break;
    }
    return !No_File_Types.contains(type) && Files::Is_Plain_Name(type);
}

QString Text(const char *key)
{
    return Pack_Text("Export_Document", key);
}
} // namespace

Outgoing_Document::Outgoing_Document(const QTextDocument &shown)
    : m_door(std::make_unique<Html::Closed_Door>()), m_text(shown.clone(m_door.get()))
{
    m_door->moveToThread(nullptr);
}

Outgoing_Document::~Outgoing_Document() = default;

void Outgoing_Document::Take_To_This_Thread() const
{
    m_door->moveToThread(QThread::currentThread());
}

void Outgoing_Document::Leave_Thread() const
{
    m_door->moveToThread(nullptr);
}

Export_Room::Export_Room()
{
    constexpr int Numbers_Below = 1'000'000'000;
    m_path = Temp_Directory() + QStringLiteral("export_%1").arg(Machine::Random_Below(Numbers_Below));
    Files::Make_Directory(m_path);
}

Export_Room::~Export_Room()
{
    Files::Delete_Folder(m_path);
}

void Refuse_Export(const QString &reason)
{
    throw Run_Time_Error(Error_Number::Path_Access, reason);
}

void Stop_Export()
{
    throw Run_Time_Error(Error_Number::Path_Access, {}, Failure::Stopped);
}

QString Stored_File_Of(const Outgoing_Document &document, const Export_Room &room, File_Kind kind)
{
    if (document.code_id.isEmpty() || !Is_Of_Kind(document.type, kind))
        return {};
    Recordset row;
    row.Open(Sql_Text(Sql::Read_Document, document.code_id), App().Conn_Str);
    if (row.Eof() || row[QStringLiteral("Code_Content_IO")].Is_Null())
        return {};
    const QString raw = room.Path(QStringLiteral("stored.cc"));
    QString path = room.Path(QStringLiteral("stored.") + document.type.toLower());
    Files::Write_Bytes(raw, row[QStringLiteral("Code_Content_IO")].Bytes(), Files::Durability::Staging);
    if (Decoded_Size(raw) > Largest_File || !Run_Coder("d", raw, path) || !Files::Is_File(path))
        Refuse_Export(Text("_Unreadable"));
    return path;
}

QString Convert(const QString &source, const QString &suffix, const Export_Room &room, Work &work)
{
    const QString step = Text("_Step_Convert");
    const Office::Converted converted =
        Office::Convert(source, suffix, room.Path(), [&] { return work.Next(0, 0, step); });
    switch (converted.end) {
    case Programs::End::Well:
        return converted.path;
    case Programs::End::Stopped:
        Stop_Export();
    case Programs::End::Out_Of_Time:
        Refuse_Export(Text("_Engine_Late"));
    case Programs::End::Badly:
    case Programs::End::Not_Started:
        break;
    }
    if (QStorageInfo(room.Path()).bytesAvailable() < Least_Room)
        throw Run_Time_Error(Error_Number::Disk_Full, room.Path(), Failure::Disk_Full);
    Refuse_Export(Text("_Engine_Failed"));
}

bool Take_Whole_Text(Outgoing_Document &document, const Export_Room &room, Work &work)
{
    const QString source = Stored_File_Of(document, room, File_Kind::Office_Text);
    if (source.isEmpty())
        return !Other_Types.contains(document.type);
    if (Office::Engine().isEmpty())
        return false;
    Rich_Text::Load_File(Convert(source, QStringLiteral("rtf"), room, work), Rich_Text::Format::Rtf, document.Text());
    return true;
}
