// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/document_export.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "exchange/document_export_sql.h"
#include "exchange/help_file.h"
#include "exchange/markdown.h"
#include "exchange/outgoing_page.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"
#include "platform/office/office_engine.h"
#include "platform/richtext/rich_text.h"

#include <QBuffer>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentWriter>
#include <QTextTable>

namespace
{
QString Text(const char *key)
{
    return Pack_Text("Export_Document", key);
}

QString Suffix_Of(const QString &target)
{
    return QFileInfo(target).suffix().toLower();
}

void Give(const QString &target, const QByteArray &bytes)
{
    Files::Write_Bytes(target, bytes, Files::Durability::Given);
}

bool Has_Attachments(const Outgoing_Document &document)
{
    Recordset count;
    count.Open(Sql_Text(Sql::Count_Of_Internal_Files, document.code_id), App().Conn_Str);
    return !document.code_id.isEmpty() && count[0].Number() > 0;
}

QList<QStringList> Attachment_Rows(const QString &code_id)
{
    QList<QStringList> rows{{Text("_Number"), Text("_File_Name"), Text("_File_Size"), Text("_File_Date")}};
    Recordset file;
    for (file.Open(Sql_Text(Sql::Internal_Files, code_id), App().Conn_Str); !file.Eof(); file.MoveNext())
        rows.append({QString::number(rows.size()), file[QStringLiteral("file_name")].Text(),
                     file[QStringLiteral("file_size")].Text(), file[QStringLiteral("file_date")].Text()});
    return rows;
}

/// Puts the table of the stored files behind the text.
void Append_Attachments(Outgoing_Document &document)
{
    const QList<QStringList> rows = Attachment_Rows(document.code_id);
    QTextCursor cursor(&document.Text());
    cursor.movePosition(QTextCursor::End);
    cursor.insertBlock({}, {});
    QTextTableFormat format;
    format.setBorder(1);
    format.setBorderCollapse(true);
    format.setCellPadding(4);
    format.setHeaderRowCount(1);
    QTextTable *table = cursor.insertTable(static_cast<int>(rows.size()), static_cast<int>(rows[0].size()), format);
    for (int row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < rows[row].size(); ++column)
            table->cellAt(row, column).firstCursorPosition().insertText(rows[row][column]);
    }
}

QByteArray Page_File(Outgoing_Document &document, bool inOne)
{
    if (!inOne)
        return Page_Of(document.Text(), document.title, Data_Address).html;
    const auto address = [](const Mime::Picture &picture) {
        return Mime::Address(picture.name);
    };
    return Mime::Write_Page(Page_Of(document.Text(), document.title, address), Machine::Now());
}

QByteArray As_Open_Document(const QTextDocument &text)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return QTextDocumentWriter(&buffer, "odf").write(&text) ? bytes : QByteArray();
}

/// What can be had without the engine.
Export_Outcome Write_Without_Engine(const QString &target, const Outgoing_Document &document)
{
    const QString suffix = Suffix_Of(target);
    if (suffix == QLatin1String("docx"))
        Refuse_Export(Text("_No_Engine"));
    const bool isOpen = suffix == QLatin1String("odt");
    Give(target, isOpen ? As_Open_Document(document.Text()) : Rich_Text::Write_Rtf(document.Text()));
    return {false, isOpen ? QString() : Text("_Rtf_Instead")};
}

QString Words_Only(bool isWhole)
{
    return isWhole ? QString() : Text("_Words_Only");
}

/// The name of the target, as the engine and the help compiler can have it.
QString Base_Name(const QString &target)
{
    return Files::Name_For(QFileInfo(target).completeBaseName(), QStringLiteral("document"));
}

bool Is_Page(const QString &target)
{
    return Suffix_Of(target).startsWith(QLatin1String("htm")) || Suffix_Of(target).startsWith(QLatin1String("mht"));
}

/// The engine takes the document's own file, where it has one. @returns false where it has none, or there is no engine
bool Write_Own_File(const QString &target, const Outgoing_Document &document, const Export_Room &room, Work &work)
{
    const QString own = Stored_File_Of(document, room, File_Kind::Office_Text);
    const bool isIt = Suffix_Of(own) == Suffix_Of(target);
    if (own.isEmpty() || (!isIt && Office::Engine().isEmpty()))
        return false;
    const QString whole = isIt ? own : Convert(own, Suffix_Of(target), room, work);
    Files::Copy_File(whole, target, Files::Durability::Given);
    return true;
}

void Write_By_Engine(const QString &target, const Outgoing_Document &document, const Export_Room &room, Work &work)
{
    const QString source = room.Path(Base_Name(target) + QStringLiteral(".rtf"));
    Files::Write_Bytes(source, Rich_Text::Write_Rtf(document.Text()), Files::Durability::Staging);
    Files::Copy_File(Convert(source, Suffix_Of(target), room, work), target, Files::Durability::Given);
}

Export_Outcome Write_Text(Outgoing_Document &document, const Export_Order &order, Work & /*work*/)
{
    Rich_Text::Save_File(order.target, Rich_Text::Format::Plain, document.Text());
    return {};
}

Export_Outcome Write_Rich_Text(Outgoing_Document &document, const Export_Order &order, Work &work)
{
    const Export_Room room;
    const bool isWhole = Take_Whole_Text(document, room, work);
    Give(order.target, Rich_Text::Write_Rtf(document.Text()));
    return {false, Words_Only(isWhole)};
}

Export_Outcome Write_Markdown(Outgoing_Document &document, const Export_Order &order, Work &work)
{
    const Export_Room room;
    const bool isWhole = Take_Whole_Text(document, room, work);
    Give(order.target, Markdown_Of(document.Text()).toUtf8());
    return {false, Words_Only(isWhole)};
}

/// A document that is paper already goes as it is, one of an office program as that program prints it.
Export_Outcome Write_Pdf(Outgoing_Document &document, const Export_Order &order, Work &work)
{
    const Export_Room room;
    const QString own = document.type == QLatin1String("PDF") ? Files::Native_Path(document.file) : QString();
    const QString source = Stored_File_Of(document, room, File_Kind::Office);
    const bool isEngine = !source.isEmpty() && !Office::Engine().isEmpty();
    if (!own.isEmpty())
        Files::Copy_File(own, order.target, Files::Durability::Given);
    else if (isEngine)
        Files::Copy_File(Convert(source, QStringLiteral("pdf"), room, work), order.target, Files::Durability::Given);
    else
        order.print(document.Text(), order.target, document.title);
    return {false, Words_Only(source.isEmpty() || isEngine)};
}

Export_Outcome Write_By_Db_To_File(Outgoing_Document &document, const Export_Order &order, Work &work)
{
    return Db_to_file(order.target, document, work);
}

Export_Outcome Write_Help(Outgoing_Document &document, const Export_Order &order, Work &work)
{
    return Make_Chm(order.target, document, work);
}

/// A document of another program, in that program's own format.
Export_Outcome Write_Stored_File(Outgoing_Document &document, const Export_Order &order, Work & /*work*/)
{
    const Export_Room room;
    const QString stored = Stored_File_Of(document, room, File_Kind::Any);
    if (stored.isEmpty())
        Refuse_Export(Text("_Unreadable"));
    Files::Copy_File(stored, order.target, Files::Durability::Given);
    return {};
}

struct Format {
    const char *suffix;
    const char *source; ///< of its records in the error log
    Export_Outcome (*write)(Outgoing_Document &document, const Export_Order &order, Work &work);
};
constexpr Format Rich_Text_Format{"rtf", "Frm_Main\\SaveAs", Write_Rich_Text};
constexpr Format Formats[] = {
    {"txt", "Frm_Main\\SaveAs", Write_Text},
    Rich_Text_Format,
    {"htm", "Frm_Main\\Db_to_file", Write_By_Db_To_File},
    {"html", "Frm_Main\\Db_to_file", Write_By_Db_To_File},
    {"mht", "Frm_Main\\Db_to_file", Write_By_Db_To_File},
    {"mhtml", "Frm_Main\\Db_to_file", Write_By_Db_To_File},
    {"doc", "Frm_Main\\Db_to_file", Write_By_Db_To_File},
    {"docx", "Frm_Main\\Db_to_file", Write_By_Db_To_File},
    {"odt", "Frm_Main\\Db_to_file", Write_By_Db_To_File},
    {"chm", "Frm_Main\\Make_Chm", Write_Help},
    {"pdf", "Frm_Main\\SaveAs", Write_Pdf},
    {"md", "Frm_Main\\SaveAs", Write_Markdown},
    {"markdown", "Frm_Main\\SaveAs", Write_Markdown},
};

constexpr Format Stored_Format{"", "Frm_Main\\SaveAs", Write_Stored_File};

/// A name that tells no format is rich text.
const Format &Format_For(const QString &target, const QString &type)
{
    const QString suffix = Suffix_Of(target);
    const auto *found = std::find_if(std::begin(Formats), std::end(Formats),
                                     [&](const Format &row) { return suffix == QLatin1String(row.suffix); });
    if (found != std::end(Formats))
        return *found;
    return !suffix.isEmpty() && suffix == type.toLower() ? Stored_Format : Rich_Text_Format;
}
} // namespace

Export_Outcome Db_to_file(const QString &target, Outgoing_Document &document, Work &work)
{
    const Export_Room room;
    const bool isPage = Is_Page(target);
    const bool isListed = Has_Attachments(document);
    if (!isPage && !isListed && Write_Own_File(target, document, room, work))
        return {};
    const bool isWhole = Take_Whole_Text(document, room, work);
    if (isListed)
        Append_Attachments(document);
    if (isPage)
        Give(target, Page_File(document, Suffix_Of(target).startsWith(QLatin1Char('m'))));
    else if (Office::Engine().isEmpty())
        return Write_Without_Engine(target, document);
    else
        Write_By_Engine(target, document, room, work);
    return {false, Words_Only(isWhole)};
}

Export_Outcome Export_Document(Outgoing_Document &document, const Export_Order &order, Work &work)
{
    if (!work.Next(0, 0, document.title))
        return {true, {}};
    document.Take_To_This_Thread();
    const auto leave = qScopeGuard([&] { document.Leave_Thread(); });
    try {
        return Format_For(order.target, document.type).write(document, order, work);
    } catch (const Run_Time_Error &error) {
        if (error.failure != Failure::Stopped)
            throw;
        return {true, {}};
    }
}

QString Export_Source(const QString &target)
{
    return QLatin1String(Format_For(target, {}).source);
}
