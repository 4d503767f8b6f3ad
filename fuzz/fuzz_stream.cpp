// SPDX-License-Identifier: GPL-3.0-or-later
// room: lzma
//
// Any bytes as a stored stream: decoding ends within its limit. Any bytes as a document: what is coded comes back, also
// when the last byte of the stream is another one.
#include "platform/lzma/zelqorfun.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    constexpr qint64 Limit = 1 << 22;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    bool complete = false;
    if (Lzma_Decode(bytes, complete, Limit).size() > Limit)
        std::abort();
    QByteArray stream = Lzma_Encode(bytes);
    Lzma_Free_Last_Byte(stream);
    stream.back() = static_cast<char>(size);
    stream.append('\0'); // as it stands in its column
    if (Lzma_Decode(stream, complete, Limit) != bytes || !complete)
        std::abort();
    return 0;
}
