// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>
#include <functional>

/// LZMA-alone streams between any two ends, a block at a time.
namespace Lzma_Coder
{
/// Gives up to `size` next bytes and tells how many; 0 at the end.
using Source = std::function<qint64(char *bytes, qint64 size)>;
using Sink = std::function<void(const char *bytes, qint64 size)>;

/// Header and coded data of exactly `plainSize` bytes. @returns false when the source gives another number.
bool Encode(const Source &plain, quint64 plainSize, const Sink &stream);

struct Outcome {
    bool understood = false; ///< The header is one and the stream stays within the limit.
    bool complete = false;   ///< All bytes that the header speaks of, or all up to the end marker.
    bool sizeKnown = false;
    quint64 missing = 0; ///< With a known size.
};

/// Stops at the header's size, at the first damage or before the output passes `limit` bytes.
Outcome Decode(const Source &stream, const Sink &plain, quint64 limit);
} // namespace Lzma_Coder
