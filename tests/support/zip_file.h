// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QtEndian>

#include <utility>

/// ZIP files and their numbers, put together byte by byte.
namespace Zip_File
{
inline quint32 Crc_32(const QByteArray &bytes)
{
    quint32 crc = ~0U;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

template <class Number>
QByteArray Little(Number value)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

using Parts = QList<std::pair<QByteArray, QByteArray>>;

/// A ZIP file of deflated parts, each a name and its content.
inline QByteArray Zip(const Parts &parts, quint16 flags = 0)
{
    QByteArray locals, central;
    for (const auto &[name, content] : parts) {
        const QByteArray packed = content.isEmpty() ? QByteArray("\x03\x00", 2) // what nothing is deflated to
                                                    : qCompress(content).mid(6).chopped(4); // without zlib's frame
        const QByteArray facts = Little(quint16(20)) + Little(flags) + Little(quint16(8)) + Little(quint32(0)) +
                                 Little(Crc_32(content)) + Little(quint32(packed.size())) +
                                 Little(quint32(content.size())) + Little(quint16(name.size())) + Little(quint16(0));
        central +=
            "PK\x01\x02" + Little(quint16(20)) + facts + QByteArray(10, '\0') + Little(quint32(locals.size())) + name;
        locals += "PK\x03\x04" + facts + name + packed;
    }
    const QByteArray count = Little(quint16(parts.size()));
    return locals + central + "PK\x05\x06" + Little(quint32(0)) + count + count + Little(quint32(central.size())) +
           Little(quint32(locals.size())) + Little(quint16(0));
}
} // namespace Zip_File
