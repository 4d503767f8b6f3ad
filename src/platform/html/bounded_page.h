// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Html
{
/// A page as it may be given to a pane: only the tags and attributes that text of a pane can have, none that loads or
/// runs, and numbers, nesting and tables of a size that is laid out at once. What lies beyond a bound loses its tag;
/// its text stays.
QString Bounded(const QString &page);
} // namespace Html
