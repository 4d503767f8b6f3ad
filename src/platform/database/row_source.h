// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/sql_translator.h"
#include "platform/database/sql_values.h"

/// The rows of a running query, one after the other.
class Row_Source
{
public:
    Row_Source() = default;
    virtual ~Row_Source() = default;
    Row_Source(const Row_Source &) = delete;
    Row_Source &operator=(const Row_Source &) = delete;

    [[nodiscard]] virtual const std::vector<Output> &Outputs() const = 0;
    /// The next row; false at the end. @throws Run_Time_Error.
    virtual bool Next(Row &row) = 0;
    /// Goes over the next row without reading it; false at the end. @throws Run_Time_Error.
    virtual bool Skip()
    {
        Row row;
        return Next(row);
    }
};
