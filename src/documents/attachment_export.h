// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/attachments.h"

#include <QUrl>

/// Whether there is a file to write out: a folder's and a page's link have none.
bool Is_Exportable(const Attachment &attachment);

/// Writes an attachment, or a copy of the file that it links, to a path, and replaces what stands there.
Work_Result Export_Attachment(const Attachment &attachment, const QString &path, Work &work);
/// Writes attachments to a folder under their names; where one is taken, a number is put behind it.
Work_Result Export_Attachments(const QList<Attachment> &attachments, const QString &folder, Work &work);
/// Files of attachments as the desktop takes them: internal ones are written to a folder, the others are where they
/// are.
/// @returns addresses, none when it was called off. @throws Run_Time_Error
QList<QUrl> Lay_Out_Attachments(const QList<Attachment> &attachments, const QString &folder, Work &work);
