// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/settings_table.h"

#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/errors/run_time_error.h"
#include "platform/machine/machine.h"

#include <algorithm>
#include <limits>

namespace
{
constexpr qint32 Overflow = 6;
constexpr qint32 Type_Mismatch = 13;
constexpr double Largest_Colour = 0xFFFFFF;
constexpr double Longest_Side = 100'000; // of a pane, in twips or pixels
constexpr int Simplified_Chinese = 0x804;

using R = Settings_Record;
constexpr auto Computed_Here = "";

// clang-format off
constexpr Setting Table[] = {
    {"Page", "LANGUAGE", Computed_Here, &R::LANGUAGE, Heal::Read_Again, nullptr, Computed::Language},
    {"Page", "Theme", "10", &R::Theme},
    {"Page", "MAX_RECORD", "46", &R::MAX_RECORD},
    {"Page", "COB_UPDATE", "W", &R::COB_UPDATE},
    {"Page", "COB_UPDATE_DATE", Computed_Here, &R::COB_UPDATE_DATE, Heal::Read_Again, nullptr, Computed::Now},
    {"Page", "H_RULER", "FALSE", &R::H_RULER, Heal::Never},
    {"Page", "V_RULER", "FALSE", &R::V_RULER, Heal::Never},
    {"Page", "M_FILE", "TRUE", &R::M_FILE},
    {"Page", "M_AUTO", "TRUE", &R::M_AUTO},
    {"Page", "M_TOOL", "TRUE", &R::M_TOOL},
    {"Page", "TrvWidth", "3375", &R::TrvWidth},
    {"Page", "FileHeight", "1575", &R::FileHeight},
    {"DataBase", "CH_PATH", "1", &R::CH_PATH},
    {"DataBase", "DATABASE_NAME", "\\data\\Zelqor.db", &R::DATABASE_NAME, Heal::Never},
    {"DataBase", "EXPORT_NAME", "\\data\\Zelqor_bak.db", &R::EXPORT_NAME},
    {"DataBase", "Op_DB_Type", nullptr, &R::Op_DB_Type, Heal::Read_Again, "0"},
    {"DataBase", "Op_DB_Sql", nullptr, &R::Op_DB_Sql, Heal::Read_Again, "0"},
    {"Else", "TC_LEFT", "0", &R::TC_LEFT},
    {"Else", "TC_TOP", "0", &R::TC_TOP},
    {"Col", "KEYS_NUM", "10", &R::KEYS_NUM, Heal::Go_On},
    {"Col", "Hot_NUM", "50", &R::Hot_NUM, Heal::Go_On},
    {"Col", "KEYS", ",", &R::KEYS},
    {"Col", "Col_Cont", "16777215", &R::Col_Cont},
    {"Col", "Col_Frm", "16777215", &R::Col_Frm},
    {"Col", "Col_List", "10019561", &R::Col_List},
    {"Col", "Lsv_BColor", "16777215", &R::Lsv_BColor},
    {"Col", "CH_MAIN", "1", &R::CH_MAIN},
    {"Col", "CH_MIN", "0", &R::CH_MIN},
    {"Col", "CH_FLOAT", "1", &R::CH_FLOAT},
    {"Col", "CH_Save", "0", &R::CH_Save},
    {"Col", "CH_Close", "1", &R::CH_Close},
    {"Col", "CH_Lock", "0", &R::CH_Lock},
    {"Col", "CH_Tree_Comfirm", "1", &R::CH_Tree_Comfirm, Heal::Go_On},
    {"Col", "CH_ByDate", "FALSE", &R::CH_ByDate, Heal::Go_On, "TRUE"},
    {"Col", "CH_Tags", "TRUE", &R::CH_Tags, Heal::Go_On, "FALSE"},
    {"Col", "CH_Find", "TRUE", &R::CH_Find, Heal::Go_On},
    {"Col", "CH_Hot", "FALSE", &R::CH_Hot, Heal::Go_On, "TRUE"},
    {"Col", "CH_Tree_ToolTips", "0", &R::CH_Tree_ToolTips},
    {"Col", "CH_Lsv_ToolTips", "0", &R::CH_Lsv_ToolTips},
    {"Col", "CH_Style_Classic", "1", &R::CH_Style_Classic},
    {"Col", "CH_Lsv_Grid", "0", &R::CH_Lsv_Grid},
    {"Col", "CH_Lsv_Detail", "1", &R::CH_Lsv_Detail},
    {"Col", "FontName_Cont", "宋体", &R::FontName_Cont},
    {"Col", "FontSize_Cont", "10", &R::FontSize_Cont, Heal::Read_Again, "9"},
    {"Col", "FontName_LSV", "宋体", &R::FontName_LSV},
    {"Col", "FontSize_LSV", "10", &R::FontSize_LSV},
    {"Col", "FontName_Tree", "宋体", &R::FontName_Tree},
    {"Col", "FontSize_Tree", "10", &R::FontSize_Tree},
    {"Col", "Cob_OrderBy", "2", &R::Cob_OrderBy},
    {"Col", "Cob_LineSpace", "0", &R::Cob_LineSpace},
    {"Col", "Cob_K9", "000", &R::Cob_K9},
    {"Col", "Cob_AddinFileType", "0", &R::Cob_AddinFileType},
    {"Col", "Cob_ImportFileType", "3", &R::Cob_ImportFileType},
    {"Col", "CH_Instance", "1", &R::CH_Instance},
    {"Col", "CH_About", "1", &R::CH_About},
    {"Col", "CH_Tab", "0", &R::CH_Tab},
    {"Col", "CH_PicSaveDb", "0", &R::CH_PicSaveDb},
    {"Col", "CH_Exp_Node", "1", &R::CH_Exp_Node},
    {"Col", "CH_Auto_Save", "0", &R::CH_Auto_Save},
    {"Col", "COB_Auto_Save", "30", &R::COB_Auto_Save},
    {"Col", "Key_Name", "", &R::Key_Name, Heal::Never},
    {"Col", "Txt_Memo_Width", "250", &R::Txt_Memo_Width},
    {"Col", "Txt_Sum_Width", "250", &R::Txt_Sum_Width},
    {"Col", "ViewSum", "False", &R::ViewSum, Heal::View_Sum},
    {"Col", "ViewMemo", "False", &R::ViewMemo},
    {"Col", "ShowLow", "TRUE", &R::ShowLow},
    {"Col", "Cob_Exit", "0", &R::Cob_Exit},
    {"Col", "Backup_Num", "7", &R::Backup_Num},
    {"Col", "Backup_Path", Computed_Here, &R::Backup_Path, Heal::Read_Again, nullptr, Computed::Backup_Path},
    {"Col", "Backup_Date", Computed_Here, &R::Backup_Date, Heal::Read_Again, nullptr, Computed::Today},
    {"Col", "Op_Editor", "0", &R::Op_Editor},
    {"Col", "CH_KeepWord", "1", &R::CH_KeepWord},
    {"Col", "CH_HideSelect", "1", &R::CH_HideSelect},
    {"Col", "Op_OfficeType", "0", &R::Op_OfficeType},
    {"Col", "Pic_Dir", Computed_Here, &R::Pic_Dir, Heal::Read_Again, nullptr, Computed::Picture_Path},
    {"Col", "User_Tools", "", &R::User_Tools, Heal::Never},
    {"Col", "Tree_LastKey", nullptr, &R::Tree_LastKey, Heal::Never},
    {"ViewMode", "ViewMode", "2", &R::ViewMode, Heal::Never},
    {"ViewMode", "Pic_List", "", &R::Pic_List, Heal::Never},
    {"RegKey", "Shift", "1", &R::Shift, Heal::Never},
    {"RegKey", "Key", "73", &R::Key, Heal::Never},
    {"Col", "Lock_Minutes", "0", &R::Lock_Minutes, Heal::Go_On},
    {"Col", "Text_Zoom", "120", &R::Text_Zoom, Heal::Go_On},
    {"Col", "Facts_Begun", "FALSE", &R::Facts_Begun, Heal::Go_On},
    {"Col", "Facts_Width", "380", &R::Facts_Width, Heal::Go_On},
    {"Col", "Panes_Below", "FALSE", &R::Panes_Below, Heal::Go_On},
    {"Col", "Below_Height", "160", &R::Below_Height, Heal::Go_On},
};

/// The numbers that a key may have; what is written as no whole number, or as none at all for a size of letters, is
/// outside.
constexpr struct Range {
    const char *key;
    double least;
    double most;
    bool whole = true;
} Ranges[] = {
    {"MAX_RECORD", 1, std::numeric_limits<qint16>::max()},
    {"TrvWidth", 0, Longest_Side},
    {"Op_DB_Type", 0, 1},
    {"KEYS_NUM", 0, 1000},
    {"Hot_NUM", 1, std::numeric_limits<qint16>::max()},
    {"Col_Cont", 0, Largest_Colour},
    {"Col_Frm", 0, Largest_Colour},
    {"Col_List", 0, Largest_Colour},
    {"Lsv_BColor", 0, Largest_Colour},
    {"FontSize_Cont", 1, 200, false},
    {"FontSize_LSV", 1, 200, false},
    {"FontSize_Tree", 1, 200, false},
    {"Cob_OrderBy", 1, 8},
    {"Cob_LineSpace", 0, 5},
    {"Cob_AddinFileType", 0, 3},
    {"Cob_ImportFileType", 0, 3},
    {"COB_Auto_Save", 1, 999},
    {"Txt_Memo_Width", 0, Longest_Side},
    {"Txt_Sum_Width", 0, Longest_Side},
    {"Lock_Minutes", 0, 999},
    {"Text_Zoom", 50, 400},
    {"Facts_Width", 0, Longest_Side},
    {"Below_Height", 0, Longest_Side},
    {"Cob_Exit", 0, 2},
    {"Backup_Num", 0, 3650},
    {"Op_Editor", 0, 2},
    {"Op_OfficeType", 0, 1},
};
// clang-format on

/// Whether a number is one that its key may have; any text, where it has no range.
bool Is_In_Range(const char *key, const QString &value)
{
    const auto *range = std::find_if(std::begin(Ranges), std::end(Ranges),
                                     [&](const Range &row) { return qstrcmp(row.key, key) == 0; });
    if (range == std::end(Ranges))
        return true;
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber && number >= range->least && number <= range->most && (!range->whole || value.toInt() == number);
}

/// A folder on a drive of another system would be made under the drive's name.
bool Is_Folder_Elsewhere(const Setting &setting, const QString &value)
{
#ifdef Q_OS_WIN
    Q_UNUSED(setting)
    Q_UNUSED(value)
    return false;
#else
    const bool isFolder = setting.computed == Computed::Backup_Path || setting.computed == Computed::Picture_Path;
    return isFolder && value.size() >= 2 && value.at(1) == u':';
#endif
}

QString Computed_Value(Computed what)
{
    switch (what) {
    case Computed::Language:
        return Machine::Default_Locale_Id() == Simplified_Chinese ? QStringLiteral("Chinese")
                                                                  : QStringLiteral("English");
    case Computed::Now:
        return Database_Engine::Short_Date(Machine::Now());
    case Computed::Today:
        return Database_Engine::Short_Date(Machine::Now().date().startOfDay());
    case Computed::Backup_Path:
        return App().App_Path + QStringLiteral("backup\\");
    case Computed::Picture_Path:
        return App().App_Path + QStringLiteral("Pic");
    case Computed::None:
        break;
    }
    return {};
}

bool Is_Word_Switch(const Setting &setting)
{
    const QString initial = Initial_Value(setting).toUpper();
    return initial == QLatin1String("TRUE") || initial == QLatin1String("FALSE");
}

qint16 Whole_Number(const QString &value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber)
        throw Run_Time_Error(Type_Mismatch, QStringLiteral("Type mismatch: ") + value, Failure::Type_Mismatch);
    if (number > std::numeric_limits<qint16>::max() || number < std::numeric_limits<qint16>::min())
        throw Run_Time_Error(Overflow, QStringLiteral("Overflow: ") + value);
    return static_cast<qint16>(qRound(number));
}
} // namespace

std::span<const Setting> Setting_Table()
{
    return Table;
}

const Setting &Setting_Named(const QString &key)
{
    for (const Setting &setting : Table) {
        if (key == QLatin1String(setting.key))
            return setting;
    }
    throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("No such setting: ") + key);
}

bool Acceptable(const Setting &setting, const QString &value)
{
    const auto is = [&](const char *key) {
        return qstrcmp(setting.key, key) == 0;
    };
    if (is("LANGUAGE"))
        return !value.isEmpty() && value.toUpper() != QLatin1String("GB2312");
    if (is("COB_UPDATE"))
        return value.size() == 1;
    if (is("COB_UPDATE_DATE"))
        return value.size() >= 2;
    return !value.isEmpty() && Is_In_Range(setting.key, value) && !Is_Folder_Elsewhere(setting, value);
}

QString Initial_Value(const Setting &setting)
{
    return setting.computed == Computed::None ? QString::fromUtf8(setting.initial) : Computed_Value(setting.computed);
}

QString Healed_Value(const Setting &setting)
{
    return setting.healed != nullptr ? QString::fromUtf8(setting.healed) : Initial_Value(setting);
}

void Store(Settings_Record &record, const Setting &setting, const QString &value)
{
    if (const auto *text = std::get_if<QString R::*>(&setting.field))
        record.*(*text) = value;
    else if (const auto *number = std::get_if<qint16 R::*>(&setting.field))
        record.*(*number) = value.isEmpty() ? qint16(0) : Whole_Number(value);
    else
        record.*std::get<QVariant R::*>(setting.field) = value.isEmpty() ? QVariant() : QVariant(value.toInt());
}

QString Switch_Text(const Setting &setting, bool on)
{
    const QString initial = Initial_Value(setting);
    if (!Is_Word_Switch(setting))
        return on ? QStringLiteral("1") : QStringLiteral("0");
    const QString text = on ? QStringLiteral("True") : QStringLiteral("False");
    return initial == initial.toUpper() ? text.toUpper() : text;
}

bool Is_On(const Setting &setting, const QString &text)
{
    return Is_Word_Switch(setting) ? Is_Shown(text) : text == QLatin1String("1");
}

QString Text_Of(const Settings_Record &record, const Setting &setting)
{
    if (const auto *text = std::get_if<QString R::*>(&setting.field))
        return record.*(*text);
    if (const auto *number = std::get_if<qint16 R::*>(&setting.field))
        return QString::number(record.*(*number));
    return (record.*std::get<QVariant R::*>(setting.field)).toString();
}
