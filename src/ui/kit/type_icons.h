// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QString>

/// The drawing for a document of a type, such as "RTF" or "PDF"; a document that is only a link to a file has one of
/// its own.
QIcon Type_Icon(const QString &type, bool isLink = false);
