// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTime>
#include <QTimer>
#include <vector>

class Document_Tabs;
class Frm_Doc_Standard;
class QTextEdit;

/// What is to be known of the document on screen while one reads or writes: when it was saved, how many words it has,
/// in which line the cursor is, whether it can be edited.
class Text_Facts : public QObject
{
    Q_OBJECT

public:
    explicit Text_Facts(Document_Tabs &tabs);

signals:
    /// One text for each fact; none while the list is on screen.
    void Changed(const QStringList &facts);

private:
    void Follow();
    void Count();
    void Tell();
    void Note_Saved(const Frm_Doc_Standard &document);
    [[nodiscard]] QString Saved_Text(const Frm_Doc_Standard &document) const;

    Document_Tabs &m_tabs;
    QPointer<Frm_Doc_Standard> m_document;            ///< on screen, null for the list
    QPointer<QTextEdit> m_text;                       ///< its body
    QHash<const QObject *, QTime> m_saved;            ///< when open documents were saved in this run
    std::vector<QMetaObject::Connection> m_following; ///< to the two
    QTimer m_soon;                                    ///< words are counted when nothing is typed for a moment
    int m_words = 0;
    bool m_changed = false; ///< the document was unsaved when it was looked at last
};
