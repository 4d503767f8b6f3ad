// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// The pictures that a stored web page names. A page writes the picture directory as "<<<Pic_Dir>>>".
namespace Html
{
inline constexpr const char *Picture_Directory_Mark = "<<<Pic_Dir>>>";

/// Values of `src` of all pictures of a page, in their order.
QStringList Picture_Sources(const QString &page);

/// The native path that a source which holds the mark means, "" when it holds none or would leave the directory.
QString Own_Picture(const QString &source, const QString &pictureDirectory);

/// Native paths of the existing files that a page holds in the picture directory.
QStringList Own_Pictures(const QString &page, const QString &pictureDirectory);
} // namespace Html
