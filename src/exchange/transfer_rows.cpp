// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/transfer_rows.h"

#include "core/error_log.h"
#include "exchange/transfer_sql.h"
#include "platform/database/recordset.h"

namespace
{
constexpr const char *Document_Columns[] = {
    "Code_ID",          "Cate_ID",         "Code_Title",        "Code_Explain",      "Code_Update",
    "Code_Create",      "Code_Date",       "Code_File",         "Code_Content",      "Code_Content_IO",
    "Code_Memo",        "Code_Memo_IO",    "Code_Sum",          "Code_Sum_IO",       "Code_ReadDate",
    "Code_ReadNum",     "Code_Tags",       "Code_ReadDate_Sta", "Code_ReadDateNext", "Code_ReadDate_gene_Id",
    "Code_Promulgator", "Code_Provenance", "Code_Author",       "Code_Keys",         "Code_Color",
    "Code_Done",        "Code_Type"};
constexpr const char *File_Columns[] = {"code_id",   "file_name", "file_cont", "file_txt", "file_infor",
                                        "file_size", "file_date", "file_path", "file_type"};
/// A copied bookmark has no date.
constexpr const char *Bookmark_Columns[] = {"tag_id",     "code_id",  "order_id", "tag_name", "code_title",
                                            "tag_lineno", "tag_var1", "tag_var2", "tag_var3"};
constexpr const char *Tag_Columns[] = {"tags_Id", "tags_Name", "tags_Count"};
constexpr const char *Group_Columns[] = {"Gene_Id", "Gene_Name", "Gene_Per", "Gene_Default", "Gene_Num"};
constexpr const char *Folder_Columns[] = {"Cate_ID",   "Cate_Name", "Cate_Memo", "AutoColor_ID", "Code_Num",
                                          "Icon_Name", "Order_Id",  "Cate_Exp",  "Cate_pass"};
constexpr const char *Membership_Columns[] = {"VirCate_id", "Cate_ID", "Code_id"};
constexpr const char *Profile_Columns[] = {"User_Name",  "User_Title", "User_Name1", "User_Name2", "User_Addr",
                                           "User_Tel",   "User_Fax",   "User_Email", "User_Memo1", "User_Memo2",
                                           "User_Memo3", "User_Memo4", "User_Memo5", "User_Memo6", "User_Memo7",
                                           "User_Memo8", "User_Memo9", "User_Memo10"};
constexpr const char *Credential_Columns[] = {"User_Name", "User_Pass", "User_Lock", "User_Start", "User_End"};
constexpr const char *Fact_Columns[] = {"Mess_ID", "Mess_Name1", "Mess_Name2"};

constexpr Transfer_Rows::Table Closing_Tables[] = {
    {Sql::All_Profiles, Profile_Columns},
    {Sql::All_Credentials, Credential_Columns},
    {Sql::All_Facts, Fact_Columns},
};

enum class Values { All, Accepted_Anywhere };

bool Try_Copy(Recordset &from, Recordset &to, const Transfer_Rows::Table &table, const Transfer_Rows::Own_Values &own,
              Values values)
{
    return Resume_Next([&] {
        to.AddNew();
        for (const char *column : table.columns) {
            const QString name = QLatin1String(column);
            Resume_Next([&] {
                const QVariant value = own.contains(name) ? own.value(name) : from[name].Value();
                if (values == Values::All || (!value.isNull() && name != QLatin1String(table.number)))
                    to[name].Set(value);
            });
        }
        to.Update();
    });
}
} // namespace

namespace Transfer_Rows
{
const Table Document{Sql::Transferred_Document, Document_Columns};
const Table Files{Sql::Transferred_Files, File_Columns};
const Table Bookmarks{Sql::Transferred_Bookmarks, Bookmark_Columns, "tag_id"};
const Table Tags{Sql::All_Tags, Tag_Columns};
const Table Groups{Sql::All_Groups, Group_Columns};
const Table Folders{Sql::Transferred_Folder, Folder_Columns};
const Table Memberships{Sql::Transferred_Memberships, Membership_Columns, "VirCate_id"};
const std::span<const Table> Closing = Closing_Tables;

void Open_For_Adding(Recordset &rows, const QString &statement, const QString &connection)
{
    rows.CursorType = Cursor_Type::Keyset;
    rows.LockType = Lock_Type::Optimistic;
    rows.Open(statement, connection);
}

bool Copy_Row(Recordset &from, Recordset &to, const Table &table, const Own_Values &own)
{
    for (const Values values : {Values::All, Values::Accepted_Anywhere}) {
        if (Try_Copy(from, to, table, own, values))
            return true;
        to.CancelUpdate();
    }
    return false;
}
} // namespace Transfer_Rows
