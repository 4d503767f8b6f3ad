// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

struct Document_Facts;

/// What stands at the right of the status line about the document on screen, from left to right; nothing while there is
/// none. The time of a save of today is a time, of another day a date.
QStringList Fact_Texts(const Document_Facts &facts);
