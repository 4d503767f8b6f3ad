// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/slide_records.h"

#include "platform/extract/compound_file.h"

#include <QtEndian>
#include <algorithm>

namespace ExtractText
{
namespace
{
// Record types: [MS-PPT] 2.13.24.
enum Record : quint16 {
    Notes = 0x03F0,
    Main_Master = 0x03F8,
    Text_Chars = 0x0FA0,
    Text_Bytes = 0x0FA8,
    Handout = 0x0FC9,
};

constexpr qsizetype Head_Size = 8;
constexpr int Deepest = 32;

QString Cleaned(QString text)
{
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    text.replace(QChar(0x0B), QLatin1Char('\n')); // line break within a paragraph
    return text + QLatin1Char('\n');
}

/// Walks the records of a part of the stream; containers hold records again.
void Walk(QByteArrayView part, int depth, QString &text, qint64 limit)
{
    while (part.size() >= Head_Size && text.size() < limit) {
        const bool container = (qFromLittleEndian<quint16>(part.data()) & 0xF) == 0xF;
        const auto type = qFromLittleEndian<quint16>(part.data() + 2);
        const auto length = qFromLittleEndian<quint32>(part.data() + 4);
        const auto content = part.sliced(Head_Size, std::min<qsizetype>(length, part.size() - Head_Size));
        if (type == Text_Chars)
            text += Cleaned(QString::fromUtf16(reinterpret_cast<const char16_t *>(content.data()), content.size() / 2));
        else if (type == Text_Bytes)
            text += Cleaned(QString::fromLatin1(content));
        else if (container && depth < Deepest && type != Notes && type != Main_Master && type != Handout)
            Walk(content, depth + 1, text, limit);
        part = part.sliced(Head_Size + content.size());
    }
}
} // namespace

QString Slide_Records_Text(const QString &path, qint64 limit)
{
    constexpr qint64 Most_Bytes = Q_INT64_C(128) << 20;
    Compound_File file(path);
    if (file.Has(QStringLiteral("EncryptedSummary")))
        return {};
    const QByteArray stream = file.Stream(QStringLiteral("PowerPoint Document"), Most_Bytes);
    QString text;
    Walk(stream, 0, text, limit);
    return text.left(limit);
}
} // namespace ExtractText
