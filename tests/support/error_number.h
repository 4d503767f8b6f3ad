// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/errors/run_time_error.h"

#include <functional>

/// Number of the error that an action ends with, 0 when it does what it should.
inline qint32 Number_Of_Error(const std::function<void()> &action)
{
    try {
        action();
    } catch (const Run_Time_Error &error) {
        return error.number;
    }
    return 0;
}
