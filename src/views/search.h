// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <span>

/// A field that can be searched: its column, and the key of its caption in the section Frm_Main.
struct Search_Field {
    const char *column;
    const char *caption;
};
QString Caption_Of(const Search_Field &field);
/// The nine fields in the order of the list on screen.
std::span<const Search_Field> Search_Fields();

/// Documents that a search shows at most; the count line tells how many there are.
inline constexpr int Search_Limit = 100;

struct Search_Request {
    QString key;
    bool everywhere = false; ///< the root is ticked: every document, those in the recycle bin too
    QStringList folders;     ///< ids of the ticked folders
    QStringList fields;      ///< ticked columns in list order; none stands for the first one
};

/// The key as it is searched: without single quotes, which is the only escape.
QString Search_Key(const QString &typed);
/// The condition of a search, for ShowCodeInfoToList_Ex_Key. There must be a folder or `everywhere`.
QString Search_Where(const Search_Request &request);
