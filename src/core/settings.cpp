// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/settings.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/process_state.h"
#include "core/settings_table.h"
#include "platform/files/paths.h"
#include "platform/profile/profile.h"

#include <QHash>
#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace
{
const QString Source = QStringLiteral("Main/GetConfigInfo");

/// Keys that a new file also has under [Col], where nothing reads them.
constexpr const char *Misplaced_Keys[] = {"Op_DB_Type", "Op_DB_Sql"};

QString Config_Path()
{
    return App().App_Path + QStringLiteral("Config.ini");
}

/// The default table as one file, so that a new Config.ini stands whole or not at all.
void Write_Defaults()
{
    QString text;
    QString section;
    const auto line = [&](const QString &key, const QString &value) {
        text += key + u'=' + value + QLatin1String("\r\n");
    };
    for (const Setting &setting : Setting_Table()) {
        if (section != QLatin1String(setting.section)) {
            if (section == QLatin1String("Col")) {
                for (const char *key : Misplaced_Keys)
                    line(QLatin1String(key), QStringLiteral("0"));
            }
            section = QLatin1String(setting.section);
            text += u'[' + section + QLatin1String("]\r\n");
        }
        if (setting.initial != nullptr)
            line(QLatin1String(setting.key), Initial_Value(setting));
    }
    Files::Write_Bytes(Config_Path(), text.toUtf8());
}

/// The texts of the last read pass, by key; the record holds some of them converted.
using Raw_Values = QHash<QString, QString>;

/// Where the chosen folder for pictures is none here, that of a new file serves for this run.
void Make_Picture_Folder()
{
    if (Resume_Next([] { Files::Make_Directory(Config().Pic_Dir); }))
        return;
    Error_Log(Source);
    Config().Pic_Dir = Files::With_Final_Separator(Initial_Value(Setting_Named(QStringLiteral("Pic_Dir"))));
    Files::Make_Directory(Config().Pic_Dir);
}

QList<Healed_Setting> &Healed()
{
    static QList<Healed_Setting> healed;
    return healed;
}

const std::vector<const Setting *> &Checked_In_Turn()
{
    static const std::vector<const Setting *> checked = [] {
        std::vector<const Setting *> rows;
        for (const Setting &setting : Setting_Table()) {
            if (setting.turn != Turn::None)
                rows.push_back(&setting);
        }
        std::ranges::sort(rows, {}, &Setting::turn);
        return rows;
    }();
    return checked;
}

/// One run of GetConfigInfo over the file. What cannot be read or written does not end it: the record takes the values
/// that the file should have, and the first error is told at the end.
class Reading
{
public:
    explicit Reading(const Database_Steps &database) : m_database(database) {}

    void Run()
    {
        const bool isNew = !Exists(Config_Path());
        if (isNew)
            Try(Write_Defaults);
        Healed().clear();
        while (!Read_And_Check()) {
        }
        const bool isWhole = Healed().isEmpty();
        if (isNew) // what a new file has in another section was nobody's mistake
            Healed().clear();
        Config().Backup_Path = Files::With_Final_Separator(Config().Backup_Path);
        Config().Pic_Dir = Files::With_Final_Separator(Config().Pic_Dir);
        if (!m_trouble)
            Try(Make_Picture_Folder);
        if (isWhole)
            Try(Keep_Good_Copy);
        if (m_trouble)
            throw Run_Time_Error(*m_trouble);
    }

private:
    template <class Step>
    bool Try(Step step)
    {
        try {
            step();
            return true;
        } catch (const Run_Time_Error &error) {
            if (!m_trouble)
                m_trouble = error;
            return false;
        }
    }

    Raw_Values Read_Pass()
    {
        Profile::Snapshot file;
        const bool isRead = Try([&] { file = Profile::Snapshot(Config_Path()); });
        Raw_Values values;
        for (const Setting &setting : Setting_Table()) {
            constexpr qsizetype Own_Buffer = 512;
            const QString key = QLatin1String(setting.key);
            const QString value =
                isRead ? file.Value(QLatin1String(setting.section), key).left(Own_Buffer) : Healed_Value(setting);
            values.insert(key, value);
            Put_In_Record(setting, value);
        }
        return values;
    }

    /// A number that the record cannot take is recorded as what it is, and healed by its check.
    static void Put_In_Record(const Setting &setting, const QString &value)
    {
        Trap(
            Source, [&] { Store(Config(), setting, value); }, [&] { Store(Config(), setting, {}); });
    }

    /// The checks whose turns lie between two steps. @returns false when the whole file is to be read again.
    bool Check(int after, int before, const Raw_Values &values)
    {
        for (const Setting *setting : Checked_In_Turn()) {
            const QString value = values.value(QLatin1String(setting->key));
            if (setting->turn <= after || setting->turn >= before || Acceptable(*setting, value))
                continue;
            const QString healed = Healed_Value(*setting);
            // Not WriteIni: a file that refuses the value must not be read again for ever.
            const bool written = Try([&] { Write_Healed(*setting, healed); });
            Note(*setting, value, healed);
            if (written && setting->heal == Heal::Read_Again)
                return false;
            Store(Config(), *setting, setting->heal == Heal::View_Sum ? QStringLiteral("True") : healed);
        }
        return true;
    }

    static void Note(const Setting &setting, const QString &value, const QString &healed)
    {
        const QString key = QLatin1String(setting.key);
        const bool isNoted = std::ranges::any_of(Healed(), [&](const Healed_Setting &one) { return one.key == key; });
        if (!isNoted)
            Healed().append({key, value, healed});
    }

    static void Write_Healed(const Setting &setting, const QString &healed)
    {
        const QString section = QLatin1String(setting.section), key = QLatin1String(setting.key);
        try {
            Profile::Write(Config_Path(), section, key, healed);
        } catch (const Run_Time_Error &error) {
            throw Run_Time_Error(error.number, QStringLiteral("[%1] %2: ").arg(section, key) + error.description,
                                 error.failure);
        }
    }

    /// One read pass with its checks. @returns false when it must be repeated.
    bool Read_And_Check()
    {
        const Raw_Values values = Read_Pass();
        if (!Check(Turn::None, Turn::Paths_Resolved, values))
            return false;
        m_database.Resolve_Paths();
        if (!Check(Turn::Paths_Resolved, Turn::Database_Tested, values))
            return false;
        if (m_database.Find_And_Test() == Database_Check::Read_Again)
            return false;
        return Check(Turn::Database_Tested, std::numeric_limits<int>::max(), values);
    }

    /// A start that found nothing to heal keeps what it read, for the day on which the file is spoilt.
    static void Keep_Good_Copy()
    {
        const QString copy = App().App_Path + QStringLiteral("Config.bak");
        const QByteArray good = Files::Read_Bytes(Config_Path());
        if (!Exists(copy) || Files::Read_Bytes(copy) != good)
            Files::Write_Bytes(copy, good, Files::Durability::Staging);
    }

    const Database_Steps &m_database;
    std::optional<Run_Time_Error> m_trouble;
};
} // namespace

Settings_Record &Config()
{
    static Settings_Record record;
    return record;
}

Pending_Error GetConfigInfo(const Database_Steps &database)
{
    Pending_Error trouble;
    Trap(
        Source, [&] { Reading(database).Run(); }, [&] { trouble = Err(); });
    return trouble;
}

const QList<Healed_Setting> &Healed_Settings()
{
    return Healed();
}

bool Is_Shown(const QString &flag)
{
    return flag.toUpper() != QLatin1String("FALSE");
}
