// SPDX-License-Identifier: GPL-3.0-or-later
#include "arrivals/arrivals.h"

#include "arrivals/arrivals_sql.h"
#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "core/system_log.h"
#include "documents/document_store.h"
#include "platform/database/recordset.h"
#include "platform/richtext/rich_text.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"

#include <QFileInfo>
#include <QTextDocument>

namespace
{
const QString New_Document = QStringLiteral("0");

/// The first line that says something, as long as a title is where nobody typed one.
QString Title_From(const QString &text)
{
    constexpr qsizetype Longest = 30;
    const QString trimmed = text.trimmed();
    return trimmed.section(QLatin1Char('\n'), 0, 0).simplified().left(Longest);
}

std::optional<QString> Stored_Name(const QString &id)
{
    return Trap(QStringLiteral("Arrivals\\Folder"), [&]() -> std::optional<QString> {
        Recordset folder;
        folder.Open(Sql_Text(Sql::Folder_Name, id), App().Conn_Str);
        return folder.Eof() ? std::nullopt : std::optional(folder[QStringLiteral("Cate_Name")].Text());
    });
}
} // namespace

QString Arrivals::Folder()
{
    const QString chosen = Config().Cob_K9;
    return !chosen.isEmpty() && Stored_Name(chosen) ? chosen : Recycle_Bin_Id;
}

QString Arrivals::Folder_Name(const QString &id)
{
    return Shown_Folder_Name(id, Stored_Name(id).value_or(QString()));
}

QString Arrivals::Take_File(const QString &path, const QString &folder)
{
    const QFileInfo file(path);
    QString id = AddCodeContent_File_Ex(path, folder, New_Document, file.fileName(), file.suffix().toUpper(), false);
    if (!id.isEmpty())
        Add_Log(Log_Type::Imported, file.fileName() + Pack_Text("Frm_OnTop", "_ImportFileOk"));
    return id;
}

QString Arrivals::Take_Note(const QTextDocument &note, const QString &title, const QString &folder)
{
    const QString head = title.trimmed().isEmpty() ? Title_From(Rich_Text::Shown_Text(note)) : title.simplified();
    QString id = AddCodeContent_Ex(note, folder, New_Document, head, QStringLiteral("RTF"));
    if (!id.isEmpty())
        Add_Log(Log_Type::Created, Pack_Text("Frm_Doc_Standard", "_AddSucc") + head);
    return id;
}

QString Arrivals::Take_Text(const QString &text, const QString &title, const QString &folder)
{
    QTextDocument note;
    note.setUndoRedoEnabled(false);
    note.setPlainText(text);
    return Take_Note(note, title, folder);
}

std::optional<Arrivals::Command> Arrivals::Read_Command(const QString &command)
{
    constexpr qsizetype Head = 14;
    const Command read{command.left(Head), command.mid(Head)};
    return read.text.trimmed().isEmpty() ? std::nullopt : std::optional(read);
}
