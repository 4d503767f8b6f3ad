// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

class QTextDocument;

/// A stored web page as text of a pane. Nothing of it runs and nothing is fetched from a network.
namespace Web_Page
{
/// Puts a page in place of what the pane holds. Pictures of this machine and of the picture directory become the
/// pane's own; others stay empty frames. Nothing can be undone before.
/// @param base  where relative addresses of pictures begin; a stored page has no such place
void Show(const QString &page, QTextDocument &pane, const QUrl &base = {});
} // namespace Web_Page
