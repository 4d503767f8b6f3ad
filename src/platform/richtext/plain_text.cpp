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

using Coding = Rich_Text::Plain_Form::Coding;
using Line_End = Rich_Text::Plain_Form::Line_End;

struct Coding_Row {
    Coding coding;
    const char *name;
    QByteArrayView mark;
};
/// The ways to write text, by Coding.
constexpr std::array<Coding_Row, 4> codings{{{Coding::Utf8, "UTF-8", "\xEF\xBB\xBF"},
                                             {Coding::Utf16_Little, "UTF-16LE", "\xFF\xFE"},
                                             {Coding::Utf16_Big, "UTF-16BE", "\xFE\xFF"},
                                             {Coding::Gb18030, "GB18030", "\x84\x31\x95\x33"}}};
/// The line ends, by Line_End.
constexpr std::array<QLatin1StringView, 3> lineEnds{QLatin1StringView("\n"), QLatin1StringView("\r\n"),
                                                    QLatin1StringView("\r")};

const Coding_Row &Row_Of(Coding coding)
{
    return codings[static_cast<std::size_t>(coding)];
}

Coding Guess(QByteArrayView bytes)
{
    if (Looks_Like_Utf16(bytes, 1))
        return Coding::Utf16_Little;
    if (Looks_Like_Utf16(bytes, 0))
        return Coding::Utf16_Big;
    return bytes.isValidUtf8() ? Coding::Utf8 : Coding::Gb18030;
}

Line_End Usual_Line_End(QStringView text)
{
    const qsizetype both = text.count(QStringView(u"\r\n"));
    const qsizetype feeds = text.count(u'\n') - both, returns = text.count(u'\r') - both;
    return both >= feeds && both >= returns && both > 0 ? Line_End::Return_Feed
           : returns > feeds                            ? Line_End::Return
                                                        : Line_End::Feed;
}

QByteArray Encoded(const QString &text, const Coding_Row &row, bool hasMark)
{
    const QByteArray bytes = QStringEncoder(row.name, QStringConverter::Flag::Stateless).encode(text);
    return hasMark ? row.mark.toByteArray() + bytes : bytes;
}
} // namespace

QString Rich_Text::Decode_Plain(const QByteArray &bytes, Plain_Form *form)
{
    const auto *marked =
        std::find_if(codings.begin(), codings.end(), [&](const Coding_Row &row) { return bytes.startsWith(row.mark); });
    const bool hasMark = marked != codings.end();
    const Coding_Row &row = hasMark ? *marked : Row_Of(Guess(bytes));
    QString text = QStringDecoder(row.name, QStringConverter::Flag::Stateless)
                       .decode(QByteArrayView(bytes).sliced(hasMark ? row.mark.size() : 0));
    if (form)
        *form = {.coding = row.coding, .lineEnd = Usual_Line_End(text), .hasMark = hasMark};
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    return text;
}

QByteArray Rich_Text::Encode_Plain(const QString &text, const Plain_Form &form)
{
    QString lines = text;
    if (form.lineEnd != Line_End::Feed)
        lines.replace(QLatin1String("\n"), lineEnds[static_cast<std::size_t>(form.lineEnd)]);
    const Coding_Row &row = Row_Of(form.coding);
    QByteArray bytes = Encoded(lines, row, form.hasMark);
    // What reads as another coding, or not as this text, would lose letters.
    if (Plain_Form again; Decode_Plain(bytes, &again) != text || again.coding != form.coding)
        bytes = Encoded(lines, Row_Of(Coding::Utf8), true);
    return bytes;
}
