// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"

#include <QHash>
#include <QStringList>

/// What a transfer would meet, found without writing anything.
namespace Mod_DataBaseExport
{
/// What the target has of a document of the source.
enum class Known {
    Nothing,
    Same,    ///< the same title and the same stored content
    Older,   ///< other content, changed before the source's
    Newer,   ///< other content, changed after the source's
    Changed, ///< other content with the same date
};
/// In words, for a list; "" for Nothing.
QString Known_Text(Known known);

/// Looks at each document on both sides once. Those that cannot be read are missing from the answer, as are those
/// behind the one at which the work was called off.
QHash<QString, Known> Compare_Documents(const QString &target, const QString &source, const QStringList &ids,
                                        Work &work);

/// Something that means one thing in the source and another one in the target: a merge by id would put documents under
/// a foreign name.
struct Conflict {
    enum class Kind { Folder, Tag, Group } kind;
    QString id;
    QString there; ///< its name in the source
    QString here;  ///< its name in the target, "" when it is missing there
};

/// What the documents that the target has not would bring along.
QList<Conflict> Find_Conflicts(const QString &target, const QString &source, const QStringList &ids, Work &work);
/// One conflict in words.
QString Conflict_Text(const Conflict &conflict);
} // namespace Mod_DataBaseExport
