// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <deque>
#include <functional>

struct zip;

/// Writes a ZIP file. Names and bytes are the program's own; the file lies in a folder of the program's.
class Zip_Writer
{
public:
    /// @param path  of the file, which is made or replaced. @throws Run_Time_Error 75
    explicit Zip_Writer(const QString &path);
    /// Leaves nothing behind unless it was finished.
    ~Zip_Writer();
    Zip_Writer(const Zip_Writer &) = delete;
    Zip_Writer &operator=(const Zip_Writer &) = delete;

    /// Entries stand in the file in the order in which they are added.
    /// @param isPacked  false for bytes that are so already
    void Add(const QString &name, const QByteArray &bytes, bool isPacked = true);
    /// The same for bytes of a file, which must stay until the end.
    void Add_Part(const QString &name, const QString &file, qint64 begin, qint64 size, bool isPacked = true);
    /// Writes the file. @param stop  asked now and then whether the work is called off
    /// @returns false when it was; @throws Run_Time_Error 61 on a full disk, 75 else
    bool Finish(const std::function<bool()> &stop);

private:
    void Add_Source(const QString &name, void *source, bool isPacked);
    [[noreturn]] void Fail();

    QString m_path;
    std::deque<QByteArray> m_added; ///< what the archive reads at the end
    zip *m_zip = nullptr;
};
