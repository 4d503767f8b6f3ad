// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/transfer.h"

namespace Mod_DataBaseExport
{
/// Copies documents into the database in force by names in the place of numbers: their folders are found or made by
/// their path of names, tags and review groups by name. A document that both sides have and that differs comes in as a
/// second one beside the first; nothing is overwritten. The same run again finds everything there.
/// One commit for each document, as in Transfer_Documents; users and facts stay behind.
Transfer_Result Transfer_By_Name(const QString &source, const QList<Transfer_Row> &rows, Work &work);
} // namespace Mod_DataBaseExport
