// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/process_state.h"
#include "core/work.h"
#include "platform/files/paths.h"

#include <QList>
#include <QString>

class Recordset;

/// The files that a document carries: rows of `tab_file` whose bytes are in the database, or that say where a file, a
/// folder or a page is.

enum class Attachment_Type { Internal = 0, External = 1, Program_Picture = 3, Page_Picture = 4 };

struct Attachment {
    qint64 id = 0;
    Attachment_Type type = Attachment_Type::Internal;
    QString name;
    QString size;
    QString date;
    QString path; ///< of an external one, with its mark
    QString remark;
    QString document; ///< id of its document
    QString title;    ///< its document's, where that was asked for
    bool has_document = true;
};
/// The columns that every statement over attachments asks for.
Attachment Attachment_From(Recordset &row);

/// Bytes of the file, as its size tells.
qint64 Attachment_Bytes(const Attachment &attachment);

/// A document's list, in its order; "" is what a new document has before its first save. @throws Run_Time_Error
QList<Attachment> Attachments_Of(const QString &code_id);
/// How many there are. @throws Run_Time_Error
int Attachment_Count(const QString &code_id);

/// What becomes of an attachment that is added.
namespace Addin_Mode
{
inline const QString Internal = QStringLiteral("0"); ///< its bytes go into the database
inline const QString Copy = QStringLiteral("1");     ///< it is copied to the folder `Addin`, and linked
inline const QString Link = QStringLiteral("2");     ///< it is linked where it is
inline const QString Nothing = QStringLiteral("3");
} // namespace Addin_Mode

struct Saved_Attachment {
    qint64 id = 0; ///< 0 where nothing was added
    Pending_Error trouble;
    bool stopped = false;
};

/// Why nothing was added, as the user reads it.
QString Attachment_Trouble(const Pending_Error &trouble);

/// Adds a file to a document, behind those that it has, as one commit. A long file is copied block by block, and may be
/// called off; nothing of it stays then. An error is recorded under "S_SaveFile".
/// @param name  its name in the list, "" for the file's own
/// @param mode  one of Addin_Mode
Saved_Attachment S_SaveFile(const QString &code_id, const QString &path, const QString &name, const QString &mode,
                            Work &work);
/// The other kinds of links: a path reduced to what follows the program's folder, a folder, a page.
Saved_Attachment Add_Reduced_Link(const QString &code_id, const QString &path);
Saved_Attachment Add_Folder_Link(const QString &code_id, const QString &folder);
Saved_Attachment Add_Page_Link(const QString &code_id, const QString &address);

/// Puts a changed file in an internal attachment's place: a new row at the end of the order, and the old one goes with
/// it, as one commit.
Saved_Attachment Replace_Attachment(const Attachment &old, const QString &path, Work &work);

/// Swaps the places of two attachments. @throws Run_Time_Error
void ChangeFileOrder(qint64 one, qint64 other);
/// Deletes rows as one commit; the files of links stay. @throws Run_Time_Error
void Delete_Attachments(const QList<qint64> &ids);
/// @throws Run_Time_Error when it is too long, or holds an apostrophe.
void Set_Attachment_Remark(qint64 id, const QString &remark);
/// A link leads to another file or folder from now on; its spelling follows the program as the old one did.
/// @throws Run_Time_Error when the path is too long
void Set_Attachment_Place(const Attachment &link, const QString &path);
/// Gives attachments to another document, behind those that it has. @throws Run_Time_Error
void Give_Attachments(const QList<qint64> &ids, const QString &code_id);

/// Writes an internal attachment's bytes to a file, whole or not at all, and replaces what stands there.
/// @returns false when it was called off. @throws Run_Time_Error
bool Write_Attachment(qint64 id, const QString &path, Work &work,
                      Files::Durability durability = Files::Durability::Given);
/// Digest of an internal attachment's bytes; "" when it was called off. @throws Run_Time_Error
QByteArray Attachment_Digest(qint64 id, Work &work, const QString &name);

/// Writes the pictures of a stored page below the picture directory, each in a folder of its name's first six
/// characters; those that are there stay. Errors are recorded under "s_ReadAllFile".
void s_ReadAllFile(const QString &code_id);
