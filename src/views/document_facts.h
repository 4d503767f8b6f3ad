// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// What is known about a document beside its text, a line for each fact, in the user's language.
/// @throws Run_Time_Error
QString Document_Facts(const QString &codeId);
