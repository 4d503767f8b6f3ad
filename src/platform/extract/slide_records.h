// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ExtractText
{
/// Text of the slides of a PPT file ([MS-PPT]), at most `limit` characters; "" for an encrypted one. Masters, notes and
/// handouts are left out.
QString Slide_Records_Text(const QString &path, qint64 limit);
} // namespace ExtractText
