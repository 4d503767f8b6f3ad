// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/epub_package.h"

#include <QHash>

/// The folders of documents, in the order of the tree.
class Epub_Places
{
public:
    Epub_Places();

    [[nodiscard]] QList<Epub::Folder> Folders_Of(const QString &code_id) const;
    /// Whether documents of some folders stand before those of others. A folder's own stand before those below it.
    [[nodiscard]] bool Is_Before(const QList<Epub::Folder> &one, const QList<Epub::Folder> &other) const;

private:
    QHash<QString, QString> m_names; ///< by folders' ids
    QHash<QString, qint64> m_ranks;
};
