// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/document_export.h"

/// Makes sure that there is a compiler of help files. @throws Run_Time_Error 339 that says in words what is missing
void Load_Chm_Tools();

/// Makes a help book (CHM) of one topic, the document with its pictures; an older file stays until it is whole.
/// @throws Run_Time_Error, with Failure::Stopped when the work is called off
Export_Outcome Make_Chm(const QString &target, Outgoing_Document &document, Work &work);
