// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/process_state.h"
#include "platform/errors/run_time_error.h"

#include <QString>
#include <type_traits>

/// The pending error of this thread.
Pending_Error &Err();
void Set_Pending(const Run_Time_Error &error);
void Clear_Pending();

/// Appends the pending error to Error.log under `source` and clears it; nothing when none is pending. A log that
/// cannot be written is silent.
void Error_Log(const QString &source);
/// A trace mark: Error_Log under the mark's name.
void Log_Mark(const QString &mark);
/// A mark that is kept in the code and has no effect.
void Log_Mark_Off(const QString &mark);

/// Runs one statement in resume-next mode: an error becomes the pending one and the next statement runs.
/// @returns whether the statement succeeded.
template <class Body>
bool Resume_Next(Body &&statement)
{
    try {
        statement();
        return true;
    } catch (const Run_Time_Error &error) {
        Set_Pending(error);
        return false;
    }
}

/// Runs a procedure that traps its own errors: the error is given to `report`, written to Error.log under `source`
/// and cleared, and the result is the empty one (false, "", 0).
template <class Body, class Report>
auto Trap(const QString &source, Body &&body, Report &&report) -> std::invoke_result_t<Body>
{
    try {
        return body();
    } catch (const Run_Time_Error &error) {
        Set_Pending(error);
        report();
        Error_Log(source);
        return std::invoke_result_t<Body>();
    }
}

template <class Body>
auto Trap(const QString &source, Body &&body) -> std::invoke_result_t<Body>
{
    return Trap(source, std::forward<Body>(body), [] {});
}
