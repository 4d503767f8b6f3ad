// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/blob_stream.h"
#include "platform/database/server_connection.h"

/// Binary columns of a server's rows, block by block: no block waits for the whole value on either side.
namespace Server_Blob
{
inline constexpr qint64 Longest = qint64(256) << 20;

void Write(Server_Connection &server, const Database_Engine::Blob_Place &place, qint64 size,
           const std::function<qint64(char *block, qint64 size)> &source);
void Read(Server_Connection &server, const Database_Engine::Blob_Place &place,
          const std::function<bool(const char *block, qint64 size)> &sink);
/// Bytes of the value.
qint64 Size(Server_Connection &server, const Database_Engine::Blob_Place &place);
} // namespace Server_Blob
