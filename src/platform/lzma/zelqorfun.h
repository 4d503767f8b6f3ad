// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

/// Compresses (`command` "e") or decompresses ("d") a file in the LZMA-alone format: a 13-byte header (properties
/// byte, 4-byte dictionary size, 8-byte uncompressed size, little-endian) and the coded data with no end marker.
/// The decoder stops at the header's size and accepts whatever follows; a data error after the last wanted byte is
/// no error. Blanks at the end of a path are dropped. The output is written whole or not at all.
/// @returns 0, or 1 for any failure (bad command, unreadable input, damaged data, full disk).
qint32 zelqorfun(const char *command, const char *input_path, const char *output_path);

/// The same coder in memory. `Lzma_Decode` gives as many bytes as could be decoded and sets `complete` to whether
/// that was the header's size; it never returns more than `limit` bytes.
QByteArray Lzma_Encode(const QByteArray &plain);
QByteArray Lzma_Decode(const QByteArray &stream, bool &complete, qint64 limit = Q_INT64_C(4) << 30);
