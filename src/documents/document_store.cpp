// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/document_store.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/trouble.h"
#include "core/yield.h"
#include "documents/busy_pointer.h"
#include "documents/coder.h"
#include "documents/document_fields.h"
#include "documents/document_ids.h"
#include "documents/document_sql.h"
#include "documents/file_content.h"
#include "documents/staging.h"
#include "documents/stored_stream.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"
#include "platform/lzma/zelqorfun.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "platform/richtext/rich_text.h"
#include "users/scrambling.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QTextDocument>

namespace
{
const QString Rtf = QStringLiteral("RTF");

/// The row of a document in batch mode, and whether it is a new one.
struct Document_Row {
    Recordset row;
    QString id;
    bool inserted = false;

    Field operator[](const char *column) { return row[QLatin1String(column)]; }
};

Document_Row Open_Row(const QString &code_id)
{
    Document_Row document;
    document.row.CursorLocation = Cursor_Location::Server;
    document.row.CursorType = Cursor_Type::Static;
    document.row.LockType = Lock_Type::Batch_Optimistic;
    document.row.Open(Sql_Text(Sql::Whole_Document, code_id), App().Conn_Str);
    document.inserted = document.row.Eof();
    document.id = document.inserted ? Make_Code_ID() : code_id;
    if (document.inserted)
        document.row.AddNew();
    return document;
}

QString Plain_Text(const QTextDocument *pane)
{
    return pane == nullptr ? QString() : Rich_Text::Shown_Text(*pane);
}

/// The fields that tell who touched the row when, alike in all saves.
void Write_Traces(Document_Row &document)
{
    if (document.inserted) {
        document["Code_ID"].Set(document.id);
        document["Code_Create"].Set(Store_Time());
        document["Code_Creater"].Set(App().Curr_User);
        document["Code_ReadDate_Sta"].Set(QStringLiteral("X"));
    } else {
        document["Code_Updater"].Set(App().Curr_User);
        document["Code_ReadDate_Sta"].Set(QString());
    }
    document["Code_LineColor"].Set(QString());
}

void Write_Field(Document_Row &document, const Document_Field &field, const QString &text)
{
    const auto date = [&] {
        return Database_Engine::Date_From_Text(text).date();
    };
    Field column = document[field.column];
    if (field.kind == Field_Kind::Created)
        column.Set(date().startOfDay());
    else if (field.kind == Field_Kind::Updated)
        column.Set(QDateTime(date(), Machine::Now().time()));
    else if (field.kind != Field_Kind::File || !text.isEmpty() || !column.Is_Null())
        column.Set(text); // a page's own text counts where there is no file
}

void Write_Form_Fields(Document_Row &document, const Document_Form &form)
{
    Write_Traces(document);
    if (!document.inserted)
        document["Code_UpdateNum"].Set(document["Code_UpdateNum"].Is_Null() ? 1
                                                                            : document["Code_UpdateNum"].Number() + 1);
    for (const Document_Field &field : Document_Fields()) {
        if (*field.column != '\0')
            Write_Field(document, field, form.*field.text);
    }
}

/// Compresses a staged file. A missing output is the only sign of failure, so an older one may not stand there.
void Compress(const QString &input, const QString &output)
{
    Files::Delete_If_Present(output);
    Run_Coder("e", input, output);
    if (!QFileInfo::exists(Files::Native_Path(output)))
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("File not found: ") + output,
                             Failure::No_Output);
}

void Stage_Rtf(const QString &path, const QTextDocument &document)
{
    Files::Write_Bytes(path, Rich_Text::Write_Rtf(document), Files::Durability::Staging);
}

/// The names of one save of the form.
struct Form_Stages {
    explicit Form_Stages(const QString &type)
        : written(QStringLiteral("temp1.") + type), input(QStringLiteral("temp5.") + type),
          output(QStringLiteral("temp2.") + type)
    {
    }
    [[nodiscard]] QStringList All() const { return {written, input, output, memo, sum}; }

    QString written; ///< the rich text of the editor
    QString input;   ///< its copy, which the coder reads
    QString output;  ///< what the coder writes, for all three panes
    QString memo = QStringLiteral("temp3.DOC");
    QString sum = QStringLiteral("temp4.DOC");
};

/// The tail will stand over the stream's last byte, so the stream is made not to need it.
/// @returns whether the password will be asked for
bool Write_Password(const QString &path, const QString &password)
{
    QByteArray stream = Files::Read_Bytes(path);
    Lzma_Free_Last_Byte(stream);
    Files::Write_Bytes(path, stream, Files::Durability::Staging);
    Write_Pass_Tail(path, Encode(password.trimmed()));
    return Is_Tail_Found(QFileInfo(path).size());
}

void Write_Content(Document_Row &document, Document_Form &form, const Staging &staging, const Form_Stages &stages)
{
    staging.Drop(stages.written);
    if (form.type == Rtf)
        Stage_Rtf(staging.Path(stages.written), *form.content);
    staging.Drop(stages.input);
    // Only rich text was written: any other type meets the missing output.
    if (form.type != Rtf)
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("No rich text: ") + form.type,
                             Failure::Not_Rich_Text);
    Files::Copy_File(staging.Path(stages.written), staging.Path(stages.input), Files::Durability::Staging);
    Compress(staging.Path(stages.input), staging.Path(stages.output));
    form.lock_is_open = false;
    if (form.password.isEmpty()) {
        document["Code_Content"].Set(Plain_Text(form.content));
    } else {
        document["Code_Content"].Set(QString());
        form.lock_is_open = !Write_Password(staging.Path(stages.output), form.password);
    }
    Copy_File_To_Blob(staging.Path(stages.output), document["Code_Content_IO"]);
}

void Write_Pane(Document_Row &document, const QTextDocument *pane, const char *textColumn, const char *streamColumn,
                const Staging &staging, const QString &stage, const QString &output)
{
    document[textColumn].Set(Plain_Text(pane));
    staging.Drop(stage);
    Stage_Rtf(staging.Path(stage), *pane);
    Yield();
    Compress(staging.Path(stage), staging.Path(output));
    Copy_File_To_Blob(staging.Path(output), document[streamColumn]);
}

Save_Outcome Save_Form(Document_Form &form, const QString &code_id, bool lockMayStayOpen)
{
    const Form_Stages stages(form.type);
    if (!Files::Is_Plain_Name(stages.written))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Bad document type: ") + form.type);
    Document_Row document = Open_Row(code_id);
    Write_Form_Fields(document, form);
    Yield();
    const Staging staging(10000, stages.All());
    if (!form.keeps_content)
        Write_Content(document, form, staging, stages);
    if (form.lock_is_open && !lockMayStayOpen)
        return Save_Outcome::Lock_Stays_Open;
    Write_Pane(document, form.memo, "Code_Memo", "Code_Memo_IO", staging, stages.memo, stages.output);
    Write_Pane(document, form.sum, "Code_Sum", "Code_Sum_IO", staging, stages.sum, stages.output);
    if (!form.keeps_content)
        document["Code_Type"].Set(form.type.isEmpty() ? Rtf : form.type);
    Yield();
    Database_Engine::One_Action(App().Conn_Str, [&] {
        document.row.UpdateBatch();
        document.row.Close();
        // The row is stored, whatever becomes of the attachments: saving again would store it twice.
        if (document.inserted &&
            !Resume_Next([&] { Run_Statement(Sql_Text(Sql::Adopt_Attachments, document.id), App().Conn_Str); }))
            Error_Log(QStringLiteral("Mod_DataBase\\AddCodeContent_Ex_Standard"));
    });
    if (document.inserted)
        form.code_id = document.id;
    if (!form.keeps_content)
        form.stored_type = form.type;
    return Save_Outcome::Stored;
}

/// The coder's input for a link: a file that holds the path as one line.
QString Path_As_File(const Staging &staging, const QString &path)
{
    QString name = staging.Path(QStringLiteral("tt.txt"));
    if (!Exists(name))
        Files::Write_Bytes(name, path.toUtf8() + "\r\n", Files::Durability::Staging);
    return name;
}

/// A file's bytes, or the path for a link.
void Write_File_Stream(Document_Row &document, const QString &path, bool linkOnly)
{
    const QString output = QStringLiteral("zip.dd");
    const Staging staging(1000, {output, QStringLiteral("tt.txt")});
    Compress(linkOnly ? Path_As_File(staging, path) : path, staging.Path(output));
    Copy_File_To_Blob(staging.Path(output), document["Code_Content_IO"]);
    staging.Drop(output);
    staging.Drop(QStringLiteral("tt.txt"));
}

/// The plain fields of both saves that have no form.
void Write_Captured_Fields(Document_Row &document, const QString &folder_id, const QString &title)
{
    Write_Traces(document);
    if (!document.inserted && !document["Code_UpdateNum"].Is_Null())
        document["Code_UpdateNum"].Set(document["Code_UpdateNum"].Number() + 1);
    document["Cate_ID"].Set(folder_id);
    document["Code_Title"].Set(title);
    for (const char *column : {"Code_Explain", "Code_Promulgator", "Code_Provenance", "Code_Author", "Code_Keys"})
        document[column].Set(QString());
    document["Code_Update"].Set(Store_Time());
}

void Write_Last_Fields(Document_Row &document, const QString &done, const QString &type)
{
    document["Code_Color"].Set(QString());
    document["Code_Done"].Set(done);
    document["Code_Type"].Set(type.isEmpty() ? Rtf : type);
}

/// The staging files of the quick capture have fixed names. The coder is given its input with a blank behind the name,
/// which file systems and the coder drop.
QString Save_Captured(const QTextDocument &source, const QString &folder_id, const QString &code_id,
                      const QString &title, const QString &type)
{
    constexpr qsizetype Title_From_Source = 30;
    const QString folder = App().App_Path + QStringLiteral("data/temp/");
    const QString written = folder + QStringLiteral("zip.db");
    const QString output = folder + QStringLiteral("zip.dd");
    const QString text = Rich_Text::Shown_Text(source);
    Document_Row document = Open_Row(code_id);
    Write_Captured_Fields(document, folder_id, title.isEmpty() ? text.left(Title_From_Source) : title);
    Files::Make_Directory(folder);
    Stage_Rtf(written, source);
    Compress(written + QLatin1Char(' '), output);
    document["Code_Content"].Set(text);
    Copy_File_To_Blob(output, document["Code_Content_IO"]);
    Files::Delete_If_Present(written);
    Files::Delete_If_Present(output);
    Write_Last_Fields(document, QStringLiteral("★★★★★"), type);
    Yield();
    document.row.UpdateBatch();
    document.row.Close();
    return document.id;
}

QString Save_File_Document(const QString &path, const QString &folder_id, const QString &code_id, const QString &title,
                           const File_Content &content)
{
    // What a quick capture that was killed left behind.
    Files::Delete_If_Present(App().App_Path + QStringLiteral("data/temp/zip.db"));
    Document_Row document = Open_Row(code_id);
    Write_Captured_Fields(document, folder_id, title.isEmpty() ? path : title);
    document["Code_Date"].Set(Machine::Now().date().startOfDay());
    document["Code_Content"].Set(content.text);
    document["Code_File"].Set(content.keeps_path ? path : QString());
    Write_File_Stream(document, path, content.link_only);
    Write_Last_Fields(document, QString(), content.type);
    Yield();
    document.row.UpdateBatch();
    document.row.Close();

    return Is_Stored(document.id) ? document.id : QString();
}

QString Replace_Content(const QString &code_id, const QString &path)
{
    Document_Row document = Open_Row(code_id);
    if (document.inserted)
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Document is gone: ") + code_id);
    const File_Content content = Content_Of_File(path, document["Code_Type"].Text(), false);
    Write_Traces(document);
    document["Code_UpdateNum"].Set(document["Code_UpdateNum"].Is_Null() ? 1 : document["Code_UpdateNum"].Number() + 1);
    document["Code_Update"].Set(Store_Time());
    document["Code_Content"].Set(content.text);
    Write_File_Stream(document, path, false);
    Yield();
    document.row.UpdateBatch();
    document.row.Close();
    return content.text;
}
} // namespace

QString Store_Time()
{
    return Machine::Now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

bool Is_Stored(const QString &code_id)
{
    Recordset stored;
    stored.Open(Sql_Text(Sql::Find_Document, code_id), App().Conn_Str);
    return !stored.Eof();
}

void Report_Failed_Save()
{
    Prompts::Message(Pack_Text("Mod_DataBase", "_SaveError") + Error_Text(Err()), App().Box_Title,
                     Prompts::Icon::Exclamation);
}

QString Stored_State(Recordset &row)
{
    QCryptographicHash digest(QCryptographicHash::Sha256);
    for (const char *column : {"Code_Update", "Code_Title", "Code_Keys", "Code_Explain", "Code_Content"})
        digest.addData(row[QLatin1String(column)].Text().toUtf8() + '\0');
    for (const char *column : {"Code_Content_IO", "Code_Memo_IO", "Code_Sum_IO"})
        digest.addData(row[QLatin1String(column)].Bytes());
    return QString::fromLatin1(digest.result().toHex());
}

QString Stored_State_Of(const QString &code_id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Read_Document, code_id), App().Conn_Str);
    return row.Eof() ? QString() : Stored_State(row);
}

QMap<QString, int> Field_Rooms()
{
    Recordset row;
    row.Open(Sql_Text(Sql::Whole_Document, QString()), App().Conn_Str);
    QMap<QString, int> rooms;
    for (const Document_Field &field : Document_Fields()) {
        if (Is_Bounded(field.kind))
            rooms.insert(QLatin1String(field.column), row[QLatin1String(field.column)].Defined_Size());
    }
    return rooms;
}

bool AddCodeContent_Ex_Standard(Document_Form &form, const QString &code_id)
{
    return Save_Document(form, code_id, true) == Save_Outcome::Stored;
}

Save_Outcome Save_Document(Document_Form &form, const QString &code_id, bool lockMayStayOpen)
{
    return Trap(
        QStringLiteral("Mod_DataBase\\AddCodeContent_Ex_Standard"),
        [&] {
            const Busy_Pointer busy;
            return Save_Form(form, code_id, lockMayStayOpen);
        },
        Report_Failed_Save);
}

QString AddCodeContent_Ex(const QTextDocument &source, const QString &folder_id, const QString &code_id,
                          const QString &title, const QString &type)
{
    return Trap_Told(QStringLiteral("Mod_DataBase\\AddCodeContent_Ex"), [&] {
        const Busy_Pointer busy;
        return Save_Captured(source, folder_id, code_id, title, type);
    });
}

Stored_File Store_File(const QString &path, const QString &folder_id, const QString &code_id, const QString &title,
                       const QString &type, bool link_only)
{
    Stored_File stored;
    stored.id = Trap(
        QStringLiteral("AddCodeContent_File_Ex"),
        [&] {
            const Busy_Pointer busy;
            return Save_File_Document(path, folder_id, code_id, title, Content_Of_File(path, type, link_only));
        },
        [&] { stored.trouble = Err(); });
    return stored;
}

QString AddCodeContent_File_Ex(const QString &path, const QString &folder_id, const QString &code_id,
                               const QString &title, const QString &type, bool link_only)
{
    const Stored_File stored = Store_File(path, folder_id, code_id, title, type, link_only);
    if (stored.trouble.number != 0)
        Prompts::Message(Error_Text(stored.trouble) + QLatin1Char(' ') + QString::number(stored.trouble.number),
                         App().Box_Title, Prompts::Icon::Exclamation);
    return stored.id;
}

bool Replace_File_Content(const QString &code_id, const QString &path, QString &text)
{
    return Trap(
        QStringLiteral("Mod_DataBase\\Replace_File_Content"),
        [&] {
            const Busy_Pointer busy;
            text = Replace_Content(code_id, path);
            return true;
        },
        Report_Failed_Save);
}
