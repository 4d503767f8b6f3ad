// SPDX-License-Identifier: GPL-3.0-or-later
// room: extract
//
// The text of any bytes: a file that begins with the mark of its kind, a zero and the records of slides, or the parts
// of a package, names and contents that each end with a zero. It ends within its limit. Tools are not asked.
#include "platform/extract/text_extractor.h"
#include "platform/files/paths.h"
#include "support/zip_file.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace
{
/// Names and contents that each end with a zero.
Zip_File::Parts Parts_Of(const QByteArray &bytes)
{
    const QByteArrayList pieces = bytes.split('\0');
    Zip_File::Parts parts;
    for (qsizetype i = 0; i + 1 < pieces.size(); i += 2)
        parts.append({pieces[i], pieces[i + 1]});
    return parts;
}

/// A compound file of sectors of 4096 bytes: the table of sectors, the directory, and one stream.
QByteArray Slides(QByteArray records)
{
    constexpr qsizetype Sector = 4096;
    constexpr quint32 Chain_End = 0xFFFFFFFE;
    records.append(QByteArray(Sector - records.size() % Sector, '\0'));
    QByteArray head(Sector, '\xFF'), table, directory(Sector, '\0');
    head.replace(0, 8, QByteArray::fromHex("d0cf11e0a1b11ae1"));
    head.replace(30, 2, Zip_File::Little(quint16(12)));
    head.replace(48, 4, Zip_File::Little(quint32(1)));
    head.replace(76, 4, Zip_File::Little(quint32(0)));
    const auto last = static_cast<quint32>(1 + records.size() / Sector);
    for (quint32 sector = 0; sector < Sector / 4; ++sector)
        table += Zip_File::Little(sector < 2 || sector >= last ? Chain_End : sector + 1);
    const QString name = u"PowerPoint Document"_s;
    const QByteArray letters(reinterpret_cast<const char *>(name.utf16()), name.size() * 2);
    directory.replace(0, letters.size(), letters);
    directory.replace(64, 2, Zip_File::Little(static_cast<quint16>(letters.size() + 2)));
    directory.replace(116, 4, Zip_File::Little(quint32(2)));
    directory.replace(120, 4, Zip_File::Little(static_cast<quint32>(records.size())));
    return head + table + directory + records;
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("PATH", "");
    static QGuiApplication application(*argc, *argv); // QTextDocument asks it for fonts
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    constexpr qint64 Limit = 1 << 20;
    static const QTemporaryDir folder(u"/dev/shm/zelqor-fuzz-XXXXXX"_s);
    static const QString path = folder.filePath(u"a.bin"_s);
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const bool isFile = bytes.startsWith("PK\x03\x04") || bytes.startsWith("\xD0\xCF") || bytes.startsWith("{\\rtf");
    const bool areRecords = bytes.startsWith('\0');
    Files::Write_Bytes(path,
                       isFile       ? bytes
                       : areRecords ? Slides(bytes.mid(1))
                                    : Zip_File::Zip(Parts_Of(bytes)),
                       Files::Durability::Staging);
    if (ExtractText::TextExtractor().ExtractText(path, Limit).size() > Limit)
        std::abort();
    return 0;
}
