// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "platform/models/list_model.h"

#include <QString>
#include <vector>

/// What the row filler takes from the settings; a copy, so that a search can fill its rows in a thread of its own.
struct List_Setting {
    QString connection;
    bool tool_tips = false; ///< the digest is shown over a row
    bool detail = false;    ///< a search shows its places

    /// As the settings and the process state are now.
    static List_Setting Now();
};

/// Reads rows of a recordset as rows of the list, numbered from 1, at most `maxRows` documents. With a search key and
/// `detail`, each document is followed by a line for each place of the key in Code_Content.
std::vector<List_Row> Read_List_Rows(Recordset &rows, int maxRows, const QString &searchKey,
                                     const List_Setting &setting);

/// Ids as lists for "in (...)", quoted and bound in size. Few sizes make few shapes of a statement, and the engine
/// keeps a compiled one for each shape: a list may name an id again.
std::vector<Sql_Part> Id_Groups(const QStringList &ids);

/// Number of documents among rows: lines of a document do not count.
int Document_Count(const std::vector<List_Row> &rows);
