// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/outside_file.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "documents/coder.h"
#include "documents/data_update.h"
#include "documents/document_sql.h"
#include "documents/document_store.h"
#include "documents/staging.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "tree/folder_ids.h"

#include <QCborMap>
#include <QScopeGuard>

namespace
{
const QString Copy_Suffix = QStringLiteral(".copy");

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

Outside_File::Outside_File(const QString &code_id) : Outside_File(Source_Of(code_id)) {}

Outside_File::Source Outside_File::Source_Of(const QString &code_id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Read_Document, code_id), App().Conn_Str);
    if (row.Eof())
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Document is gone: ") + code_id);
    return {{code_id, row[QStringLiteral("Code_Title")].Text(), row[QStringLiteral("Cate_ID")].Text(),
             row[QStringLiteral("Code_Type")].Text(), row[QStringLiteral("Code_Update")].Text()},
            row[QStringLiteral("Code_Content_IO")].Bytes()};
}

Outside_File::Outside_File(const Source &source)
    : m_record(source.record), m_copy(Copy_Suffix, Copy_Name(source.record.title, source.record.type))
{
    const QString raw = QStringLiteral("zip.cc");
    const Staging staging(10000, {raw});
    auto giveUp = qScopeGuard([this] { m_copy.Remove(); });
    Files::Write_Bytes(staging.Path(raw), source.bytes, Files::Durability::Staging);
    Run_Coder("d", staging.Path(raw), Path());
    staging.Drop(raw);
    if (!Files::Is_File(Path()))
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("File not found: ") + Path(),
                             Failure::No_Output);
    m_copy.Note(Facts());
    giveUp.dismiss();
}

Outside_File::Outside_File(Outside_Copy copy) : m_copy(std::move(copy))
{
    const auto text = [this](const char *key) {
        return m_copy.Facts()[QLatin1String(key)].toString();
    };
    m_record = {text("id"), text("title"), text("folder"), text("type"), text("updated")};
}

Outside_File::~Outside_File()
{
    if (!Is_In_Use() && !Is_Changed())
        m_copy.Remove();
}

/// A program that is killed while it saves may leave a file of no bytes, which is nobody's document.
bool Outside_File::Is_Changed()
{
    return m_failed || (m_copy.Now().size > 0 && m_copy.Is_Changed());
}

bool Outside_File::Is_Settled_Change()
{
    const Outside_Copy::Moment now = m_copy.Now();
    return now.size > 0 && m_failed != now && m_copy.Is_Settled_Change();
}

bool Outside_File::Take_Back(QString &text)
{
    const Outside_Copy::Moment taken = m_copy.Now();
    if (!Replace_File_Content(m_record.id, Path(), text)) {
        m_failed = taken;
        return false;
    }
    Note_Taken(taken);
    return true;
}

void Outside_File::Note_Taken(const Outside_Copy::Moment &taken)
{
    m_failed.reset();
    m_record.updated = Updated(m_record.id);
    m_copy.Note(Facts(), taken);
}

QList<Stored_Copy> Outside_File::Take_Back_Left()
{
    QList<Stored_Copy> stored;
    for (Outside_Copy &left : Outside_Copy::Left(Copy_Suffix)) {
        Trap(QStringLiteral("Outside_File\\Take_Back_Left"), [&] {
            Outside_File copy(std::move(left));
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
        Note_Taken(m_copy.Now());
        return true;
    }
    QString text;
    return Take_Back(text);
}

QCborMap Outside_File::Facts() const
{
    return {{QStringLiteral("id"), m_record.id},
            {QStringLiteral("title"), m_record.title},
            {QStringLiteral("folder"), m_record.folder},
            {QStringLiteral("type"), m_record.type},
            {QStringLiteral("updated"), m_record.updated}};
}
