// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/lzma/zelqorfun.h"

#include "platform/files/atomic_file.h"
#include "platform/files/door.h"
#include "platform/lzma/lzma_coder.h"

#include <QFile>
#include <cstring>
#include <exception>

namespace
{
constexpr quint64 Largest_File = Q_UINT64_C(4) << 30;

Lzma_Coder::Source From_Bytes(const QByteArray &bytes)
{
    return [&bytes, place = qsizetype(0)](char *target, qint64 size) mutable {
        const qint64 given = std::min<qint64>(size, bytes.size() - place);
        std::memcpy(target, bytes.constData() + place, static_cast<size_t>(given));
        place += given;
        return given;
    };
}

Lzma_Coder::Sink To_Bytes(QByteArray &bytes)
{
    return [&bytes](const char *added, qint64 size) {
        bytes.append(added, size);
    };
}

/// A read error ends the text; what is then missing is noticed by the coder.
Lzma_Coder::Source From_File(QFile &file)
{
    return [&file](char *target, qint64 size) {
        return std::max<qint64>(file.read(target, size), 0);
    };
}

bool Encode_File(QFile &input, const Lzma_Coder::Sink &sink)
{
    return Lzma_Coder::Encode(From_File(input), static_cast<quint64>(input.size()), sink);
}

bool Decode_File(QFile &input, const Lzma_Coder::Sink &sink)
{
    const Lzma_Coder::Outcome outcome = Lzma_Coder::Decode(From_File(input), sink, Largest_File);
    const bool onlyEndDamaged = outcome.sizeKnown && outcome.missing <= quint64(Lzma_Damaged_End);
    return outcome.understood && (outcome.complete || onlyEndDamaged);
}

bool Run(const QByteArray &command, const QString &inputPath, const QString &outputPath)
{
    if (command != "e" && command != "d")
        return false;
    QFile input;
    Files::Open_To_Read(input, inputPath);
    // What the coder writes is staged for the next step; the database is what outlives the machine.
    Files::Atomic_File output(outputPath, Files::Durability::Staging);
    const auto sink = [&output](const char *bytes, qint64 size) {
        output.Write(bytes, size);
    };
    if (!(command == "e" ? Encode_File(input, sink) : Decode_File(input, sink)))
        return false;
    output.Commit();
    return true;
}
} // namespace

extern "C" qint32 zelqorfun(const char *command, const char *input_path, const char *output_path)
{
    if (!command || !input_path || !output_path)
        return 1;
    try {
        return Run(command, QString::fromUtf8(input_path), QString::fromUtf8(output_path)) ? 0 : 1;
    } catch (const std::exception &) {
        return 1; // the callers of this border know numbers only
    }
}

QByteArray Lzma_Encode(const QByteArray &plain)
{
    QByteArray stream;
    Lzma_Coder::Encode(From_Bytes(plain), static_cast<quint64>(plain.size()), To_Bytes(stream));
    return stream;
}

QByteArray Lzma_Decode(const QByteArray &stream, bool &complete, qint64 limit)
{
    QByteArray plain;
    const auto outcome =
        Lzma_Coder::Decode(From_Bytes(stream), To_Bytes(plain), static_cast<quint64>(std::max<qint64>(limit, 0)));
    complete = outcome.understood && outcome.complete;
    return plain;
}

// A range-coded stream is one large number, big end first, and decodes alike for every number from the one written up
// to that plus the coder's last range. The range never ends below 2^24 * 31 / 2048 (Range Encoder of the LZMA
// format's public description), so that the number may be raised to the next multiple of 256 and by 255 more.
void Lzma_Free_Last_Byte(QByteArray &stream)
{
    constexpr qsizetype headerSize = 13;
    qsizetype place = stream.size() - 1;
    if (place <= headerSize || stream.at(place) == '\0')
        return;
    stream[place] = '\0';
    do {
        --place;
        stream[place] = static_cast<char>(stream.at(place) + 1);
    } while (stream.at(place) == '\0' && place > headerSize);
}
