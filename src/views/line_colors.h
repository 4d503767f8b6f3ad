// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// The stored style of a document's row, "" for the default one. @throws Run_Time_Error
QString Line_Color_Of(const QString &codeId);
/// Stores a style for documents, in one commit. The next save of a document drops it. @throws Run_Time_Error
void Store_Line_Color(const QStringList &codeIds, const QString &style);
