// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"
#include "documents/attachments.h"

class QWidget;

/// What a person does with attachments, wherever they are listed: with its questions, progress and answers.
namespace Attachment_Actions
{
void Report(const QString &text);
void Report_Failures(const QList<Failed_Item> &failed);
/// One file under a name that is asked for; several under their own names in a folder, where none is replaced.
void Export(QWidget &window, const QList<Attachment> &files);
/// @returns whether they are gone. @throws Run_Time_Error
bool Delete_After_Question(QWidget &window, const QList<Attachment> &files);
/// A changed remark is stored. @returns whether there is one. @throws Run_Time_Error
bool Edit_Remark(const Attachment &file);
} // namespace Attachment_Actions
