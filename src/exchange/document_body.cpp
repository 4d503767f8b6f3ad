// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/document_body.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "documents/coder.h"
#include "documents/staging.h"
#include "documents/stored_stream.h"
#include "editor/web_page.h"
#include "exchange/book_export_sql.h"
#include "exchange/outgoing_document.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/office/office_engine.h"
#include "platform/richtext/rich_text.h"

#include <QTextDocument>

namespace
{
const QString Stored = QStringLiteral("book.dd");
const QString Decoded = QStringLiteral("book.doc");
const QStringList Office_Types{QStringLiteral("DOC"), QStringLiteral("DOCX")};

[[noreturn]] void Refuse(const char *key)
{
    throw Run_Time_Error(Error_Number::Path_Access, Pack_Text("Frm_DataExport_Node_Exe", key));
}

/// The row of a document. @throws Run_Time_Error when there is none
void Open(Recordset &row, const QString &code_id)
{
    row.Open(Sql_Text(Sql::Document_For_Book, code_id), App().Conn_Str);
    if (row.Eof())
        Refuse("_No_Document");
}

/// The staging files of one body, which go with the object.
class Stage
{
public:
    Stage() = default;
    ~Stage()
    {
        for (const QString &name : {Stored, Decoded})
            Resume_Next([&] { m_files.Drop(name); });
    }
    Stage(const Stage &) = delete;
    Stage &operator=(const Stage &) = delete;

    /// @returns the path of what the stream holds
    QString Decode(const QByteArray &stream) const
    {
        Files::Write_Bytes(m_files.Path(Stored), stream, Files::Durability::Staging);
        if (!Read_Pass_Tail(m_files.Path(Stored)).isEmpty())
            Refuse("_ContentEn");
        if (!Run_Coder("d", m_files.Path(Stored), m_files.Path(Decoded)) || !Files::Is_File(m_files.Path(Decoded)))
            Refuse("_Unreadable");
        return m_files.Path(Decoded);
    }

private:
    Staging m_files{10'000, {Stored, Decoded}};
};

void Fill(const QString &code_id, QTextDocument &document, Work &work)
{
    Recordset row;
    Open(row, code_id);
    const Field type = row[QStringLiteral("Code_Type")];
    const QString kind = type.Is_Null() ? QStringLiteral("RTF") : type.Text().toUpper();
    const Field stream = row[QStringLiteral("Code_Content_IO")];
    const bool isRich = kind == QLatin1String("RTF"), isPage = kind == QLatin1String("HTM");
    Rich_Text::Set_Measures(document);
    const Stage stage;
    const QString file = stream.Is_Null() ? QString() : stage.Decode(stream.Bytes());
    if (!file.isEmpty() && (isRich || kind == QLatin1String("TXT")))
        return Rich_Text::Load_File(file, isRich ? Rich_Text::Format::Rtf : Rich_Text::Format::Plain, document);
    if (!file.isEmpty() && Office_Types.contains(kind) && !Office::Engine().isEmpty()) {
        const Export_Room room;
        const QString source = room.Path(QStringLiteral("stored.") + kind.toLower());
        Files::Copy_File(file, source, Files::Durability::Staging);
        return Rich_Text::Load_File(Convert(source, QStringLiteral("rtf"), room, work), Rich_Text::Format::Rtf,
                                    document);
    }
    const QString page = !file.isEmpty() && isPage ? Files::Decode_Text(Files::Read_Bytes(file)) : QString();
    if (page.contains(u'<')) // else it is the path of a page that lies elsewhere
        return Web_Page::Show(page, document);
    document.setPlainText(row[QStringLiteral("Code_Content")].Text());
}

} // namespace

void Document_Body::Load(const QString &code_id, QTextDocument &document, Work &work)
{
    Fill(code_id, document, work);
    if (document.toPlainText().trimmed().isEmpty()) // a picture has a sign in it
        Refuse("_ContentEn");
}

QString Document_Body::Listed_Text(const QString &code_id)
{
    Recordset row;
    Open(row, code_id);
    return row[QStringLiteral("Code_Content")].Text();
}
