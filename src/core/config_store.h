// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// INI access of the program's own files. `file` is a bare name, joined to the program directory.

/// Writes one key, making the file if needed; errors are recorded under "WriteIni".
void WriteIni(const QString &section, const QString &key, const QString &value,
              const QString &file = QStringLiteral("Config.ini"));
/// Reads one key, at most 512 characters; "" when it is missing or on an error.
QString GetIni(const QString &section, const QString &key, const QString &file = QStringLiteral("Config.ini"));
/// Reads one key, at most 128 characters, from a file given by its full path; errors go under "GetIniA".
QString GetIniA(const QString &section, const QString &key, const QString &path);

/// A value of Config.ini that its owner alone reads, when it wants it: it has no default and no field in the record.
struct Kept_Value {
    const char *section;
    const char *key;

    /// "" when it was never kept.
    [[nodiscard]] QString Read() const { return GetIni(QLatin1String(section), QLatin1String(key)); }
    void Keep(const QString &value) const { WriteIni(QLatin1String(section), QLatin1String(key), value); }
};

constexpr int Attr_Directory = 16;
/// Whether a directory (`attr` 16) or a plain file (else) of that name exists; wildcards in the last name are
/// allowed. Errors go under "Exists".
bool Exists(const QString &path, int attr = 0);
