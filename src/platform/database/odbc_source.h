// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/row_source.h"

/// Statements on a data source, through the platform's ODBC manager.
namespace Odbc_Source
{
/// Runs a statement as it stands; null when it has no rows.
std::unique_ptr<Row_Source> Run(const QString &statement, const QString &udlFile);
} // namespace Odbc_Source
