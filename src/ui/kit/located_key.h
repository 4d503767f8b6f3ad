// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QTextEdit;

/// Marks every place of a key in a text and goes to one: `place` counts them from 0. -1 is the first one too, and the
/// last one stands for those that the text does not show (the places of a web page are counted in its source). The
/// marks stay until Escape is pressed or an empty key takes them away.
void Mark_Key(QTextEdit &text, const QString &key, qint64 place);
