// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/compound_file.h"

#include "platform/files/door.h"

#include <QtEndian>
#include <algorithm>

namespace ExtractText
{
namespace
{
// Places in the header and in a directory entry: [MS-CFB] 2.2 and 2.6.1.
constexpr qsizetype Header_Size = 512;
constexpr qsizetype Sector_Shift = 30;
constexpr qsizetype First_Directory = 48;
constexpr qsizetype First_Table_Chain = 68;
constexpr qsizetype Table_Sectors = 76;
constexpr qsizetype Entry_Size = 128;
constexpr qsizetype Name_Length = 64;
constexpr qsizetype Entry_Start = 116;
constexpr qsizetype Entry_Length = 120;
constexpr quint32 Largest_Regular = 0xFFFFFFFA;
constexpr quint32 Smallest_Own_Chain = 4096;

quint32 Number_At(const QByteArray &bytes, qsizetype place)
{
    return place + 4 <= bytes.size() ? qFromLittleEndian<quint32>(bytes.constData() + place) : Largest_Regular + 1;
}

quint16 Short_At(const QByteArray &bytes, qsizetype place)
{
    return place + 2 <= bytes.size() ? qFromLittleEndian<quint16>(bytes.constData() + place) : quint16(0);
}
} // namespace

Compound_File::Compound_File(const QString &path)
{
    Files::Open_To_Read(m_file, path);
    Read_Tables();
}

void Compound_File::Read_Tables()
{
    const QByteArray header = m_file.read(Header_Size);
    const quint16 shift = Short_At(header, Sector_Shift);
    if (header.size() < Header_Size || (shift != 9 && shift != 12))
        return;
    m_sectorSize = qint64(1) << shift;
    m_directory = Number_At(header, First_Directory);
    QList<quint32> tables;
    for (qsizetype place = Table_Sectors; place < Header_Size; place += 4)
        tables << Number_At(header, place);
    const qint64 sectors = m_file.size() / m_sectorSize + 1;
    const qint64 most = tables.size() + sectors * 4 / m_sectorSize; // a table has four bytes for each sector
    quint32 more = Number_At(header, First_Table_Chain);
    while (more < Largest_Regular && tables.size() <= most) {
        const QByteArray list = Sector(more);
        if (list.size() < m_sectorSize)
            break;
        for (qsizetype place = 0; place + 4 < list.size(); place += 4)
            tables << Number_At(list, place);
        more = Number_At(list, list.size() - 4);
    }
    for (const quint32 table : tables) {
        if (table >= Largest_Regular || m_next.size() > sectors)
            continue;
        const QByteArray bytes = Sector(table);
        for (qsizetype place = 0; place < bytes.size(); place += 4)
            m_next << Number_At(bytes, place);
    }
}

QByteArray Compound_File::Sector(quint32 number)
{
    const qint64 place = (qint64(number) + 1) * m_sectorSize;
    return m_file.seek(place) ? m_file.read(m_sectorSize) : QByteArray();
}

QByteArray Compound_File::Chain(quint32 first, qint64 limit)
{
    QByteArray bytes, part;
    quint32 sector = first;
    do {
        part = sector < Largest_Regular ? Sector(sector) : QByteArray();
        bytes += part;
        sector = m_next.value(static_cast<qsizetype>(sector), Largest_Regular);
    } while (part.size() == m_sectorSize && bytes.size() < limit && bytes.size() <= m_file.size());
    return bytes.left(limit);
}

std::optional<Compound_File::Entry> Compound_File::Find(const QString &name)
{
    if (m_sectorSize == 0)
        return {};
    constexpr qint64 Largest_Directory = 1 << 22;
    const QByteArray directory = Chain(m_directory, Largest_Directory);
    for (qsizetype entry = 0; entry + Entry_Size <= directory.size(); entry += Entry_Size) {
        const qsizetype letters = std::min<qsizetype>(Short_At(directory, entry + Name_Length) / 2, 32) - 1;
        if (letters != name.size())
            continue;
        const auto *text = reinterpret_cast<const char16_t *>(directory.constData() + entry);
        if (QStringView(text, letters) == name)
            return Entry{Number_At(directory, entry + Entry_Start), Number_At(directory, entry + Entry_Length)};
    }
    return {};
}

bool Compound_File::Has(const QString &name)
{
    return Find(name).has_value();
}

QByteArray Compound_File::Stream(const QString &name, qint64 limit)
{
    const std::optional<Entry> entry = Find(name);
    if (!entry || entry->length < Smallest_Own_Chain)
        return {};
    return Chain(entry->first, std::min<qint64>(entry->length, limit));
}
} // namespace ExtractText
