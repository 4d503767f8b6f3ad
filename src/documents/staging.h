// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// Staging files of one operation in data\temp\: names that share a number drawn for it. One that exists already is
/// a reason to draw once more, and only once.
class Staging
{
public:
    /// @param suffixes  the names behind the number, as "temp1.RTF" or "zip.cc"
    /// @throws Run_Time_Error 75 when data\temp\ cannot be made.
    Staging(int numbersBelow, const QStringList &suffixes);

    /// Full path of one of the names.
    [[nodiscard]] QString Path(const QString &suffix) const;
    /// Deletes one of the files if it is there.
    void Drop(const QString &suffix) const;
    /// Whether the number was drawn a second time.
    [[nodiscard]] bool Was_Redrawn() const { return m_redrawn; }

private:
    void Draw(int numbersBelow);
    [[nodiscard]] bool Clashes(const QStringList &suffixes) const;

    QString m_folder;
    QString m_number;
    bool m_redrawn = false;
};
