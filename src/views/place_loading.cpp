// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/place_loading.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "tree/folder_ids.h"
#include "views/place_sql.h"
#include "views/tags.h"

#include <QHash>

namespace
{
const QString Step = QStringLiteral(" / ");
constexpr qint64 Most_Read_Last = 100;

/// Paths of the folders that may be named, by id.
using Folder_Paths = QHash<QString, QString>;

/// A folder is read behind its parent, so the parent's path is known, or known to be missing.
Folder_Paths Read_Folders(Place_Index &index, const QSet<QString> &unlocked)
{
    Folder_Paths paths;
    Recordset folders;
    folders.Open(Sql_Text(Sql::Places_Folders), App().Conn_Str);
    for (; !folders.Eof(); folders.MoveNext()) {
        const QString id = folders[0].Text();
        const QString parent = Parent_Id(id);
        const bool locked = !folders[2].Text().trimmed().isEmpty() && !unlocked.contains(id);
        if (locked || In_Recycle_Bin(id) || (!parent.isEmpty() && !paths.contains(parent)))
            continue;
        const QString name = folders[1].Text();
        paths.insert(id, parent.isEmpty() ? name : paths.value(parent) + Step + name);
        index.Add({Place_Kind::Folder, Folder_Key(id), paths.value(id), {}, {}, 0});
    }
    return paths;
}

/// The documents that were read last, by id; the last one has the greatest number.
QHash<QString, qint64> Read_Last()
{
    QHash<QString, qint64> numbers;
    Recordset documents;
    documents.Open(Sql_Text(Sql::Places_Read_Last), App().Conn_Str);
    for (qint64 number = Most_Read_Last; !documents.Eof(); documents.MoveNext())
        numbers.insert(documents[0].Text(), number--);
    return numbers;
}

/// Titles of the documents that were added, by id.
QHash<QString, QString> Read_Documents(Place_Index &index, const Folder_Paths &paths)
{
    QHash<QString, QString> titles;
    const QHash<QString, qint64> readLast = Read_Last();
    Recordset documents;
    documents.Open(Sql_Text(Sql::Places_Documents), App().Conn_Str);
    for (; !documents.Eof(); documents.MoveNext()) {
        const auto folder = paths.find(documents[2].Text());
        if (folder == paths.end())
            continue;
        const QString id = documents[0].Text();
        const QString title = documents[1].Text();
        titles.insert(id, title);
        index.Add({Place_Kind::Document, id, title, *folder, {}, readLast.value(id)});
    }
    return titles;
}

void Read_Tags(Place_Index &index)
{
    Recordset tags;
    tags.Open(Sql_Text(Sql::Places_Tags), App().Conn_Str);
    for (; !tags.Eof(); tags.MoveNext())
        index.Add(
            {Place_Kind::Tag, Tag_Key(static_cast<int>(tags[0].Number())), tags[1].Text(), tags[2].Text(), {}, 0});
}

void Read_Bookmarks(Place_Index &index, const QHash<QString, QString> &titles)
{
    Recordset bookmarks;
    bookmarks.Open(Sql_Text(Sql::Places_Bookmarks), App().Conn_Str);
    for (; !bookmarks.Eof(); bookmarks.MoveNext()) {
        const auto title = titles.find(bookmarks[0].Text());
        if (title != titles.end())
            index.Add({Place_Kind::Bookmark,
                       title.key() + QLatin1Char('/') + bookmarks[2].Text(),
                       bookmarks[1].Text(),
                       *title,
                       {},
                       0});
    }
}
} // namespace

void Load_Places(Place_Index &index, const QSet<QString> &unlocked)
{
    Trap(QStringLiteral("Mod_DataBase\\Load_Places"), [&] {
        const Folder_Paths paths = Read_Folders(index, unlocked);
        const QHash<QString, QString> titles = Read_Documents(index, paths);
        Read_Tags(index);
        Read_Bookmarks(index, titles);
    });
}
