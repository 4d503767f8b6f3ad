// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/document_ids.h"

#include <QUuid>
#include <QtEndian>
#include <algorithm>

QString GUID_ToText(const std::array<std::uint8_t, 16> &guid)
{
    QString text;
    for (size_t i = 0; i < guid.size(); ++i) {
        text += QStringLiteral("%1").arg(guid[i], 2, 16, QLatin1Char('0')).toUpper();
        if (i == 3 || i == 5 || i == 7 || i == 9)
            text += QLatin1Char('-');
    }
    return text;
}

QString Make_Code_ID()
{
    // A GUID lies in memory with its first three fields in the byte order of x86 machines.
    const QUuid fresh = QUuid::createUuid();
    std::array<std::uint8_t, 16> bytes{};
    qToLittleEndian(fresh.data1, bytes.data());
    qToLittleEndian(fresh.data2, bytes.data() + 4);
    qToLittleEndian(fresh.data3, bytes.data() + 6);
    std::copy(std::begin(fresh.data4), std::end(fresh.data4), bytes.begin() + 8);
    return QLatin1Char('{') + GUID_ToText(bytes) + QLatin1Char('}');
}
