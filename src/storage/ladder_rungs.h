// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/ladder_run.h"

#include <span>

/// What a rung asks the file, and when its action runs.
enum class Probe {
    Opens,         ///< the statement does not open, or has no `column`
    Opens_No_More, ///< it opens: what it reads is to go
    Width,         ///< `column` has the defined size `width`
    Row,           ///< it has no row
    None,          ///< `act` decides by itself
};

/// The databases whose ladder has a rung.
enum class Reach { File, File_And_Server, Every };

struct Rung {
    const char16_t *mark = nullptr; ///< stands behind the rung
    Reach reach = Reach::File;
    Probe probe = Probe::Opens;
    const char16_t *statement = nullptr;
    const char16_t *column = nullptr;
    qint32 width = 0;
    std::span<const char16_t *const> action = {}; ///< statements of the action, one commit
    /// Runs behind the action's statements, in the same commit.
    void (*more)(Ladder_Run &run) = nullptr;
    /// Runs on every ladder run, whatever the probe said.
    const char16_t *always = nullptr;
    /// The rung as code; false ends the ladder.
    bool (*act)(Ladder_Run &run) = nullptr;
};

/// All rungs, in their order. A rung that was released is never changed: a new schema gets a new rung at the end.
std::span<const Rung> Ladder_Rungs();

/// Runs one rung; false ends the ladder.
bool Run_Rung(const Rung &rung, Ladder_Run &run);
