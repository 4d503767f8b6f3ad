// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rich_text.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace
{
/// Whether bytes without a mark are UTF-16 of the given order: text in any script has many characters below U+0100,
/// blanks, digits and line ends at least, so zeros stand at the high places and hardly at the low ones.
bool Looks_Like_Utf16(QByteArrayView bytes, qsizetype highPlace)
{
    const qsizetype units = std::min<qsizetype>(bytes.size() / 2, 4096);
    if (bytes.size() % 2 != 0 || units == 0)
        return false;
    qsizetype highZeros = 0, lowZeros = 0;
    for (qsizetype i = 0; i < units; ++i) {
        highZeros += bytes[2 * i + highPlace] == '\0' ? 1 : 0;
        lowZeros += bytes[2 * i + 1 - highPlace] == '\0' ? 1 : 0;
    }
    return highZeros > 0 && highZeros * 50 >= units && lowZeros * 20 < highZeros;
}

QString Decoded(QByteArrayView bytes)
{
    struct Mark {
        QByteArrayView bytes;
        QStringConverter::Encoding encoding;
    };
    static const std::array<Mark, 3> marks{{{"\xEF\xBB\xBF", QStringConverter::Utf8},
                                            {"\xFF\xFE", QStringConverter::Utf16LE},
                                            {"\xFE\xFF", QStringConverter::Utf16BE}}};
    for (const Mark &mark : marks) {
        if (bytes.startsWith(mark.bytes))
            return QStringDecoder(mark.encoding).decode(bytes.sliced(mark.bytes.size()));
    }
    if (Looks_Like_Utf16(bytes, 1))
        return QStringDecoder(QStringConverter::Utf16LE).decode(bytes);
    if (Looks_Like_Utf16(bytes, 0))
        return QStringDecoder(QStringConverter::Utf16BE).decode(bytes);
    if (bytes.isValidUtf8())
        return QString::fromUtf8(bytes);
    return QStringDecoder("GB18030").decode(bytes);
}
} // namespace

QString Rich_Text::Decode_Plain(const QByteArray &bytes)
{
    QString text = Decoded(bytes);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    return text;
}
