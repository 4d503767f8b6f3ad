// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/errors/run_time_error.h"
#include "platform/profile/profile.h"

#include <QString>
#include <QStringList>
#include <optional>

/// One language's texts: an INI file with a section for each form. It is parsed once for each load.
class Language_Pack
{
public:
    /// Loads `folder` + "/" + `language` + ".ini", the file being found without regard to case.
    /// @throws Run_Time_Error 53 when it is missing, 75 when it cannot be read; the pack is then empty.
    void Load(const QString &folder, const QString &language);
    /// Uses the texts of another file in the place of those that could not be loaded. @throws like Load.
    void Stand_In(const QString &path);

    /// Text of a key, at most 254 characters, NULs removed; "" when the key is missing.
    [[nodiscard]] QString GetString(const QString &section, const QString &key) const;
    /// Why the last load failed; each form that loads its captions records it.
    [[nodiscard]] const std::optional<Run_Time_Error> &Load_Error() const { return m_error; }
    /// False for a pack of length 0 or none: forms keep their design-time words.
    [[nodiscard]] bool Is_Loaded() const { return m_loaded; }
    [[nodiscard]] const Profile::Snapshot &Texts() const { return m_texts; }

private:
    Profile::Snapshot m_texts;
    std::optional<Run_Time_Error> m_error;
    bool m_loaded = false;
};

/// The pack in force.
Language_Pack &Language();

/// Puts the texts of the pack that the program carries in force.
void Load_Built_In_Language();

/// Loads the pack that the setting LANGUAGE names and gives the prompts their button words. Where its file is missing
/// or unreadable the error is recorded under `source`. The built-in texts stand in for it, and for a file of length 0,
/// so that no message is empty.
void Load_Language(const QString &source);

/// A text of the pack in force.
QString Pack_Text(const char *section, const char *key);
/// A pack's sentence with its places %1 to %9 filled. A place that the pack left out is passed over, and what a value
/// holds is never taken for a place.
QString Filled(const QString &sentence, const QStringList &values);
/// Words as a list, with the sign that the pack in force puts between them; a comma where it names none.
QString Pack_List(const QStringList &words);
