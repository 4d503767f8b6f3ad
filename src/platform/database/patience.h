// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <chrono>

/// What a thread does while it waits for a server: it asks its watch whether to go on, or tells whoever set its
/// patience (Database_Engine::Set_Patience) how long it takes.
class Patience
{
public:
    static constexpr std::chrono::milliseconds Between_Looks{50};

    Patience() { m_since.start(); }
    /// This thread has a watch or a patience.
    [[nodiscard]] static bool Is_Asked();
    /// False when the statement is to be called off.
    [[nodiscard]] bool Goes_On() const;

private:
    QElapsedTimer m_since;
};
