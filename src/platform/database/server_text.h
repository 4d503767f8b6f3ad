// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/sql_values.h"

#include <QByteArray>
#include <functional>

/// How values and patterns stand in the text of a server's statements.
namespace Server_Text
{
/// A value as a literal with its type.
QString Literal(const Cell &cell);
/// A statement with "?" and a number in place of its parameters, filled; what stands between quotes is left alone.
QString Filled(const QByteArray &sql, const std::function<QString(size_t parameter)> &value);
/// A like pattern of the dialect for a text that is folded: sets become "_".
QString Like_Text(const QString &pattern);
/// The expression that tells what a set of the pattern accepts, "" for a pattern without sets.
QString Like_Classes(const QString &pattern);
} // namespace Server_Text
