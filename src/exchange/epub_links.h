// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/book_export.h"

#include <QHash>
#include <QString>
#include <QStringList>

/// Where the links of documents lead in a book of some of them. A link means a document by its id in braces, or, as
/// pages that were imported together do, by a file name that is its title.
class Epub_Links
{
public:
    explicit Epub_Links(const QList<Book_Row> &rows);

    /// The name of a document's page; "" for one that was not chosen.
    [[nodiscard]] QString Page_Of(const QString &code_id) const { return m_pages.value(code_id); }
    [[nodiscard]] QString Title_Of(const QString &code_id) const { return m_titles.value(code_id); }
    /// The address for a link: a page of the book, an address of the web, or "" for what the book cannot lead to.
    /// @param from    the document that holds the link
    /// @param linked  gets the id of a document of the book
    /// @param lost    gets a line for a link that leads nowhere
    [[nodiscard]] QString Address(const QString &target, const QString &words, const Book_Row &from,
                                  QStringList &linked, QStringList &lost) const;

private:
    [[nodiscard]] QString Document_Meant(const QString &target) const;

    QHash<QString, QString> m_pages;  ///< by ids
    QHash<QString, QString> m_titles; ///< by ids
    QHash<QString, QString> m_ids;    ///< by titles, the first of each
};
