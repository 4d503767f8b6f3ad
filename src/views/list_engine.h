// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/recordset.h"
#include "platform/models/list_model.h"
#include "views/list_rows.h"

#include <QString>
#include <array>
#include <functional>

/// The four labels below the list, Lab_Page_Infor 0 to 3.
struct Page_Info {
    enum Label { Total = 0, Pages = 1, Per_Page = 2, Shown = 3 };
    /// What an empty list means: nothing is there, it could not be read, or the folder's password was not given.
    enum class State { Listed, Failed, Locked };
    std::array<qint64, 4> labels{};
    State state = State::Listed;
    bool paging = false; ///< the page bar is enabled
    /// The last page that has rows. Label 1 may be less: the count knows no members from other folders, and of the root
    /// nothing where folders count for themselves.
    qint64 last_page = 1;
    qint64 unlisted = 0; ///< documents that were found and are behind the limit
};

/// Fills one page of the list from a folder or a date.
/// @param cateId      folder id, "" for the root
/// @param allFolders  the whole database, as the date view shows it
/// @param page        from 1
/// @param dateText    "", a full date, or the beginning of one
/// @param password    in: the password already accepted for this folder; out: the one accepted now
/// @param mayAsk      asks for the password where it is needed; else the list stays empty
/// Errors go under "Mod_DataBase\ShowCodeInfoToList_Ex" and leave the list empty.
Page_Info ShowCodeInfoToList_Ex(const QString &cateId, List_Model &list, bool allFolders, int page,
                                const QString &dateText, QString &password, bool mayAsk = true);

/// Tells the database engine by which columns lists are put in order; before a database is opened.
void Announce_List_Orders();

/// Lists by a ready-made WHERE text, with no paging. @param limit  rows that are shown at most
Page_Info ShowCodeInfoToList_Ex_Key(const QString &where, List_Model &list, const QString &searchKey, int page,
                                    int limit);

/// The rows of a condition and their count line. `labels[Total]` counts all, `rows` holds at most `limit` documents.
struct Condition_Rows {
    std::vector<List_Row> rows;
    Page_Info info;
};
/// What ShowCodeInfoToList_Ex_Key lists; may run in a thread of its own.
/// @param early  told the first rows found so far, again and again while it goes on; the numbers are those of the rows.
///               A long query only; what it returns is the whole.
/// @throws Run_Time_Error.
Condition_Rows Rows_By_Condition(const QString &where, const QString &searchKey, int limit, const List_Setting &setting,
                                 const std::function<void(Condition_Rows found)> &early = {});

/// Replaces the list's rows by those of a recordset, at most `maxRows` documents. With a search key, their places
/// stand below them, if the setting CH_Lsv_Detail wants it. @returns documents added
int Fill_List_Rows(Recordset &rows, List_Model &list, int maxRows, const QString &searchKey = {});

/// Reads every document's row anew and drops those whose documents are gone. @returns how many those are
int Refresh_List(List_Model &list);

/// Reads one document's row anew, keeping its number, if it is in the list.
void Refresh_List_Row(List_Model &list, const QString &code_id);
