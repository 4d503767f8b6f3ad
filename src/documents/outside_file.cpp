// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/outside_file.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "documents/coder.h"
#include "documents/document_sql.h"
#include "documents/document_store.h"
#include "documents/staging.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"

#include <QDir>
#include <QFileInfo>

namespace
{
/// A name that a person recognises in the other program's title bar.
QString Copy_Name(const QString &title, const QString &type)
{
    constexpr qsizetype Longest = 60;
    QString name;
    for (const QChar c : title.simplified().left(Longest))
        name += c < QLatin1Char(' ') || QStringLiteral("/\\:*?\"<>|.").contains(c) ? QLatin1Char('_') : c;
    return QLatin1Char(' ') + name.trimmed() + QLatin1Char('.') + type.toLower();
}
} // namespace

Outside_File::Outside_File(const QString &code_id) : m_id(code_id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Read_Document, code_id), App().Conn_Str);
    if (row.Eof())
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Document is gone: ") + code_id);
    const QString name = Copy_Name(row[QStringLiteral("Code_Title")].Text(), row[QStringLiteral("Code_Type")].Text());
    const QString raw = QStringLiteral("zip.cc");
    const Staging staging(10000, {raw, name});
    if (!Files::Is_Plain_Name(name))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Bad document type: ") + name);
    Files::Write_Bytes(staging.Path(raw), row[QStringLiteral("Code_Content_IO")].Bytes(), Files::Durability::Staging);
    m_path = staging.Path(name);
    Run_Coder("d", staging.Path(raw), m_path);
    staging.Drop(raw);
    if (!QFileInfo::exists(m_path))
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("File not found: ") + m_path,
                             Failure::No_Output);
    m_taken = m_seen = Now();
}

Outside_File::~Outside_File()
{
    if (!Is_In_Use())
        Resume_Next([&] { Files::Delete_If_Present(m_path); });
}

bool Outside_File::Is_Changed() const
{
    return m_failed || (Now() != m_taken && Now().size > 0);
}

bool Outside_File::Is_Settled_Change()
{
    const State now = Now();
    const bool settled = now == m_seen && now != m_taken && now.size > 0;
    m_seen = now;
    return settled;
}

bool Outside_File::Is_In_Use() const
{
    const QFileInfo file(m_path);
    const QString name = file.fileName();
    // Office programs put one of these beside the file: the whole name, or the name with its first two characters gone.
    for (const QString &lock :
         {QStringLiteral(".~lock.%1#").arg(name), QStringLiteral("~$") + name, QStringLiteral("~$") + name.mid(2)}) {
        if (file.dir().exists(lock))
            return true;
    }
    return false;
}

bool Outside_File::Take_Back(QString &text)
{
    const State taken = Now();
    m_failed = !Replace_File_Content(m_id, m_path, text);
    m_taken = taken;
    return !m_failed;
}

Outside_File::State Outside_File::Now() const
{
    const QFileInfo file(m_path);
    return {file.size(), file.lastModified()};
}
