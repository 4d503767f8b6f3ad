// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_pictures.h"

#include "platform/pictures/raster.h"
#include "platform/richtext/rtf_tokens.h"

#include <QBuffer>
#include <QImage>
#include <QtEndian>

#include <algorithm>
#include <optional>

namespace Rtf
{
namespace
{
constexpr int largestSide = 31'680; // twips: 22 inches, the widest page of word processors
constexpr int twipsPerPixel = 15;

quint32 Word_At(QByteArrayView bytes, qsizetype at, int size)
{
    if (at < 0 || at + size > bytes.size())
        return 0;
    const auto *data = reinterpret_cast<const uchar *>(bytes.data() + at);
    return size == 2 ? qFromLittleEndian<quint16>(data) : qFromLittleEndian<quint32>(data);
}

/// Bytes between a bitmap's beginning and its pixels: header, masks and colour table (wingdi.h, BITMAPINFO).
qsizetype Pixel_Offset(QByteArrayView bitmap)
{
    const quint32 header = Word_At(bitmap, 0, 4);
    if (header == 12)
        return 12 + (Word_At(bitmap, 10, 2) <= 8 ? 3 << Word_At(bitmap, 10, 2) : 0);
    const quint32 bits = Word_At(bitmap, 14, 2);
    const quint32 colors = Word_At(bitmap, 32, 4);
    const quint32 masks = header == 40 && Word_At(bitmap, 16, 4) == 3 ? 12 : 0;
    const quint32 entries = colors ? std::min(colors, 256U) : (bits <= 8 ? 1U << bits : 0U);
    return static_cast<qsizetype>(header) + masks + 4 * entries;
}

bool Is_Bitmap(QByteArrayView bitmap)
{
    const quint32 header = Word_At(bitmap, 0, 4);
    return (header == 12 || (header >= 40 && header <= 124)) && bitmap.size() > static_cast<qsizetype>(header);
}

QByteArray As_Bitmap_File(QByteArrayView bitmap)
{
    QByteArray file(Bitmap_File_Header, '\0');
    file[0] = 'B';
    file[1] = 'M';
    qToLittleEndian(static_cast<quint32>(bitmap.size() + Bitmap_File_Header), file.data() + 2);
    qToLittleEndian(static_cast<quint32>(Pixel_Offset(bitmap) + Bitmap_File_Header), file.data() + 10);
    return file.append(bitmap.data(), bitmap.size());
}

/// The bitmap that a Windows metafile stretches, if it does ([MS-WMF] 2.3.1: record size in words, function, data).
std::optional<QByteArrayView> Bitmap_In_Metafile(QByteArrayView file)
{
    qsizetype at = Word_At(file, 0, 4) == 0x9AC6CDD7 ? 22 + 18 : 18; // placeable header, then the standard one
    while (at + 6 <= file.size()) {
        const qsizetype size = static_cast<qsizetype>(Word_At(file, at, 4)) * 2;
        const quint32 function = Word_At(file, at + 4, 2);
        if (size < 6 || function == 0)
            break;
        const qsizetype skipped = function == 0x0F43 ? 28 : function == 0x0B41 ? 26 : function == 0x0940 ? 22 : 0;
        if (skipped && at + skipped < file.size()) {
            const QByteArrayView bitmap = file.sliced(at + skipped, std::min(size, file.size() - at) - skipped);
            if (Is_Bitmap(bitmap))
                return bitmap;
        }
        at += size;
    }
    return {};
}

/// The bitmap of an enhanced metafile's EMR_STRETCHDIBITS ([MS-EMF] 2.3.1.7).
std::optional<QByteArray> Bitmap_In_Enhanced(QByteArrayView file)
{
    for (qsizetype at = 0; at + 8 <= file.size();) {
        const auto size = static_cast<qsizetype>(Word_At(file, at + 4, 4));
        if (size < 8)
            break;
        if (Word_At(file, at, 4) == 81 && size >= 80) {
            const QByteArrayView record = file.sliced(at, std::min(size, file.size() - at));
            const auto part = [&](qsizetype offsetField) {
                const auto offset = static_cast<qsizetype>(Word_At(record, offsetField, 4));
                const auto length = static_cast<qsizetype>(Word_At(record, offsetField + 4, 4));
                const qsizetype begin = std::min(offset, record.size());
                return record.sliced(begin, std::min(length, record.size() - begin));
            };
            const QByteArray bitmap = part(48).toByteArray() + part(56).toByteArray();
            if (Is_Bitmap(bitmap))
                return bitmap;
        }
        at += size;
    }
    return {};
}

QByteArray As_Png(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A device-dependent bitmap (\wbitmap): rows from the top, of 1 or 24 or 32 bits a pixel.
QByteArray Device_Bitmap(const Picture_Source &source)
{
    const int bits = source.bitsPerPixel;
    const qint64 rowBytes = source.rowBytes;
    if (source.width <= 0 || source.height <= 0 || source.width > 30'000 || source.height > 30'000 ||
        rowBytes * 8 < static_cast<qint64>(source.width) * bits || source.bytes.size() < rowBytes * source.height)
        return {};
    const auto format = bits == 1    ? QImage::Format_Mono
                        : bits == 24 ? QImage::Format_BGR888
                        : bits == 32 ? QImage::Format_RGB32
                                     : QImage::Format_Invalid;
    if (format == QImage::Format_Invalid || (bits == 32 && rowBytes % 4 != 0))
        return {};
    QImage image(reinterpret_cast<const uchar *>(source.bytes.constData()), source.width, source.height, rowBytes,
                 format);
    if (bits == 1)
        image.setColorTable({0xFF000000U, 0xFFFFFFFFU});
    return As_Png(image);
}

QByteArray File_Bytes(const Picture_Source &source)
{
    switch (source.kind) {
    case Picture_Kind::Device_Independent:
        return Is_Bitmap(source.bytes) ? As_Bitmap_File(source.bytes) : source.bytes;
    case Picture_Kind::Device_Dependent:
        return Device_Bitmap(source);
    case Picture_Kind::Windows_Metafile:
        if (const auto bitmap = Bitmap_In_Metafile(source.bytes))
            return As_Bitmap_File(*bitmap);
        break;
    case Picture_Kind::Enhanced_Metafile:
        if (const auto bitmap = Bitmap_In_Enhanced(source.bytes))
            return As_Bitmap_File(*bitmap);
        break;
    default:
        break;
    }
    return source.bytes;
}

/// Twips of a whole picture's side.
int Whole_Side(int goal, int given, bool metafile, int pixels)
{
    const qint64 natural = goal > 0 ? goal : metafile ? given * qint64{1440} / 2540 : 0;
    return static_cast<int>(std::clamp<qint64>(natural > 0 ? natural : pixels * twipsPerPixel, 0, largestSide));
}

/// What cropping leaves of a side, which begins at a part of the whole.
struct Cropped_Side {
    Cropped_Side(int side, int before, int after, int scale)
    {
        before = std::clamp(before, 0, side);
        after = std::clamp(after, 0, side);
        const bool isSane = side > 0 && before + after < side;
        const int left = isSane ? side - before - after : side;
        const int percent = scale > 0 && scale <= 10'000 ? scale : 100;
        length = static_cast<int>(std::clamp<qint64>(qint64{left} * percent / 100, 0, largestSide));
        begin = isSane ? static_cast<double>(before) / side : 0;
        share = isSane ? static_cast<double>(left) / side : 1;
    }
    int length; ///< shown, in twips
    double begin, share;
};
} // namespace

void Append_Hex(Picture_Source &source, std::string_view digits)
{
    const qsizetype before = source.bytes.size();
    source.bytes.resize(before + static_cast<qsizetype>(digits.size() + 1) / 2);
    char *out = source.bytes.data() + before;
    for (const char digit : digits) {
        const int value = Hex_Value(digit);
        if (value < 0)
            continue;
        if (source.halfByte < 0) {
            source.halfByte = value;
        } else {
            *out++ = static_cast<char>(source.halfByte * 16 + value);
            source.halfByte = -1;
        }
    }
    source.bytes.truncate(out - source.bytes.constData());
}

Picture_Kind Kind_Of_File(QByteArrayView bytes)
{
    if (bytes.startsWith("\x89PNG"))
        return Picture_Kind::Png;
    if (bytes.startsWith("\xFF\xD8\xFF"))
        return Picture_Kind::Jpeg;
    if (bytes.startsWith("BM") && bytes.size() > Bitmap_File_Header && Is_Bitmap(bytes.sliced(Bitmap_File_Header)))
        return Picture_Kind::Device_Independent;
    if (Word_At(bytes, 0, 4) == 1 && Word_At(bytes, 40, 4) == 0x464D4520)
        return Picture_Kind::Enhanced_Metafile;
    if (Word_At(bytes, 0, 4) == 0x9AC6CDD7 || Word_At(bytes, 0, 4) == 0x00090001)
        return Picture_Kind::Windows_Metafile;
    return Picture_Kind::Unknown;
}

QSize Pixel_Size(const QByteArray &bytes)
{
    return Raster::Size(bytes);
}

Picture Finish_Picture(Picture_Source &&source)
{
    Picture picture;
    const bool metafile =
        source.kind == Picture_Kind::Windows_Metafile || source.kind == Picture_Kind::Enhanced_Metafile;
    picture.bytes = File_Bytes(source);
    int width = Whole_Side(source.goalWidth, source.width, metafile, 0);
    int height = Whole_Side(source.goalHeight, source.height, metafile, 0);
    if (width == 0 || height == 0) {
        const QSize pixels = Pixel_Size(picture.bytes);
        width = Whole_Side(0, 0, false, std::min(pixels.width(), largestSide));
        height = Whole_Side(0, 0, false, std::min(pixels.height(), largestSide));
    }
    const Cropped_Side across(width, source.cropLeft, source.cropRight, source.scaleX);
    const Cropped_Side down(height, source.cropTop, source.cropBottom, source.scaleY);
    picture.width = across.length;
    picture.height = down.length;
    picture.part = {across.begin, down.begin, across.share, down.share};
    return picture;
}
} // namespace Rtf
