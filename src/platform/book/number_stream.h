// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

/// The stream of numbers, always the same, that scrambled texts are joined with.
///
/// It comes from the pseudo-random numbers of the run-time that databases of this kind were first written under: 24
/// bits, linear congruential. Constants and the way a negative seed is taken are publicly documented: the seed's bits
/// as an IEEE single, the highest byte added to the lowest, and one step.
class Number_Stream
{
public:
    Number_Stream()
    {
        constexpr float Seed = -27481.0F;
        static_assert(sizeof m_state == sizeof Seed);
        std::memcpy(&m_state, &Seed, sizeof m_state);
        m_state += m_state >> 24;
        Step();
    }

    /// The next number of the stream, 30 to 100.
    std::uint16_t Next()
    {
        std::uint32_t number = 0;
        while (number < 30 || number > 100) {
            Step();
            number = static_cast<std::uint32_t>((std::uint64_t(m_state) * 127) >> 24);
        }
        return static_cast<std::uint16_t>(number);
    }

private:
    void Step() { m_state = (m_state * 0x43FD43FDU + 0xC39EC3U) & 0xFFFFFFU; }
    std::uint32_t m_state = 0;
};
