// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QTextFrame>
#include <functional>

class QTextDocument;
class QTextList;
class QTextTable;

/// A document as a page of an EPUB: XHTML with headings, lists, tables, links and pictures.
class Epub_Page
{
public:
    struct Callbacks {
        /// The address of a picture in the book by its name in the document; "" for one that cannot be had.
        std::function<QString(const QTextImageFormat &format)> picture;
        /// The address that a link has in the book; "" for one that is only words there.
        /// @param words  that the link stands on
        std::function<QString(const QString &target, const QString &words)> link;
    };

    Epub_Page(const QTextDocument &document, const Callbacks &callbacks);
    /// The whole page. @param language  as in "zh-CN"
    QString Write(const QString &title, const QString &language);

private:
    /// An element that is to be closed again.
    struct Open_List {
        const QTextList *list;
        int indent;
        const char *end;
    };
    void Note_Anchors();
    void Write_Flow(QTextFrame::iterator begin, const QTextFrame::iterator &end);
    void Write_Table(const QTextTable &table);
    void Write_Block(const QTextBlock &block);
    void Write_Item(const QTextBlock &block, const QTextList &list);
    void Begin_List(const QTextList &list);
    void Close_Lists(qsizetype left);
    void Write_Content(const QTextBlock &block);
    void Write_Fragment(const QTextFragment &fragment, bool isBoldAnyway);
    void Write_Text(const QString &text, const QTextCharFormat &format, bool isBoldAnyway);
    void Write_Picture(const QTextImageFormat &format);
    void Write_Anchors(const QTextCharFormat &format);
    void Switch_Link(const QString &target, const QTextBlock::iterator &from);
    [[nodiscard]] QString Address_Of(const QString &target, const QString &words) const;

    const QTextDocument &m_document;
    Callbacks m_callbacks;
    QString m_out;
    QList<Open_List> m_lists;
    QHash<const QTextList *, int> m_items; ///< written so far
    QHash<QString, QString> m_anchors;     ///< the ids of a document's places by their names
    QSet<QString> m_written;               ///< ids
    QString m_target;                      ///< of the link that is open
    bool m_isLinkOpen = false;
    double m_usualSize;
};
