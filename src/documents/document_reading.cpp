// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/document_reading.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "documents/attachments_sql.h"
#include "documents/busy_pointer.h"
#include "documents/coder.h"
#include "documents/document_fields.h"
#include "documents/document_sql.h"
#include "documents/document_store.h"
#include "documents/review_sql.h"
#include "documents/staging.h"
#include "documents/stored_stream.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/database/server.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "platform/richtext/rich_text.h"
#include "users/scrambling.h"

#include <QTextDocument>
#include <new>

namespace
{
constexpr qint32 Row_Gone = 3002;
const QString Raw = QStringLiteral("zip.cc");
const QString Decoded = QStringLiteral("zip.dd");
const QString Reserved = QStringLiteral("zip.ddb");
const QString Memo = QStringLiteral("zip3.dd");
const QString Sum = QStringLiteral("zip4.dd");

bool Is_Office(const QString &type)
{
    static const QStringList types{QStringLiteral("DOCX"), QStringLiteral("XLSX"), QStringLiteral("PPTX"),
                                   QStringLiteral("DOC"),  QStringLiteral("XLS"),  QStringLiteral("PPT")};
    return types.contains(type);
}

/// The staging files of one reading; all but the panes' files go when it ends.
class Reading_Stages
{
public:
    explicit Reading_Stages(const QString &type)
        : m_decoded(Is_Office(type) ? QStringLiteral("zip.") + type : Decoded),
          m_staging(10000, {Raw, m_decoded, Reserved, Memo})
    {
        if (m_staging.Was_Redrawn())
            m_decoded = Decoded;
    }
    ~Reading_Stages()
    {
        for (const QString &name : {Raw, m_decoded, Reserved})
            Resume_Next([&] { m_staging.Drop(name); });
    }
    Reading_Stages(const Reading_Stages &) = delete;
    Reading_Stages &operator=(const Reading_Stages &) = delete;

    [[nodiscard]] QString Content() const { return m_decoded; }
    [[nodiscard]] QString Path(const QString &name) const { return m_staging.Path(name); }

    /// Writes a column to the raw file.
    void Stage(const Field &column) const { Files::Write_Bytes(Path(Raw), column.Bytes(), Files::Durability::Scratch); }
    /// Decodes the raw file; a failure shows as a missing file.
    void Decode(const QString &target) const
    {
        m_staging.Drop(target);
        Run_Coder("d", Path(Raw), Path(target));
    }

private:
    QString m_decoded;
    Staging m_staging;
};

QString Starred(const QString &stars)
{
    return stars.contains(QChar(u'★')) ? stars : QString();
}

void Show_Plain(QTextDocument &pane, const QString &text)
{
    pane.setPlainText(text);
}

/// Whether a password is the one that a tail was made from.
bool Is_Password(const QString &typed, const QString &tail)
{
    return Decode(tail) == typed.trimmed();
}

/// A stream that unpacks to more than there is ends its step, not the program.
template <class Body>
void Within_Memory(Body &&body)
{
    constexpr qint32 Out_Of_Memory = 7;
    try {
        body();
    } catch (const std::bad_alloc &) {
        throw Run_Time_Error(Out_Of_Memory, Pack_Text("Mod_DataBase", "_No_Memory"));
    }
}

/// The steps of one reading: a step that fails does not keep the next one from running, and the last failure is told.
class Steps
{
public:
    /// @returns whether the step ran to its end
    template <class Body>
    bool Run(Body &&step)
    {
        if (Resume_Next([&] { Within_Memory(std::forward<Body>(step)); }))
            return true;
        m_trouble = Err();
        Clear_Pending();
        return false;
    }
    /// @throws the last failure
    void Tell() const
    {
        if (m_trouble.number != 0)
            throw Run_Time_Error(m_trouble.number, m_trouble.description, m_trouble.failure);
    }

private:
    Pending_Error m_trouble;
};

enum class Password { None, Right, Wrong };

/// Asks for the password that a staged stream carries, and cuts its tail when the right one was typed.
Password Check_Password(const Reading_Stages &stages, Document_Form &form)
{
    const QString tail = Read_Pass_Tail(stages.Path(Raw));
    if (tail.isEmpty()) {
        // A tail that does not show keeps nobody out, but the next save is to write it again.
        form.password = Decode(Read_Hidden_Tail(stages.Path(Raw)));
        form.lock_is_open = !form.password.isEmpty();
        return Password::None;
    }
    const QString question = form.title + QLatin1Char('\n') + Pack_Text("Mod_DataBase", "_AskPass");
    const QString typed = Prompts::Input(question, App().Box_Title, {}, true);
    if (!Is_Password(typed, tail)) {
        Prompts::Message(Pack_Text("Mod_DataBase", "_WrongPass"), App().Box_Title, Prompts::Icon::Exclamation);
        return Password::Wrong;
    }
    form.password = typed;
    Cut_File_Tail(stages.Path(Raw), tail.size() + Tail_Overhead);
    return Password::Right;
}

/// Shows the decoded content by its type. @returns the working type afterwards.
QString Show_Content(const Reading_Stages &stages, const QString &type, Recordset &row, QTextDocument &pane)
{
    const QString file = stages.Path(stages.Content());
    const QString text = row[QStringLiteral("Code_Content")].Text();
    if (type == QLatin1String("TXT")) {
        Rich_Text::Load_File(file, Rich_Text::Format::Plain, pane);
        return QStringLiteral("RTF");
    }
    if (type == QLatin1String("RTF")) {
        Rich_Text::Load_File(file, Rich_Text::Format::Rtf, pane);
        return type;
    }
    if (type == QLatin1String("HTM")) {
        if (Exists(file))
            Rich_Text::Load_File(file, Rich_Text::Format::Plain, pane);
        if (row[QStringLiteral("Code_File")].Is_Null())
            Show_Plain(pane, text);
        return QStringLiteral("RTF");
    }
    Show_Plain(pane, text);
    return type;
}

/// Decodes the raw file. @throws Run_Time_Error 75 when it says that it needs much memory and the user declines
void Decode(const Reading_Stages &stages, const QString &target, const QString &title)
{
    constexpr qint64 Usual = Q_INT64_C(256) << 20;
    const qint64 size = Decoded_Size(stages.Path(Raw));
    const auto wanted = [&] {
        const QString question = Pack_Text("Mod_DataBase", "_Large_Stream").arg(title, QString::number(size >> 20));
        return Prompts::Ask(question, App().Box_Title, Prompts::Choice::Yes_No, Prompts::Answer::No) ==
               Prompts::Answer::Yes;
    };
    if (size > Usual && !wanted())
        throw Run_Time_Error(Error_Number::Path_Access, Pack_Text("Mod_DataBase", "_Stream_Left"));
    stages.Decode(target);
}

/// @returns false after a wrong password.
bool Read_Stream(Recordset &row, const QString &type, const Reading_Stages &stages, Document_Form &form)
{
    stages.Stage(row[QStringLiteral("Code_Content_IO")]);
    if (Check_Password(stages, form) == Password::Wrong)
        return false;
    Decode(stages, stages.Content(), form.title);
    form.type = Show_Content(stages, type, row, *form.content);
    return true;
}

/// A stream that cannot be read leaves the text beside it, so that something of the document is there.
/// @returns false after a wrong password.
bool Read_Content(Recordset &row, const QString &type, const Reading_Stages &stages, Document_Form &form, Steps &steps)
{
    form.content->clear();
    form.type = type;
    form.stored_type = type;
    const QString text = row[QStringLiteral("Code_Content")].Text();
    form.page = type == QLatin1String("HTM") ? text : QString();
    bool opened = true;
    const bool whole = !row[QStringLiteral("Code_Content_IO")].Is_Null() &&
                       steps.Run([&] { opened = Read_Stream(row, type, stages, form); });
    if (!whole)
        Show_Plain(*form.content, text);
    return opened;
}

void Read_Pane(Recordset &row, const char *textColumn, const char *streamColumn, const Reading_Stages &stages,
               const QString &target, QTextDocument &pane)
{
    pane.clear();
    const Field stream = row[QLatin1String(streamColumn)];
    if (stream.Is_Null()) {
        Show_Plain(pane, row[QLatin1String(textColumn)].Text());
        return;
    }
    stages.Stage(stream);
    Decode(stages, target, row[QStringLiteral("Code_Title")].Text());
    Rich_Text::Load_File(stages.Path(target), Rich_Text::Format::Rtf, pane);
}

QString Date_Field(const Field &field)
{
    const QDateTime date = field.Is_Null() ? Machine::Now() : field.Value().toDateTime();
    return Database_Engine::Short_Date(date.date().startOfDay());
}

QString Field_Text(const Document_Field &field, const Field &column)
{
    switch (field.kind) {
    case Field_Kind::Folder:
        return column.Text().trimmed();
    case Field_Kind::Stars:
        return Starred(column.Text());
    case Field_Kind::Created:
    case Field_Kind::Updated:
        return Date_Field(column);
    default:
        return column.Text();
    }
}

bool Is_Of_Head(Field_Kind kind)
{
    return kind == Field_Kind::Title || kind == Field_Kind::Folder || kind == Field_Kind::Stars;
}

/// @param head  what is needed to show and ask for the document at all; else all the others
void Read_Fields(Recordset &row, Document_Form &form, bool head)
{
    for (const Document_Field &field : Document_Fields()) {
        if (*field.column != '\0' && Is_Of_Head(field.kind) == head)
            form.*field.text = Field_Text(field, row[QLatin1String(field.column)]);
    }
}

void Read_Head(Recordset &row, Document_Form &form)
{
    Read_Fields(row, form, true);
    form.code_id = row[QStringLiteral("Code_ID")].Text();
    form.password.clear();
    form.lock_is_open = form.keeps_content = false;
    form.stored_state = Stored_State(row);
    form.stored_when = row[QStringLiteral("Code_Update")].Text();
}

/// Raises the read counter, stamps the reading and ends the state of a new document.
void Count_Reading(const QString &code_id, qint64 readings)
{
    Run_Statement(Sql_Text(Sql::Count_Reading, readings, Store_Time(), code_id), App().Conn_Str);
}

QString Failure_Text()
{
    if (Err().number == Row_Gone || Err().number == Error_Number::Path_Access)
        return QStringLiteral("Error: ") + Error_Text(Err());
    if (Err().number == Error_Number::File_Not_Found)
        return Pack_Text("Mod_DataBase", "_UnzipError");
    return Pack_Text("Mod_DataBase", "_OpenError") + Error_Text(Err()) + QString::number(Err().number);
}

bool Read_Document(const QString &code_id, Document_Form &form)
{
    // What a document's form shows beside its text comes with it.
    Database_Server::Ask_Ahead(App().Conn_Str,
                               {Sql_Text(Sql::Read_Document, code_id), Sql_Text(Sql::Count_Of_Attachments, code_id),
                                Sql_Text(Sql::Groups_By_Name)});
    Recordset row;
    row.CursorLocation = Cursor_Location::Client;
    row.CursorType = Cursor_Type::Keyset;
    row.Open(Sql_Text(Sql::Read_Document, code_id), App().Conn_Str);
    Read_Head(row, form);
    const QString stored = row[QStringLiteral("Code_Type")].Text().toUpper();
    const QString type = stored.isEmpty() ? QStringLiteral("RTF") : stored;
    const Reading_Stages stages(type);
    Steps steps;
    if (!Read_Content(row, type, stages, form, steps)) {
        form.code_id.clear();
        return false;
    }
    steps.Run([&] { Read_Pane(row, "Code_Memo", "Code_Memo_IO", stages, Memo, *form.memo); });
    steps.Run([&] { Read_Pane(row, "Code_Sum", "Code_Sum_IO", stages, Sum, *form.sum); });
    steps.Run([&] { Read_Fields(row, form, false); });
    const Field readings = row[QStringLiteral("Code_Readnum")];
    const qint64 number = readings.Is_Null() ? 1 : readings.Number() + 1;
    row.Close();
    // A reading that cannot be counted, as in a read-only file, is no reason not to show the document.
    if (!Resume_Next([&] { Count_Reading(code_id, number); }))
        Error_Log(QStringLiteral("Mod_DataBase\\GetCodeContent_Ex---Modify"));
    steps.Tell();
    return true;
}

struct Loss_Name {
    Rich_Text::Loss loss;
    const char *key;
};
constexpr Loss_Name Loss_Names[] = {
    {Rich_Text::Header_Pictures, "_Header_Pictures"},
    {Rich_Text::Section_Pages, "_Section_Pages"},
    {Rich_Text::Drawings, "_Drawings"},
    {Rich_Text::Objects, "_Objects"},
    {Rich_Text::Other_Fields, "_Other_Fields"},
};
} // namespace

QString Not_Kept(const QTextDocument &content)
{
    QStringList names;
    for (const Loss_Name &row : Loss_Names) {
        if (Rich_Text::Losses(content) & row.loss)
            names << Pack_Text("Frm_Doc_Standard", row.key);
    }
    return names.isEmpty() ? QString() : Pack_Text("Frm_Doc_Standard", "_Not_Kept").arg(Pack_List(names));
}

bool GetCodeContent_Ex(const QString &code_id, Document_Form &form)
{
    return Trap(
        QStringLiteral("Mod_DataBase\\GetCodeContent_Ex"),
        [&] {
            const Busy_Pointer busy;
            return Read_Document(code_id, form);
        },
        [] { Prompts::Message(Failure_Text(), App().Box_Title, Prompts::Icon::Exclamation); });
}
