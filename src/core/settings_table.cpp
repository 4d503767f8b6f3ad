// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/settings_table.h"

#include "core/config_store.h"
#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/errors/run_time_error.h"
#include "platform/machine/machine.h"
#include "platform/profile/profile.h"

#include <algorithm>
#include <limits>

namespace
{
constexpr qint32 Overflow = 6;
constexpr qint32 Type_Mismatch = 13;
constexpr double Largest_Colour = 0xFFFFFF;
constexpr double Most_Small = std::numeric_limits<qint16>::max();
constexpr double Longest_Side = 100'000; // of a pane, in twips or pixels
constexpr int Simplified_Chinese = 0x804;

using R = Settings_Record;
constexpr auto Computed_Here = "";
constexpr Numbers Any;

// clang-format off
constexpr Setting Table[] = {
    {"Page", "LANGUAGE", Computed_Here, &R::LANGUAGE, 36, Any, Heal::Read_Again, nullptr, Computed::Language},
    {"Page", "Theme", "10", &R::Theme, 37},
    {"Page", "MAX_RECORD", "46", &R::MAX_RECORD, 35, {1, Most_Small}},
    {"Page", "COB_UPDATE", "W", &R::COB_UPDATE, 30},
    {"Page", "COB_UPDATE_DATE", Computed_Here, &R::COB_UPDATE_DATE, 31, Any, Heal::Read_Again, nullptr, Computed::Now},
    {"Page", "H_RULER", "FALSE", &R::H_RULER},
    {"Page", "V_RULER", "FALSE", &R::V_RULER},
    {"Page", "M_FILE", "TRUE", &R::M_FILE, 32},
    {"Page", "M_AUTO", "TRUE", &R::M_AUTO, 33},
    {"Page", "M_TOOL", "TRUE", &R::M_TOOL, 34},
    {"Page", "TrvWidth", "3375", &R::TrvWidth, 38, {0, Longest_Side}},
    {"Page", "FileHeight", "1575", &R::FileHeight, 39},
    {"DataBase", "CH_PATH", "1", &R::CH_PATH, 8},
    {"DataBase", "DATABASE_NAME", "\\data\\Zelqor.db", &R::DATABASE_NAME},
    {"DataBase", "EXPORT_NAME", "\\data\\Zelqor_bak.db", &R::EXPORT_NAME, 11},
    {"DataBase", "Op_DB_Type", nullptr, &R::Op_DB_Type, 1, {0, 1}, Heal::Read_Again, "0"},
    {"DataBase", "Op_DB_Sql", nullptr, &R::Op_DB_Sql, 2, Any, Heal::Read_Again, "0"},
    {"Else", "TC_LEFT", "0", &R::TC_LEFT, 21},
    {"Else", "TC_TOP", "0", &R::TC_TOP, 22},
    {"Col", "KEYS_NUM", "10", &R::KEYS_NUM, 23, {0, 1000}, Heal::Go_On},
    {"Col", "Hot_NUM", "50", &R::Hot_NUM, 24, {1, Most_Small}, Heal::Go_On},
    {"Col", "KEYS", ",", &R::KEYS, 25},
    {"Col", "Col_Cont", "16777215", &R::Col_Cont, 26, {0, Largest_Colour}},
    {"Col", "Col_Frm", "16777215", &R::Col_Frm, 27, {0, Largest_Colour}},
    {"Col", "Col_List", "10019561", &R::Col_List, 28, {0, Largest_Colour}},
    {"Col", "Lsv_BColor", "16777215", &R::Lsv_BColor, 29, {0, Largest_Colour}},
    {"Col", "CH_MAIN", "1", &R::CH_MAIN, 40},
    {"Col", "CH_MIN", "0", &R::CH_MIN, 41},
    {"Col", "CH_FLOAT", "1", &R::CH_FLOAT, 42},
    {"Col", "CH_Save", "0", &R::CH_Save, 43},
    {"Col", "CH_Close", "1", &R::CH_Close, 44},
    {"Col", "CH_Lock", "0", &R::CH_Lock, 45},
    {"Col", "CH_Tree_Comfirm", "1", &R::CH_Tree_Comfirm, 46, Any, Heal::Go_On},
    {"Col", "CH_ByDate", "FALSE", &R::CH_ByDate, 47, Any, Heal::Go_On, "TRUE"},
    {"Col", "CH_Tags", "TRUE", &R::CH_Tags, 48, Any, Heal::Go_On, "FALSE"},
    {"Col", "CH_Find", "TRUE", &R::CH_Find, 49, Any, Heal::Go_On},
    {"Col", "CH_Hot", "FALSE", &R::CH_Hot, 50, Any, Heal::Go_On, "TRUE"},
    {"Col", "CH_Tree_ToolTips", "0", &R::CH_Tree_ToolTips, 51},
    {"Col", "CH_Lsv_ToolTips", "0", &R::CH_Lsv_ToolTips, 52},
    {"Col", "CH_Style_Classic", "1", &R::CH_Style_Classic, 53},
    {"Col", "CH_Lsv_Grid", "0", &R::CH_Lsv_Grid, 70},
    {"Col", "CH_Lsv_Detail", "1", &R::CH_Lsv_Detail, 71},
    {"Col", "FontName_Cont", "宋体", &R::FontName_Cont, 55},
    {"Col", "FontSize_Cont", "10", &R::FontSize_Cont, 56, {1, 200, false}, Heal::Read_Again, "9"},
    {"Col", "FontName_LSV", "宋体", &R::FontName_LSV, 57},
    {"Col", "FontSize_LSV", "10", &R::FontSize_LSV, 58, {1, 200, false}},
    {"Col", "FontName_Tree", "宋体", &R::FontName_Tree, 59},
    {"Col", "FontSize_Tree", "10", &R::FontSize_Tree, 60, {1, 200, false}},
    {"Col", "Cob_OrderBy", "2", &R::Cob_OrderBy, 61, {1, 8}},
    {"Col", "Cob_LineSpace", "0", &R::Cob_LineSpace, 62, {0, 5}},
    {"Col", "Cob_K9", "000", &R::Cob_K9, 63},
    {"Col", "Cob_AddinFileType", "0", &R::Cob_AddinFileType, 64, {0, 3}},
    {"Col", "Cob_ImportFileType", "3", &R::Cob_ImportFileType, 65, {0, 3}},
    {"Col", "CH_Instance", "1", &R::CH_Instance, 66},
    {"Col", "CH_About", "1", &R::CH_About, 67},
    {"Col", "CH_Tab", "0", &R::CH_Tab, 68},
    {"Col", "CH_PicSaveDb", "0", &R::CH_PicSaveDb, 54},
    {"Col", "CH_Exp_Node", "1", &R::CH_Exp_Node, 69},
    {"Col", "CH_Auto_Save", "0", &R::CH_Auto_Save, 72},
    {"Col", "COB_Auto_Save", "30", &R::COB_Auto_Save, 73, {1, 999}},
    {"Col", "Key_Name", "", &R::Key_Name},
    {"Col", "Txt_Memo_Width", "250", &R::Txt_Memo_Width, 3, {0, Longest_Side}},
    {"Col", "Txt_Sum_Width", "250", &R::Txt_Sum_Width, 4, {0, Longest_Side}},
    {"Col", "ViewSum", "False", &R::ViewSum, 5, Any, Heal::View_Sum},
    {"Col", "ViewMemo", "False", &R::ViewMemo, 6},
    {"Col", "ShowLow", "TRUE", &R::ShowLow, 7},
    {"Col", "Cob_Exit", "0", &R::Cob_Exit, 74, {0, 2}},
    {"Col", "Backup_Num", "7", &R::Backup_Num, 75, {0, 3650}},
    {"Col", "Backup_Path", Computed_Here, &R::Backup_Path, 76, Any, Heal::Read_Again, nullptr, Computed::Backup_Path},
    {"Col", "Backup_Date", Computed_Here, &R::Backup_Date, 77, Any, Heal::Read_Again, nullptr, Computed::Today},
    {"Col", "Op_Editor", "0", &R::Op_Editor, 78, {0, 2}},
    {"Col", "CH_KeepWord", "1", &R::CH_KeepWord, 79},
    {"Col", "CH_HideSelect", "1", &R::CH_HideSelect, 80},
    {"Col", "Op_OfficeType", "0", &R::Op_OfficeType, 81, {0, 1}},
    {"Col", "Pic_Dir", Computed_Here, &R::Pic_Dir, 82, Any, Heal::Read_Again, nullptr, Computed::Picture_Path},
    {"Col", "User_Tools", "", &R::User_Tools},
    {"Col", "Tree_LastKey", nullptr, &R::Tree_LastKey},
    {"ViewMode", "ViewMode", "2", &R::ViewMode},
    {"ViewMode", "Pic_List", "", &R::Pic_List},
    {"RegKey", "Shift", "1", &R::Shift},
    {"RegKey", "Key", "73", &R::Key},
    {"Col", "Lock_Minutes", "0", &R::Lock_Minutes, 83, {0, 999}, Heal::Go_On},
    {"Col", "Text_Zoom", "120", &R::Text_Zoom, 84, {50, 400}, Heal::Go_On},
    {"Col", "Facts_Begun", "FALSE", &R::Facts_Begun, 85, Any, Heal::Go_On},
    {"Col", "Facts_Width", "380", &R::Facts_Width, 86, {0, Longest_Side}, Heal::Go_On},
    {"Col", "Panes_Below", "FALSE", &R::Panes_Below, 87, Any, Heal::Go_On},
    {"Col", "Below_Height", "160", &R::Below_Height, 88, {0, Longest_Side}, Heal::Go_On},
};
// clang-format on

bool Is_In_Range(const Numbers &numbers, const QString &value)
{
    if (numbers.Are_Any())
        return true;
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber && number >= numbers.least && number <= numbers.most && (!numbers.whole || value.toInt() == number);
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

const Setting &Setting_Of(const Setting_Field &field)
{
    // Every field has a row, which a test proves.
    return *std::find_if(std::begin(Table), std::end(Table),
                         [&](const Setting &setting) { return setting.field == field; });
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
    return !value.isEmpty() && Is_In_Range(setting.numbers, value) && !Is_Folder_Elsewhere(setting, value);
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

void Change(const Setting &setting, const QString &value)
{
    Settings_Record changed = Config();
    Store(changed, setting, value);
    Profile::Write(App().App_Path + QStringLiteral("Config.ini"), QLatin1String(setting.section),
                   QLatin1String(setting.key), value);
    Config() = changed;
}

bool Is_On(const Setting_Field &field)
{
    const Setting &setting = Setting_Of(field);
    return Is_On(setting, Text_Of(Config(), setting));
}

void Keep_Setting(const Setting_Field &field, const QString &value)
{
    const Setting &setting = Setting_Of(field);
    Store(Config(), setting, value);
    WriteIni(QLatin1String(setting.section), QLatin1String(setting.key), value);
}

void Keep_Switch(const Setting_Field &field, bool on)
{
    Keep_Setting(field, Switch_Text(Setting_Of(field), on));
}
