// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QWidget;

/// Shows a document as it stands in the database, to be read and copied from; it asks for its password like any
/// reading.
void Show_Stored_Version(const QString &code_id, QWidget *owner);
