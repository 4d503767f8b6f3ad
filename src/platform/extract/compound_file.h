// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>
#include <optional>

namespace ExtractText
{
/// The streams of a compound file ([MS-CFB], version 3 and 4). Chains that loop or leave the file end where they do so.
class Compound_File
{
public:
    /// @throws Run_Time_Error 53 or 75 when the file cannot be read
    explicit Compound_File(const QString &path);

    [[nodiscard]] bool Has(const QString &name);
    /// A stream of at least 4096 bytes by its name, at most `limit` bytes of it; "" when there is none.
    QByteArray Stream(const QString &name, qint64 limit);

private:
    struct Entry {
        quint32 first = 0;
        quint32 length = 0;
    };

    void Read_Tables();
    std::optional<Entry> Find(const QString &name);
    QByteArray Sector(quint32 number);
    QByteArray Chain(quint32 first, qint64 limit);

    QFile m_file;
    qint64 m_sectorSize = 0;
    quint32 m_directory = 0;
    QList<quint32> m_next; ///< the file allocation table
};
} // namespace ExtractText
