// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list_engine.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/prompts/prompts.h"
#include "users/scrambling.h"
#include "views/list_columns.h"
#include "views/list_engine_sql.h"

#include <optional>

namespace
{
const QString No_Stars = QStringLiteral("☆☆☆☆☆");

/// What one filling asks for.
struct Request {
    QString cateId;
    bool allFolders;
    QString dateText;
};

bool File_Dialect()
{
    return Config().Op_DB_Sql == QLatin1String("0");
}

QString Order_Text()
{
    for (const Sql::Order_Row &row : Sql::Orders) {
        if (Config().Cob_OrderBy == QString::fromUtf16(row.code))
            return QString::fromUtf16(row.text);
    }
    return {};
}

/// One of three texts by the date: a full date in the file's dialect, in the server's, or the beginning of a date.
QString Date_Text(const QString &date, const char16_t *whole, const char16_t *wholeServer, const char16_t *prefix)
{
    if (!Database_Engine::Date_From_Text(date).isValid())
        return Sql_Text(prefix, date);
    return Sql_Text(File_Dialect() ? whole : wholeServer, date);
}

qint64 Count_Rows(const Request &request)
{
    QString statement;
    if (!request.dateText.isEmpty())
        statement =
            Date_Text(request.dateText, Sql::Count_Of_Date, Sql::Count_Of_Date_Server, Sql::Count_Of_Date_Prefix);
    else
        statement = Sql_Text(Is_Shown(Config().ShowLow) ? Sql::Count_Of_Subtree : Sql::Count_Of_Folder, request.cateId);
    Recordset count;
    count.Open(statement, App().Conn_Str);
    return count[0].Number();
}

QString Date_Filter(const QString &date)
{
    if (date.isEmpty())
        return {};
    return Date_Text(date, Sql::Filter_Date, Sql::Filter_Date_Server, Sql::Filter_Date_Prefix);
}

/// The filter that a folder's password lets through: none for a right one, else only folders without a password.
/// No value when the list is to stay empty.
std::optional<QString> Password_Filter(const QString &cateId, QString &password)
{
    Recordset folder;
    folder.Open(Sql_Text(Sql::Folder_Password, cateId), App().Conn_Str);
    const QString stored = folder.Eof() ? QString() : folder[QStringLiteral("Cate_pass")].Text();
    if (stored.trimmed().isEmpty())
        return Sql_Text(Sql::Filter_No_Password);
    const QString wanted = Unscramble_Text(stored);
    if (wanted == password)
        return QString();
    const QString typed =
        Prompts::Input(Pack_Text("Frm_Main", "_Screct_Word"), Pack_Text("Frm_Main", "_Screct_Title"), {}, true);
    if (typed.isEmpty())
        return std::nullopt;
    if (typed != wanted) {
        Prompts::Message(Pack_Text("Frm_Main", "_Screct_Err"), Pack_Text("Frm_Main", "_Screct_Title"),
                         Prompts::Icon::Exclamation);
        return std::nullopt;
    }
    password = typed;
    return QString();
}

QString All_Folders_Statement(const Request &request, const QString &rows, const QString &order)
{
    if (request.dateText.isEmpty())
        return Sql_Text(Sql::Rows_Of_All, rows, order);
    const bool whole = Database_Engine::Date_From_Text(request.dateText).isValid() && File_Dialect();
    return Sql_Text(whole ? Sql::Rows_Of_Date : Sql::Rows_Of_Date_Prefix, rows, Date_Filter(request.dateText), order);
}

QString Folder_Statement(const Request &request, const QString &rows, const QString &filter, const QString &order)
{
    const char16_t *statement = nullptr;
    if (Is_Shown(Config().ShowLow))
        statement = File_Dialect() ? Sql::Rows_Of_Subtree : Sql::Rows_Of_Subtree_Server;
    else
        statement = File_Dialect() ? Sql::Rows_Of_Folder : Sql::Rows_Of_Folder_Server;
    return Sql_Text(statement, rows, request.cateId, filter, order);
}

/// The row statement; no value when the folder's password was not given.
std::optional<QString> Row_Statement(const Request &request, qint64 rows, QString &password)
{
    const QString top = QString::number(rows);
    const QString order = Order_Text();
    if (request.allFolders)
        return All_Folders_Statement(request, top, order);
    if (request.cateId.isEmpty())
        return Sql_Text(Sql::Rows_Of_Root, top, order);
    const std::optional<QString> pass = Password_Filter(request.cateId, password);
    if (!pass)
        return std::nullopt;
    return Folder_Statement(request, top, *pass + Date_Filter(request.dateText), order);
}

QString Stars(const QString &stored)
{
    return stored.contains(QChar(u'★')) ? stored : No_Stars;
}

QString Folder_Name(const QString &cateId)
{
    Recordset name;
    name.Open(Sql_Text(Sql::Folder_Name, cateId), App().Conn_Str);
    return name.Eof() ? QStringLiteral("--") : name[0].Text();
}

QString Attachment_Count(const QString &codeId)
{
    Recordset count;
    count.Open(Sql_Text(Sql::Attachment_Count, codeId), App().Conn_Str);
    const qint64 number = count[0].Number();
    return number == 0 ? QString() : QString::number(number);
}

QString Cell_Text(const Document_Column &column, Recordset &rows, const List_Row &row)
{
    const auto is = [&](const char *key) {
        return qstrcmp(column.key, key) == 0;
    };
    if (is("Lsv_Code_Info_CateName"))
        return Folder_Name(row.tag2);
    if (is("Lsv_Code_Info_AddinNum"))
        return Attachment_Count(row.tag);
    const QString text = rows[QLatin1String(column.field)].Text();
    return is("Lsv_Code_Info_Star") || is("Lsv_Code_Info_Done") ? Stars(text) : text;
}

QColor Stored_Color(const QString &number)
{
    // As the file keeps colours: 0xBBGGRR.
    const int bgr = number.toInt();
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

/// "sub-item colour|item colour|bold"; fewer than three parts mean the default style.
void Apply_Line_Color(List_Row &row)
{
    const QStringList parts = row.tag3.split(QLatin1Char('|'));
    if (parts.size() < 3)
        return;
    row.sub_color = Stored_Color(parts[0]);
    row.item_color = Stored_Color(parts[1]);
    row.bold = parts[2].compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || parts[2].toInt() != 0;
}

List_Row Row_Of(Recordset &rows, int number)
{
    List_Row row;
    row.tag = rows[QStringLiteral("Code_ID")].Text();
    row.tag2 = rows[QStringLiteral("Cate_ID")].Text();
    row.tag3 = rows[QStringLiteral("Code_LineColor")].Text();
    row.texts.append(QString::number(number));
    for (const Document_Column &column : Document_Columns().subspan(1))
        row.texts.append(Cell_Text(column, rows, row));
    if (Config().CH_Lsv_ToolTips == QLatin1String("1"))
        row.tool_tip = rows[QStringLiteral("Code_Explain")].Text();
    Apply_Line_Color(row);
    return row;
}

Page_Info Fill_Page(const Request &request, List_Model &list, int page, QString &password)
{
    Page_Info info;
    const qint64 total = Count_Rows(request);
    const qint64 perPage = Config().MAX_RECORD;
    info.paging = total / perPage >= 1;
    info.labels = {total, (total + perPage - 1) / perPage, perPage, 0};

    const qint64 rowsToRead = page * perPage;
    const std::optional<QString> statement = Row_Statement(request, rowsToRead, password);
    if (!statement)
        return info;
    Recordset rows;
    rows.CursorLocation = Cursor_Location::Client;
    rows.CursorType = Cursor_Type::Static;
    rows.Open(*statement, App().Conn_Str);
    const qint64 skipped = rowsToRead - perPage;
    if (!rows.Eof())
        rows.Move(skipped);
    info.labels[Page_Info::Shown] =
        Fill_List_Rows(rows, list, static_cast<int>(perPage), static_cast<int>(skipped) + 1);
    return info;
}
} // namespace

Page_Info ShowCodeInfoToList_Ex(const QString &cateId, List_Model &list, bool allFolders, int page,
                                const QString &dateText, QString &password)
{
    list.Clear();
    return Trap(QStringLiteral("Mod_DataBase\\ShowCodeInfoToList_Ex"), [&] {
        return Fill_Page({cateId, allFolders, dateText}, list, page, password);
    });
}

Page_Info ShowCodeInfoToList_Ex_Key(const QString &where, List_Model &list, const QString & /*searchKey*/, int /*page*/,
                                    int limit)
{
    list.Clear();
    return Trap(QStringLiteral("Mod_DataBase\\ShowCodeInfoToList_Ex_Key"), [&] {
        Page_Info info;
        Recordset rows;
        rows.CursorLocation = Cursor_Location::Client;
        rows.CursorType = Cursor_Type::Static;
        rows.Open(Sql_Text(Sql::Rows_By_Condition, where), App().Conn_Str);
        if (rows.Eof())
            return info;
        info.labels = {rows.RecordCount(), 1, limit, limit};
        Fill_List_Rows(rows, list, limit);
        return info;
    });
}

int Fill_List_Rows(Recordset &rows, List_Model &list, int maxRows, int firstNumber)
{
    std::vector<List_Row> filled;
    for (; !rows.Eof() && static_cast<int>(filled.size()) < maxRows; rows.MoveNext())
        filled.push_back(Row_Of(rows, firstNumber + static_cast<int>(filled.size())));
    const int added = static_cast<int>(filled.size());
    list.Replace(std::move(filled));
    return added;
}

void Refresh_List_Row(List_Model &list, const QString &code_id)
{
    const int at = list.Find(code_id);
    if (at < 0)
        return;
    Trap(QStringLiteral("Mod_DataBase\\Refresh_List_Row"), [&] {
        Recordset row;
        row.Open(Sql_Text(Sql::One_Row, code_id), App().Conn_Str);
        if (!row.Eof())
            list.Set_Row(at, Row_Of(row, list.Row(at).texts.value(0).toInt()));
    });
}
