// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/epub_links.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "exchange/book_export_sql.h"
#include "platform/database/recordset.h"

#include <QRegularExpression>
#include <QUrl>

namespace
{
QString Id_In(const QString &target)
{
    static const QRegularExpression id(
        QStringLiteral("\\{[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\}"),
        QRegularExpression::CaseInsensitiveOption);
    return id.match(QUrl::fromPercentEncoding(target.toUtf8())).captured().toUpper();
}

/// The title of a document that was not chosen; "" when the database has none of that id.
QString Stored_Title(const QString &code_id)
{
    QString title;
    Resume_Next([&] {
        Recordset row;
        row.Open(Sql_Text(Sql::Document_For_Book, code_id), App().Conn_Str);
        if (!row.Eof())
            title = row[QStringLiteral("Code_Title")].Text();
    });
    return title;
}

/// An address that may stand in a book; "" for another.
QString Web_Address(const QString &target)
{
    const QUrl url(target.trimmed(), QUrl::TolerantMode);
    const bool hasHost = !url.host().isEmpty();
    const bool isWeb = (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https") ||
                        url.scheme() == QLatin1String("ftp")) &&
                       hasHost;
    const bool isMail = url.scheme() == QLatin1String("mailto") && !url.path().isEmpty();
    return url.isValid() && (isWeb || isMail) ? QString::fromLatin1(url.toEncoded()) : QString();
}
} // namespace

Epub_Links::Epub_Links(const QList<Book_Row> &rows)
{
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const Book_Row &row = rows[i];
        m_pages.insert(row.code_id, QStringLiteral("document-%1.xhtml").arg(i + 1));
        m_titles.insert(row.code_id, row.title);
        if (!m_ids.contains(row.title))
            m_ids.insert(row.title, row.code_id);
    }
}

/// @returns an id, which may be of no document that was chosen
QString Epub_Links::Document_Meant(const QString &target) const
{
    if (QString id = Id_In(target); !id.isEmpty())
        return id;
    const QUrl url(target);
    if (!url.isRelative() && !url.isLocalFile())
        return {};
    return m_ids.value(url.fileName(QUrl::FullyDecoded));
}

QString Epub_Links::Address(const QString &target, const QString &words, const Book_Row &from, QStringList &linked,
                            QStringList &lost) const
{
    const QString id = Document_Meant(target);
    if (m_pages.contains(id)) {
        linked << id;
        return Page_Of(id);
    }
    QString address = id.isEmpty() ? Web_Address(target) : QString();
    if (address.isEmpty()) {
        const QString title = id.isEmpty() ? QString() : Stored_Title(id);
        lost << from.title + QStringLiteral(" → ") + (title.isEmpty() ? (words.isEmpty() ? target : words) : title);
    }
    return address;
}
