// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

class QTextDocument;

/// A stored web page as text of a pane. Nothing of it runs and nothing is fetched from a network.
namespace Web_Page
{
/// Puts a page in place of what the pane holds. Pictures of the picture directory and of the page's own folder become
/// the pane's own, as does the one that a page stands for; others give way to their words. Nothing can be undone
/// before.
/// @param base  the folder of the page's file; a stored page has none
void Show(const QString &page, QTextDocument &pane, const QUrl &base = {});
} // namespace Web_Page
