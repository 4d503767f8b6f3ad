// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/process_state.h"

#include <QList>
#include <QString>
#include <QVariant>
#include <functional>
#include <variant>

/// One field per key of Config.ini, named as the key and holding its raw text. Booleans are compared as text.
struct Settings_Record {
    // [Page]
    QString LANGUAGE, Theme;
    qint16 MAX_RECORD = 0; ///< documents per list page
    QString COB_UPDATE, COB_UPDATE_DATE, H_RULER, V_RULER, M_FILE, M_AUTO, M_TOOL;
    QString TrvWidth; ///< width of the tree pane, in twips (1/1440 inch)
    QString FileHeight;
    QString Text_Zoom;   ///< how large a document's text is shown, in percent
    QString Facts_Begun; ///< the facts of a document were folded once, as at a first start
    QString Facts_Width, Panes_Below, Below_Height;
    // [DataBase]
    QString CH_PATH, DATABASE_NAME, EXPORT_NAME, Op_DB_Type, Op_DB_Sql;
    // [Else]
    QString TC_LEFT, TC_TOP;
    // [Col]
    QString KEYS_NUM, Hot_NUM, KEYS;
    QVariant Col_Cont; ///< colours as numbers, 0xBBGGRR
    QString Col_Frm;
    QVariant Col_List;
    QString Lsv_BColor, CH_MAIN, CH_MIN, CH_FLOAT, CH_Save, CH_Close, CH_Lock, CH_Tree_Comfirm, CH_ByDate, CH_Tags,
        CH_Find, CH_Hot, CH_Tree_ToolTips, CH_Lsv_ToolTips, CH_Style_Classic, CH_Lsv_Grid, CH_Lsv_Detail, FontName_Cont,
        FontSize_Cont, FontName_LSV, FontSize_LSV, FontName_Tree, FontSize_Tree, Cob_OrderBy, Cob_LineSpace, Cob_K9,
        Cob_AddinFileType, Cob_ImportFileType, CH_Instance, CH_About, CH_Tab, CH_PicSaveDb, CH_Exp_Node, CH_Auto_Save,
        COB_Auto_Save, Key_Name, Txt_Memo_Width, Txt_Sum_Width, ViewSum, ViewMemo, ShowLow, Cob_Exit, Backup_Num,
        Backup_Path, Backup_Date, Op_Editor, CH_KeepWord, CH_HideSelect, Op_OfficeType, Pic_Dir, User_Tools,
        Tree_LastKey, Lock_Minutes;
    // [ViewMode]
    QString ViewMode, Pic_List;
    // [RegKey]
    QString Shift, Key;
};

Settings_Record &Config();

/// What the check of the database found in the middle of the check pass.
enum class Database_Check { Go_On, Read_Again };

/// The two steps of the check pass that belong to the database's lifecycle.
struct Database_Steps {
    std::function<void()> Resolve_Paths;           ///< after CH_PATH
    std::function<Database_Check()> Find_And_Test; ///< after EXPORT_NAME
};

/// Reads Config.ini into the record: a missing file is written with the defaults, an empty or impossible value is
/// healed and the file read again. A file that was whole is kept as a copy, Config.bak.
/// @returns the first error, which names the key it met, number 0 for none; it is recorded under "Main/GetConfigInfo".
/// The record is complete all the same.
Pending_Error GetConfigInfo(const Database_Steps &database);

/// A value that did not stand when Config.ini was read.
struct Healed_Setting {
    QString key;
    QString before; ///< "" for a key that was empty or missing
    QString now;
};
/// What the last reading of a file that was there has healed, in the order of the checks.
const QList<Healed_Setting> &Healed_Settings();

/// A field of the record stands for its setting: the table has one row for each.
using Setting_Field = std::variant<QString Settings_Record::*, qint16 Settings_Record::*, QVariant Settings_Record::*>;

/// A text of the "TRUE"/"FALSE" family: anything but "FALSE", in any case, is true.
bool Is_Shown(const QString &flag);
/// Whether a switch is on: "1", or in the "TRUE"/"FALSE" family anything but "FALSE" in any case.
bool Is_On(const Setting_Field &field);
/// Puts a value in the record and writes it to Config.ini; an error is recorded under "WriteIni".
void Keep_Setting(const Setting_Field &field, const QString &value);
/// The same with the word of a switch, spelled as in a new file.
void Keep_Switch(const Setting_Field &field, bool on);
