// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"

#include <QHash>
#include <QString>
#include <functional>

namespace Mod_DataBaseExport
{
enum class Direction { Export, Import };

enum class Candidates { Listed, Wrong_Password };

/// Names of folders, "--" for one that is missing, each looked up once.
class Folder_Names
{
public:
    explicit Folder_Names(const QString &connection) : m_connection(connection) {}
    const QString &Name(const QString &id);

private:
    [[nodiscard]] QString Read(const QString &id) const;

    QString m_connection;
    QHash<QString, QString> m_names;
};

/// Whether a folder has a password of its own that is not given.
bool Is_Refused(const QString &folderId, const QString &connection, const std::function<QString()> &ask);

/// Fills the list with the documents of a folder and everything below it, each row tagged with its document's id:
/// number, title, folder's name ("--" where it has none), keywords.
/// Exporting, a folder's own password is asked for (those of folders below are not), and the root lists nothing;
/// importing, folders open freely, the root lists every document, and rows may tip what they explain.
/// @param ask  gives what the user types for a password, "" when it is not known
Candidates Fill_Candidates(const QString &folderId, List_Model &list, const QString &connection, Direction direction,
                           const std::function<QString()> &ask);

/// Appends the rows of `from` with these tags to `to`, but for those that it has. A new row is not ticked.
void Add_To_Transfer_List(const List_Model &from, const QSet<QString> &ticked, List_Model &to);
} // namespace Mod_DataBaseExport
