// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rich_text.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <utility>

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

/// Length of the UTF-8 sign that bytes begin with: 0 when they begin with none, more than there is when the end cuts
/// it.
qsizetype Utf8_Sign(QByteArrayView bytes)
{
    const auto lead = static_cast<uchar>(bytes.front());
    const qsizetype length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
    if (length <= bytes.size())
        return bytes.first(length).isValidUtf8() ? length : 0;
    const bool cut = std::all_of(bytes.begin() + 1, bytes.end(), [](char byte) { return (byte & '\xC0') == '\x80'; });
    return cut ? length : 0;
}

/// Likewise for GB18030. Every two bytes of the right form are a character; of four bytes, those of the first plane
/// and, from 0x90308130 on, those of the others.
qsizetype Gb18030_Sign(QByteArrayView bytes)
{
    const auto value = [&](qsizetype place) {
        return static_cast<int>(static_cast<uchar>(bytes[place]));
    };
    const auto within = [&](qsizetype place, int low, int high) {
        return place >= bytes.size() || (value(place) >= low && value(place) <= high);
    };
    if (within(0, 0, 0x7F))
        return 1;
    if (!within(0, 0x81, 0xFE))
        return 0;
    if (within(1, 0x40, 0x7E) || within(1, 0x80, 0xFE))
        return 2;
    if (!within(1, 0x30, 0x39) || !within(2, 0x81, 0xFE) || !within(3, 0x30, 0x39))
        return 0;
    if (bytes.size() < 4)
        return 4;
    constexpr int First_Plane_End = 39420, Other_Planes = 189000, Other_Planes_End = Other_Planes + 0x100000;
    const int number = (value(0) - 0x81) * 12600 + (value(1) - 0x30) * 1260 + (value(2) - 0x81) * 10 + value(3) - 0x30;
    return number < First_Plane_End || (number >= Other_Planes && number < Other_Planes_End) ? 4 : 0;
}

qsizetype Sign(QByteArrayView bytes, Coding coding)
{
    return coding == Coding::Utf8 ? Utf8_Sign(bytes) : coding == Coding::Gb18030 ? Gb18030_Sign(bytes) : 2;
}

/// What bytes are in a coding: bytes that are of no sign, and signs of several bytes.
struct Trial {
    qsizetype errors = 0;
    qsizetype wide = 0;
};

Trial Tried(QByteArrayView bytes, Coding coding)
{
    Trial trial;
    while (!bytes.isEmpty()) {
        const qsizetype length = Sign(bytes, coding);
        trial.errors += length == 0 ? 1 : 0;
        trial.wide += length > 1 ? 1 : 0;
        bytes = bytes.sliced(std::clamp<qsizetype>(length, 1, bytes.size()));
    }
    return trial;
}

/// Text that has some damage keeps its coding. Most bytes are of signs in GB18030, so that UTF-8 can have few errors
/// there; the other way round, signs of several bytes hardly come about by chance.
bool Is_Rather_Utf8(QByteArrayView bytes)
{
    if (bytes.isValidUtf8())
        return true;
    const Trial utf8 = Tried(bytes, Coding::Utf8);
    return utf8.errors * 4 < utf8.wide || utf8.errors <= Tried(bytes, Coding::Gb18030).errors;
}

Coding Guess(QByteArrayView bytes)
{
    if (Looks_Like_Utf16(bytes, 1))
        return Coding::Utf16_Little;
    if (Looks_Like_Utf16(bytes, 0))
        return Coding::Utf16_Big;
    return Is_Rather_Utf8(bytes) ? Coding::Utf8 : Coding::Gb18030;
}

Line_End Usual_Line_End(QStringView text)
{
    const qsizetype both = text.count(QStringView(u"\r\n"));
    const qsizetype feeds = text.count(u'\n') - both, returns = text.count(u'\r') - both;
    return both >= feeds && both >= returns && both > 0 ? Line_End::Return_Feed
           : returns > feeds                            ? Line_End::Return
                                                        : Line_End::Feed;
}

QByteArray Encoded(QStringView text, const Coding_Row &row)
{
    return QStringEncoder(row.name, QStringConverter::Flag::Stateless).encode(text);
}

/// How many bytes stand before the first that is of no sign, or of one that is cut.
qsizetype Readable(QByteArrayView bytes, Coding coding)
{
    if (coding == Coding::Utf8 && bytes.isValidUtf8())
        return bytes.size();
    qsizetype done = 0;
    while (done < bytes.size()) {
        const qsizetype length = Sign(bytes.sliced(done), coding);
        if (length == 0 || length > bytes.size() - done)
            break;
        done += length;
    }
    return done;
}

/// @param unread gets the bytes of every U+FFFD
QString Decoded(QByteArrayView bytes, const Coding_Row &row, QByteArrayList &unread)
{
    QStringDecoder decoder(row.name, QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    QString text;
    while (!bytes.isEmpty()) {
        const qsizetype readable = Readable(bytes, row.coding);
        const QString part = decoder.decode(bytes.first(readable));
        unread.append(QByteArrayList(part.count(QChar::ReplacementCharacter), Encoded(u"\uFFFD", row)));
        text += part;
        bytes = bytes.sliced(readable);
        if (!bytes.isEmpty()) {
            text += QChar::ReplacementCharacter;
            unread << bytes.first(1).toByteArray();
            bytes = bytes.sliced(1);
        }
    }
    return text;
}

/// Text with what could not be read as it was.
QByteArray Encoded_With(QStringView text, const Coding_Row &row, const QByteArrayList &unread)
{
    QByteArray bytes;
    for (const QByteArray &one : unread) {
        const qsizetype place = text.indexOf(QChar::ReplacementCharacter);
        if (place < 0)
            break;
        bytes += Encoded(text.first(place), row);
        bytes += one.isEmpty() ? Encoded(u"\uFFFD", row) : one;
        text = text.sliced(place + 1);
    }
    return bytes + Encoded(text, row);
}
} // namespace

QString Rich_Text::Decode_Plain(const QByteArray &bytes, Plain_Form *form)
{
    const auto *marked =
        std::find_if(codings.begin(), codings.end(), [&](const Coding_Row &row) { return bytes.startsWith(row.mark); });
    const bool hasMark = marked != codings.end();
    const Coding_Row &row = hasMark ? *marked : Row_Of(Guess(bytes));
    QByteArrayList unread;
    QString text = Decoded(QByteArrayView(bytes).sliced(hasMark ? row.mark.size() : 0), row, unread);
    if (form)
        *form = {
            .coding = row.coding, .lineEnd = Usual_Line_End(text), .hasMark = hasMark, .unread = std::move(unread)};
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
    const QByteArray plain = Encoded_With(lines, row, form.unread);
    const QByteArray marked = row.mark.toByteArray() + plain;
    const QByteArray &bytes = form.hasMark ? marked : plain;
    if (Plain_Form again; Decode_Plain(bytes, &again) == text && again.coding == form.coding)
        return bytes;
    // What reads as another coding, or not as this text, would lose letters. Only the text's own coding holds what
    // could not be read.
    const Coding_Row &utf8 = Row_Of(Coding::Utf8);
    return form.unread.isEmpty() ? utf8.mark.toByteArray() + Encoded(lines, utf8) : marked;
}
