// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/database.h"

#include <QStringView>
#include <optional>

/// How dates lie in the file: "YYYY-MM-DD" at midnight, else "YYYY-MM-DD HH:MM:SS". The text sorts as the dates do,
/// and equal dates are equal text.
namespace Stored_Date
{
QString From_Date(const QDateTime &date);
/// The stored form of a text that means a date; nothing when it means none.
std::optional<QString> From_Text(QStringView text);
/// The short form of a stored date; any other text as it is.
QString To_Short(const QString &stored);
QChar Separator();
/// `date` by a pattern of YYYY, YY, MM, M, DD, D, HH, H, NN, N, SS, S in any case; M after H means minutes.
QString Format(const QDateTime &date, const QString &pattern);
} // namespace Stored_Date
