// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/recordset.h"
#include "platform/models/list_model.h"
#include "views/list_rows.h"

#include <QString>
#include <array>

/// The four labels below the list, Lab_Page_Infor 0 to 3.
struct Page_Info {
    enum Label { Total = 0, Pages = 1, Per_Page = 2, Shown = 3 };
    std::array<qint64, 4> labels{};
    bool paging = false; ///< the page bar is enabled
    bool locked = false; ///< nothing is listed because the folder's password was not given
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

/// Lists by a ready-made WHERE text, with no paging. @param limit  rows that are shown at most
Page_Info ShowCodeInfoToList_Ex_Key(const QString &where, List_Model &list, const QString &searchKey, int page,
                                    int limit);

/// The rows of a condition and their count line. `labels[Total]` counts all, `rows` holds at most `limit` documents.
struct Condition_Rows {
    std::vector<List_Row> rows;
    Page_Info info;
};
/// What ShowCodeInfoToList_Ex_Key lists; may run in a thread of its own. @throws Run_Time_Error.
Condition_Rows Rows_By_Condition(const QString &where, const QString &searchKey, int limit,
                                 const List_Setting &setting);

/// Replaces the list's rows by those of a recordset, at most `maxRows` documents. With a search key, their places
/// stand below them, if the setting CH_Lsv_Detail wants it. @returns documents added
int Fill_List_Rows(Recordset &rows, List_Model &list, int maxRows, const QString &searchKey = {});

/// Reads every document's row anew and drops those whose documents are gone. @returns how many those are
int Refresh_List(List_Model &list);

/// Reads one document's row anew, keeping its number, if it is in the list.
void Refresh_List_Row(List_Model &list, const QString &code_id);
