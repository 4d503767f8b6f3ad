// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/attachments.h"

/// The attachments of all documents, as their manager looks through them.

/// Those of documents with their titles, then those that no document has. @throws Run_Time_Error
QList<Attachment> All_Attachments();
/// One of them as it is stored now; id 0 when it is gone. @throws Run_Time_Error
Attachment Read_Attachment(qint64 id);

struct Attachment_Sum {
    qint64 inside = 0;
    qint64 outside = 0;
    qint64 bytes = 0; ///< of those inside
};
Attachment_Sum Sum_Of(const QList<Attachment> &attachments);

/// What is worth a look.
enum class Attachment_Trait {
    Any,
    Dangling,         ///< a link to a file or folder that is not there
    Without_Document, ///< its document is gone, or was never stored
    Twice             ///< an internal one with the same bytes as another one; those that are the same lie together
};

struct Found_Attachments {
    QList<Attachment> files;
    QList<qint64> repeated; ///< ids of those that repeat one before them
    QList<Failed_Item> failed;
    bool stopped = false; ///< called off before its end
};
Found_Attachments Attachments_With(Attachment_Trait trait, const QList<Attachment> &all, Work &work);

struct Attachment_Search {
    QString text;
    bool name = true;
    bool remark = true;
    bool content = false; ///< of internal files and of linked ones
};
/// Those in which a text stands, without regard to case.
Found_Attachments Search_Attachments(const Attachment_Search &search, const QList<Attachment> &all, Work &work);
