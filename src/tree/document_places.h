// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// Where a document lives, kept so that a move can be taken back.
struct Document_Place {
    QString document; ///< id
    QString folder;   ///< id
};

/// The folders of documents as they are now; one that there is not is left out. A failure is recorded under
/// "Mod_Cate\Places_Of" and gives none.
QList<Document_Place> Places_Of(const QStringList &documents);

/// Puts documents back as one commit; nothing is asked. One whose folder is gone meanwhile stays where it is. A failure
/// is recorded under "Mod_Cate\Put_Back". @returns those that were put back
QStringList Put_Back(const QList<Document_Place> &places);
