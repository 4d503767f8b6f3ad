// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/settings.h"

#include <span>
#include <variant>

/// What an unacceptable value costs.
enum class Heal {
    Read_Again, ///< write the heal value and read the whole file again
    Go_On,      ///< write the heal value, put it in the record, go on with the next check
    View_Sum,   ///< as Go_On, but the record gets "True" until the next read
};

/// Values that depend on the machine, the clock or the program directory.
enum class Computed { None, Language, Now, Today, Backup_Path, Picture_Path };

/// The numbers that a setting may have. Where there are none, it may have any text.
struct Numbers {
    double least = 0;
    double most = -1;
    bool whole = true;
    [[nodiscard]] constexpr bool Are_Any() const { return most < least; }
};

/// Turns of the checks between which the two steps of the database's lifecycle stand.
namespace Turn
{
inline constexpr int None = 0; ///< any value stands
inline constexpr int Paths_Resolved = 10;
inline constexpr int Database_Tested = 20;
} // namespace Turn

struct Setting {
    const char *section;
    const char *key;
    const char *initial; ///< what a new file gets; nullptr: the key is not written
    Setting_Field field;
    int turn = Turn::None; ///< of its check, in rising order
    Numbers numbers = {};
    Heal heal = Heal::Read_Again;
    const char *healed = nullptr; ///< what an empty key gets, when that is not `initial`
    Computed computed = Computed::None;
};

/// All keys in the order of a new file, which is also the order of reading.
std::span<const Setting> Setting_Table();
/// @throws Run_Time_Error 75 for a name that is no setting
const Setting &Setting_Named(const QString &key);
const Setting &Setting_Of(const Setting_Field &field);

/// Whether a value that was read may stand.
bool Acceptable(const Setting &setting, const QString &value);
/// The value of a new file, and the one that an unacceptable value is replaced by.
QString Initial_Value(const Setting &setting);
QString Healed_Value(const Setting &setting);
/// Puts a text in the record. @throws Run_Time_Error 13 (type mismatch) or 6 (overflow) for MAX_RECORD.
void Store(Settings_Record &record, const Setting &setting, const QString &value);
/// The two words of a switch, spelled as its value in a new file: "1" and "0", "TRUE" and "FALSE", "True" and "False".
QString Switch_Text(const Setting &setting, bool on);
/// Whether a switch of that text is on: "1", or anything but "FALSE" in any case.
bool Is_On(const Setting &setting, const QString &text);
/// The text that a setting has in the record.
QString Text_Of(const Settings_Record &record, const Setting &setting);
/// Puts a value in the record and writes it to Config.ini.
/// @throws Run_Time_Error as Store and as Profile::Write; the record has the value only when the file has it.
void Change(const Setting &setting, const QString &value);
