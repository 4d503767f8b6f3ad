// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list_engine.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/server.h"
#include "platform/prompts/prompts.h"
#include "users/scrambling.h"
#include "views/list_engine_sql.h"

#include <QHash>
#include <algorithm>
#include <limits>
#include <optional>

namespace
{
/// What one filling asks for.
struct Request {
    QString cateId;
    bool allFolders;
    QString dateText;
    bool mayAsk;
};

bool File_Dialect()
{
    return Config().Op_DB_Sql == QLatin1String("0");
}

Sql_Part Order_Text()
{
    for (const Sql::Order_Row &row : Sql::Orders) {
        if (Config().Cob_OrderBy == QString::fromUtf16(row.code))
            return Sql_Part_Of(row.text);
    }
    return {};
}

/// One of three texts by the date: a full date in the file's dialect, in the server's, or the beginning of a date.
Sql_Part Date_Text(const QString &date, const char16_t *whole, const char16_t *wholeServer, const char16_t *prefix)
{
    if (!Database_Engine::Date_From_Text(date).isValid())
        return Sql_Part_Of(prefix, date);
    return Sql_Part_Of(File_Dialect() ? whole : wholeServer, date);
}

QString Count_Statement(const Request &request)
{
    if (!request.dateText.isEmpty())
        return Date_Text(request.dateText, Sql::Count_Of_Date, Sql::Count_Of_Date_Server, Sql::Count_Of_Date_Prefix)
            .Text();
    return Sql_Text(Is_On(&Settings_Record::ShowLow) ? Sql::Count_Of_Subtree : Sql::Count_Of_Folder, request.cateId);
}

qint64 Count_Rows(const Request &request)
{
    const QString statement = Count_Statement(request);
    if (!request.cateId.isEmpty())
        Database_Server::Ask_Ahead(App().Conn_Str, {statement, Sql_Text(Sql::Folder_Password, request.cateId)});
    Recordset count;
    count.Open(statement, App().Conn_Str);
    return count[0].Number();
}

Sql_Part Date_Filter(const QString &date)
{
    if (date.isEmpty())
        return {};
    return Date_Text(date, Sql::Filter_Date, Sql::Filter_Date_Server, Sql::Filter_Date_Prefix);
}

/// The filter that a folder's password lets through: none for a right one, else only folders without a password.
/// No value when the list is to stay empty.
std::optional<Sql_Part> Password_Filter(const QString &cateId, QString &password, bool mayAsk)
{
    Recordset folder;
    folder.Open(Sql_Text(Sql::Folder_Password, cateId), App().Conn_Str);
    const QString stored = folder.Eof() ? QString() : folder[QStringLiteral("Cate_pass")].Text();
    if (stored.trimmed().isEmpty())
        return Sql_Part_Of(Sql::Filter_No_Password);
    const QString wanted = Unscramble_Text(stored);
    if (wanted == password)
        return Sql_Part();
    if (!mayAsk)
        return std::nullopt;
    const QString typed =
        Prompts::Input(Pack_Text("Frm_Main", "_Screct_Word"), Pack_Text("Frm_Main", "_Screct_Title"), {}, true);
    if (typed.isEmpty())
        return std::nullopt;
    if (typed.trimmed() != wanted.trimmed()) {
        Prompts::Message(Pack_Text("Frm_Main", "_Screct_Err"), Pack_Text("Frm_Main", "_Screct_Title"),
                         Prompts::Icon::Exclamation);
        return std::nullopt;
    }
    password = wanted;
    return Sql_Part();
}

QString All_Folders_Statement(const Request &request, qint64 rows, const Sql_Part &order)
{
    if (request.dateText.isEmpty())
        return Sql_Text(Sql::Rows_Of_All, rows, order);
    const bool whole = Database_Engine::Date_From_Text(request.dateText).isValid() && File_Dialect();
    return Sql_Text(whole ? Sql::Rows_Of_Date : Sql::Rows_Of_Date_Prefix, rows, Date_Filter(request.dateText), order);
}

QString Folder_Statement(const Request &request, qint64 rows, const Sql_Part &filter, const Sql_Part &order)
{
    const char16_t *statement = nullptr;
    if (Is_On(&Settings_Record::ShowLow))
        statement = File_Dialect() ? Sql::Rows_Of_Subtree : Sql::Rows_Of_Subtree_Server;
    else
        statement = File_Dialect() ? Sql::Rows_Of_Folder : Sql::Rows_Of_Folder_Server;
    return Sql_Text(statement, rows, request.cateId, filter, order);
}

/// The row statement; no value when the folder's password was not given.
std::optional<QString> Row_Statement(const Request &request, qint64 rows, QString &password)
{
    const Sql_Part order = Order_Text();
    if (request.allFolders)
        return All_Folders_Statement(request, rows, order);
    if (request.cateId.isEmpty())
        return Sql_Text(Sql::Rows_Of_Root, rows, order);
    const std::optional<Sql_Part> pass = Password_Filter(request.cateId, password, request.mayAsk);
    if (!pass)
        return std::nullopt;
    return Folder_Statement(request, rows, *pass + Date_Filter(request.dateText), order);
}

/// One document's row as it is now, with the number that it has in the list.
std::optional<List_Row> One_Row(const QString &codeId, const QString &number)
{
    Recordset row;
    row.Open(Sql_Text(Sql::One_Row, codeId), App().Conn_Str);
    std::vector<List_Row> read = Read_List_Rows(row, 1, {}, List_Setting::Now());
    if (read.empty())
        return std::nullopt;
    read.front().texts[0] = number;
    return std::move(read.front());
}

/// The list is counted as it is listed where its own count ends before its rows do.
qint64 Last_Page(const Request &request, const Page_Info &info, qint64 page, QString &password)
{
    const qint64 counted = info.labels[Page_Info::Pages];
    const qint64 perPage = info.labels[Page_Info::Per_Page];
    const qint64 shown = info.labels[Page_Info::Shown];
    if (page < counted || (shown > 0 && shown < perPage))
        return std::max(counted, page);
    Recordset rows;
    rows.CursorLocation = Cursor_Location::Client;
    rows.CursorType = Cursor_Type::Static;
    rows.Open(Row_Statement(request, std::numeric_limits<int>::max(), password).value(), App().Conn_Str);
    return std::max({qint64(1), counted, (rows.Count_And_End() + perPage - 1) / perPage});
}

/// The documents of a list as they are now, by the ids that the list has; those that are gone are missing.
QHash<QString, List_Row> Rows_Now(const List_Model &list)
{
    QStringList ids;
    for (int i = 0; i < list.Row_Count(); ++i) {
        if (list.Row(i).place < 0)
            ids << list.Row(i).tag;
    }
    QHash<QString, List_Row> rows;
    for (const Sql_Part &group : Id_Groups(ids)) {
        Recordset found;
        found.Open(Sql_Text(Sql::Some_Rows, group), App().Conn_Str);
        for (List_Row &row : Read_List_Rows(found, std::numeric_limits<int>::max(), {}, List_Setting::Now()))
            rows.insert(row.tag, row);
    }
    return rows;
}

Page_Info Fill_Page(const Request &request, List_Model &list, int page, QString &password)
{
    Page_Info info;
    const qint64 total = Count_Rows(request);
    const qint64 perPage = std::max<qint64>(1, Config().MAX_RECORD);
    info.labels = {total, (total + perPage - 1) / perPage, perPage, 0};
    info.paging = total / perPage >= 1;

    const qint64 rowsToRead = page * perPage;
    const std::optional<QString> statement = Row_Statement(request, rowsToRead, password);
    if (!statement) {
        info.state = Page_Info::State::Locked;
        return info;
    }
    Recordset rows;
    rows.CursorLocation = Cursor_Location::Client;
    rows.CursorType = Cursor_Type::Static;
    rows.SkipRows = rowsToRead - perPage;
    rows.Open(*statement, App().Conn_Str);
    info.labels[Page_Info::Shown] = Fill_List_Rows(rows, list, static_cast<int>(perPage));
    rows.Close();
    info.last_page = Last_Page(request, info, page, password);
    info.paging = info.paging || info.last_page > 1;
    return info;
}
template <class Body>
Page_Info Or_Failed(const QString &source, Body &&fill)
{
    Page_Info info;
    info.state = Page_Info::State::Failed;
    Trap(source, [&] { info = fill(); });
    return info;
}
} // namespace

void Announce_List_Orders()
{
    QStringList columns;
    for (const Sql::Order_Row &row : Sql::Orders)
        columns << QString::fromUtf16(row.text).trimmed().section(QLatin1Char(' '), 0, 0);
    columns.removeDuplicates();
    Database_Engine::Keep_In_Order(columns);
}

Page_Info ShowCodeInfoToList_Ex(const QString &cateId, List_Model &list, bool allFolders, int page,
                                const QString &dateText, QString &password, bool mayAsk)
{
    list.Clear();
    return Or_Failed(QStringLiteral("Mod_DataBase\\ShowCodeInfoToList_Ex"), [&] {
        return Fill_Page({cateId, allFolders, dateText, mayAsk}, list, page, password);
    });
}

Condition_Rows Rows_By_Condition(const QString &where, const QString &searchKey, int limit, const List_Setting &setting,
                                 const std::function<void(Condition_Rows)> &early)
{
    const auto listed = [&](Recordset &rows) {
        Condition_Rows found;
        found.rows = Read_List_Rows(rows, limit, searchKey, setting);
        const int documents = Document_Count(found.rows);
        if (documents > 0)
            found.info.labels = {documents, 1, limit, limit};
        return found;
    };
    Recordset rows;
    rows.CursorLocation = Cursor_Location::Client;
    rows.CursorType = Cursor_Type::Static;
    if (early)
        rows.Found_So_Far = [&](Recordset &soFar) {
            early(listed(soFar));
        };
    rows.Open(Sql_Text(Sql::Rows_By_Condition, Sql_Part(where)), setting.connection);
    Condition_Rows found = listed(rows);
    if (!found.rows.empty()) {
        const qint64 documents = found.info.labels[Page_Info::Total];
        found.info.labels[Page_Info::Total] = rows.Count_And_End();
        found.info.unlisted = found.info.labels[Page_Info::Total] - documents;
    }
    return found;
}

Page_Info ShowCodeInfoToList_Ex_Key(const QString &where, List_Model &list, const QString &searchKey, int /*page*/,
                                    int limit)
{
    list.Clear();
    return Or_Failed(QStringLiteral("Mod_DataBase\\ShowCodeInfoToList_Ex_Key"), [&] {
        Condition_Rows found = Rows_By_Condition(where, searchKey, limit, List_Setting::Now());
        list.Replace(std::move(found.rows));
        return found.info;
    });
}

int Fill_List_Rows(Recordset &rows, List_Model &list, int maxRows, const QString &searchKey)
{
    std::vector<List_Row> filled = Read_List_Rows(rows, maxRows, searchKey, List_Setting::Now());
    const int added = Document_Count(filled);
    list.Replace(std::move(filled));
    return added;
}

void Refresh_List_Row(List_Model &list, const QString &code_id)
{
    const int at = list.Find(code_id);
    if (at < 0)
        return;
    Trap(QStringLiteral("Mod_DataBase\\Refresh_List_Row"), [&] {
        const std::optional<List_Row> row = One_Row(code_id, list.Row(at).texts.value(0));
        if (row)
            list.Set_Row(at, *row);
    });
}

int Refresh_List(List_Model &list)
{
    return Trap(QStringLiteral("Mod_DataBase\\Refresh_List"), [&] {
        const QHash<QString, List_Row> now = Rows_Now(list);
        std::vector<List_Row> kept;
        int gone = 0;
        bool here = false;
        for (int i = 0; i < list.Row_Count(); ++i) {
            const List_Row &old = list.Row(i);
            if (old.place >= 0) {
                if (here)
                    kept.push_back(old);
                continue;
            }
            const auto row = now.find(old.tag);
            here = row != now.end();
            if (!here) {
                ++gone;
                continue;
            }
            kept.push_back(*row);
            kept.back().texts[0] = old.texts.value(0);
        }
        list.Extend(std::move(kept));
        return gone;
    });
}
