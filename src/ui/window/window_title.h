// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// "Document – Folder – Zelqor  Mini"; a part that is empty is left out.
QString Window_Title(const QString &document, const QString &folder);
