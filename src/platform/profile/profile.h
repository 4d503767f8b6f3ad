// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// INI files with the visible rules of the profile calls: sections and keys without regard to case, the first one of
/// a name counts, blanks around a value are dropped and then one pair of quotes around it; lines that are no key and
/// comments (";") stay where they are. The file is read for each call and written whole or not at all.
namespace Profile
{
/// "" when the file, the section or the key is missing, or the file cannot be read.
QString Read(const QString &path, const QString &section, const QString &key);
/// Sets one key on one line (line ends in the value become blanks), at the end of its section when it is new, making
/// file and section as needed; line ends are CR LF.
/// @throws Run_Time_Error 61, 70 or 75 when the file cannot be written; it is then as it was.
void Write(const QString &path, const QString &section, const QString &key, const QString &value);

/// All keys of a file, parsed once: for readers that ask for many.
class Snapshot
{
public:
    Snapshot() = default;
    /// @throws Run_Time_Error 53 or 75.
    explicit Snapshot(const QString &path);
    [[nodiscard]] QString Value(const QString &section, const QString &key) const;
    [[nodiscard]] bool Contains(const QString &section, const QString &key) const;
    /// Section names as spelled, in the order of the file.
    [[nodiscard]] QStringList Sections() const;
    /// Key names of a section as spelled, in the order of the file.
    [[nodiscard]] QStringList Keys(const QString &section) const;

private:
    struct Section {
        QString name;
        QStringList keys;
        QHash<QString, QString> values;
    };
    QHash<QString, Section> m_sections;
    QStringList m_order;
};
} // namespace Profile
