// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A report of long work under report\. Each line is written by itself, with a blank before and behind it and an empty
/// line after it, to the end of the file: two runs may share a name.
class Report
{
public:
    /// @param prefix  begins the name; year, month, day, hour and the product of minute and second follow, none of
    /// them with leading zeros.
    /// @throws Run_Time_Error when the folder cannot be made.
    explicit Report(const QString &prefix);
    /// @throws Run_Time_Error when the line cannot be written.
    void Line(const QString &text) const;
    /// As the system spells it.
    [[nodiscard]] const QString &Path() const { return m_path; }

private:
    QString m_path;
};

/// Now, as reports write it.
QString Report_Time();
