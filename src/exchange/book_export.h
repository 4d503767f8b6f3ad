// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"

#include <QString>
#include <QStringList>

/// Documents become a book that needs nothing but itself: a copy of the viewer with the documents behind it, as
/// platform/book lays them out.

/// The numbers of the choice "Opt_SafeMode".
enum class Book_Mode { Text = 0, Rich = 1, Pages = 2 };

struct Book_Row {
    QString code_id;
    QString title;
    QString type; ///< "" for RTF
};

struct Book_Order {
    QString target;
    QString password; ///< "" for none
    int uses = 9999;
    Book_Mode mode = Book_Mode::Text;
    QList<Book_Row> rows;
};

struct Book_Result : Work_Result {
    QStringList changed_titles; ///< titles that held "//", which the book shows with a blank between
    QStringList lost_links;     ///< of an EPUB: links to documents that are not in it
};

/// Work on one item, which says the same of itself however often it is asked.
class Item_Work : public Work
{
public:
    Item_Work(Work &whole, qint64 done, qint64 all, const QString &name)
        : m_whole(whole), m_done(done), m_all(all), m_name(name)
    {
    }
    bool Next(qint64 /*done*/, qint64 /*all*/, const QString & /*name*/) override
    {
        return m_whole.Next(m_done, m_all, m_name);
    }

private:
    Work &m_whole;
    qint64 m_done;
    qint64 m_all;
    QString m_name;
};

/// Writes a book. Documents are numbered without gaps; one that has nothing of its own, because it has a password or
/// cannot be read, fails alone. What stands at the target is replaced when the whole book is written, and stays
/// otherwise: after an error, when the work is called off, and when no document is left for the book.
/// @throws Run_Time_Error when the book cannot be written, or holds more documents than its index can name
Book_Result Export_Book(const Book_Order &order, Work &work);

/// Adds a named binary item to an executable: one cycle of opening, writing and committing.
/// @throws Run_Time_Error 53 or 75 when the file cannot be changed, 61 on a full disk
void Add_Named_Item(const QString &path, quint32 id, const QByteArray &bytes);
