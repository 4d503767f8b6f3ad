// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

/// Compresses (`command` "e") or decompresses ("d") a file in the LZMA-alone format: a 13-byte header (properties
/// byte, 4-byte dictionary size, 8-byte uncompressed size, little-endian) and the coded data with no end marker.
/// The decoder stops at the header's size and accepts whatever follows; a data error after the last wanted byte is
/// no error, and neither is one that costs at most Lzma_Damaged_End of them: the last byte of a stored stream may be
/// written over. A stream that says its size is unknown ends at its end marker. Paths are UTF-8 in the system's
/// spelling; blanks at their end are dropped. The output is written whole or not at all.
/// @returns 0, or 1 for any failure (bad command, unreadable input, damaged data, full disk).
extern "C" qint32 zelqorfun(const char *command, const char *input_path, const char *output_path);

inline constexpr qint64 Lzma_Damaged_End = 64;

/// The same coder in memory. `Lzma_Decode` gives as many bytes as could be decoded and sets `complete` to whether
/// that was the header's size; it never returns more than `limit` bytes.
QByteArray Lzma_Encode(const QByteArray &plain);
QByteArray Lzma_Decode(const QByteArray &stream, bool &complete, qint64 limit = Q_INT64_C(4) << 30);

/// Rewrites a stream of Lzma_Encode or zelqorfun so that it decodes to the same bytes whatever its last byte is
/// afterwards written over with. Decoders that want the coder's state at its end to be zero object to the result,
/// as they do to any stream whose last byte was changed.
void Lzma_Free_Last_Byte(QByteArray &stream);
