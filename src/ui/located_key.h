// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QTextEdit;

/// Marks every place of a key in a text and goes to the one at `place`, counted in characters of the plain text from
/// 0; the first one for -1, or where the key does not stand there.
void Mark_Key(QTextEdit &text, const QString &key, qint64 place);
