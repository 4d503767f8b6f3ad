// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// Files that become documents.
namespace File_Import
{
/// Asks for files, beginning where it was left the last time. @returns none when the user calls it off
QStringList Ask(const QString &title);
/// Stores files as documents of a folder, under a window with its count. @returns how many were stored
int Store(QWidget &window, const QStringList &paths, const QString &folderId);
} // namespace File_Import
