// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The first letter of a Chinese character's most usual reading in pinyin, in lower case, by the place that the
/// collation of simplified Chinese gives it; the character itself where it has none.
QChar Pinyin_Initial(QChar character);

/// A text with each Chinese character replaced by its initial; "" when it has none.
QString Pinyin_Initials(const QString &text);
