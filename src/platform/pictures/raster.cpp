// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pictures/raster.h"

#include "platform/errors/run_time_error.h"
#include "platform/files/door.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QtEndian>

#include <cmath>

namespace
{
constexpr int Most_Icons = 16; // pictures that are taken out of one icon file
constexpr int Icon_Side = 256;
constexpr qint64 Most_Visits = 1'500'000'000; // of pixels, while a picture is decoded
constexpr qint64 Most_Icon_Pixels = 1024 * 1024;

struct Format {
    const char *name; ///< as the toolkit has it
    QByteArrayView begin;
};

/// First bytes: ISO/IEC 15948 5.2, ISO/IEC 10918-1 B.1.1.3, GIF89a 17, BITMAPFILEHEADER, ICONDIR, RFC 9649, TIFF 6.0.
constexpr Format Formats[] = {
    {"png", QByteArrayView("\x89PNG\r\n\x1a\n", 8)},
    {"jpeg", QByteArrayView("\xFF\xD8\xFF", 3)},
    {"gif", QByteArrayView("GIF8", 4)},
    {"bmp", QByteArrayView("BM", 2)},
    {"ico", QByteArrayView("\0\0\1\0", 4)},
    {"webp", QByteArrayView("RIFF", 4)},
    {"tiff", QByteArrayView("II*\0", 4)},
    {"tiff", QByteArrayView("MM\0*", 4)},
};
constexpr qsizetype Longest_Begin = 8;

const char *Format_Of(QByteArrayView bytes)
{
    for (const Format &format : Formats) {
        if (bytes.startsWith(format.begin))
            return format.name;
    }
    return nullptr;
}

/// A number of an icon file or of a picture within it.
template <class Number>
quint32 Number_At(const QByteArray &bytes, qsizetype at, bool bigEndian = false)
{
    if (at + static_cast<qsizetype>(sizeof(Number)) > bytes.size())
        return 0;
    const char *from = bytes.data() + at;
    return bigEndian ? qFromBigEndian<Number>(from) : qFromLittleEndian<Number>(from);
}

/// Pictures within an icon file say their size themselves, whatever its directory promises.
bool Holds_Small_Pictures(const QByteArray &icon)
{
    const int count = std::min<int>(Most_Icons, static_cast<int>(Number_At<quint16>(icon, 4)));
    for (int i = 0; i < count; ++i) {
        const qsizetype at = Number_At<quint32>(icon, 6 + 16 * i + 12);
        const bool png = QByteArrayView(icon).sliced(std::min(at, icon.size())).startsWith(Formats[0].begin);
        const quint32 width = Number_At<quint32>(icon, at + (png ? 16 : 4), png);
        const quint32 height = Number_At<quint32>(icon, at + (png ? 20 : 8), png); // of a bitmap and its mask
        if (quint64{width} * height > 2 * Most_Icon_Pixels)
            return false;
    }
    return true;
}

/// How often a JPEG file goes over its pixels (ISO/IEC 10918-1 B.2: a segment tells its length, what stands between
/// two of them holds no marker but those of restarts).
int Scans_Of(const QByteArray &jpeg)
{
    constexpr uchar Start_Of_Scan = 0xDA, End_Of_Image = 0xD9;
    int scans = 0;
    qsizetype at = 2;
    while (at + 4 <= jpeg.size()) {
        const auto marker = static_cast<uchar>(jpeg[at + 1]);
        const bool standsAlone = marker == 0 || marker == 0xFF || (marker >= 0xD0 && marker <= 0xD7);
        if (static_cast<uchar>(jpeg[at]) != 0xFF || standsAlone) {
            ++at;
            continue;
        }
        if (marker == End_Of_Image)
            break;
        scans += marker == Start_Of_Scan ? 1 : 0;
        at += 2 + static_cast<qsizetype>(Number_At<quint16>(jpeg, at + 2, true));
    }
    return scans;
}

/// Reads bytes as the one format that they begin as.
class Reader
{
public:
    explicit Reader(const QByteArray &bytes)
    {
        const char *format = bytes.size() > Raster::Largest_File ? nullptr : Format_Of(bytes);
        if (format == nullptr || (qstrcmp(format, "ico") == 0 && !Holds_Small_Pictures(bytes)))
            return;
        QImageReader::setAllocationLimit(static_cast<int>(Raster::Most_Pixels * 4 >> 20)); // in megabytes
        m_buffer.setData(bytes);
        m_buffer.open(QIODevice::ReadOnly);
        m_reader.setAutoDetectImageFormat(false);
        m_reader.setFormat(format);
        m_reader.setDevice(&m_buffer);
    }

    /// The size of the picture that comes next; invalid when it is refused.
    [[nodiscard]] QSize Size() const
    {
        if (m_reader.device() == nullptr)
            return {};
        const QSize size = m_reader.size();
        const bool fits = !size.isEmpty() && std::max(size.width(), size.height()) <= Raster::Longest_Side &&
                          qint64{size.width()} * size.height() <= Raster::Most_Pixels;
        return fits ? size : QSize();
    }

    QImage Read(qint64 mostPixels)
    {
        const QSize size = Size();
        if (!size.isValid() || !Is_Soon_Decoded(size))
            return {};
        const double share = static_cast<double>(mostPixels) / (static_cast<double>(size.width()) * size.height());
        if (share < 1)
            m_reader.setScaledSize((QSizeF(size) * std::sqrt(share)).toSize().expandedTo({1, 1}));
        return m_reader.read();
    }

    [[nodiscard]] QImageReader &Toolkit() { return m_reader; }

private:
    [[nodiscard]] bool Is_Soon_Decoded(const QSize &size) const
    {
        const qint64 scans = m_reader.format() == "jpeg" ? Scans_Of(m_buffer.data()) : 1;
        return scans * size.width() * size.height() <= Most_Visits;
    }

    QBuffer m_buffer;
    QImageReader m_reader;
};

/// Opens a file that may be a picture's by its size.
bool Open(QFile &file, const QString &path)
{
    const std::optional<Files::Entry> entry = Files::Look(path);
    if (!entry || entry->is_folder || entry->size <= 0 || entry->size > Raster::Largest_File)
        return false;
    try {
        Files::Open_To_Read(file, path);
        return true;
    } catch (const Run_Time_Error &) {
        return false; // it went, or may not be read
    }
}
} // namespace

QSize Raster::Size(const QByteArray &bytes)
{
    return Reader(bytes).Size();
}

QImage Raster::Decode(const QByteArray &bytes, qint64 mostPixels, bool upright)
{
    Reader reader(bytes);
    reader.Toolkit().setAutoTransform(upright);
    return reader.Read(mostPixels);
}

QIcon Raster::Icon(const QByteArray &bytes)
{
    Reader reader(bytes);
    const int count = std::min(reader.Toolkit().imageCount(), Most_Icons);
    QIcon icon;
    for (int i = 0; i < std::max(1, count) && (i == 0 || reader.Toolkit().jumpToImage(i)); ++i) {
        const QSize size = reader.Size();
        const bool small = qint64{size.width()} * size.height() <= Most_Icon_Pixels;
        if (const QImage image = small ? reader.Read(Icon_Side * Icon_Side) : QImage(); !image.isNull())
            icon.addPixmap(QPixmap::fromImage(image));
        if (qstrcmp(reader.Toolkit().format(), "ico") != 0)
            break; // the others are steps of a film
    }
    return icon;
}

QByteArray Raster::Read_File(const QString &path)
{
    QFile file;
    if (!Open(file, path))
        return {};
    QByteArray bytes = file.read(Largest_File);
    return Size(bytes).isValid() ? bytes : QByteArray();
}

bool Raster::Is_Picture_File(const QString &path)
{
    QFile file;
    return Open(file, path) && Format_Of(file.read(Longest_Begin)) != nullptr;
}
