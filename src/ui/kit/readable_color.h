// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

/// The colour, lighter or darker if it could not be read on that background.
QColor Readable(const QColor &color, const QColor &background);
