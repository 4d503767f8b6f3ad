// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/errors/run_time_error.h"

#include <QString>

/// The error that a procedure met last and nobody has cleared; number 0 means none.
struct Pending_Error {
    qint32 number = 0;
    QString description;
    Failure failure = Failure::Other;
};

/// The process-wide values that start-up fills and everything else reads.
struct Process_State {
    QString App_Title = QStringLiteral("Zelqor");
    QString Box_Title = App_Title; ///< title of every start-up box
    QString App_Path;              ///< program directory with a final separator, native spelling
    QString Help_File;
    QString Date_Sep;             ///< the user's date separator
    QString Date_Delim;           ///< delimiter of date literals in SQL text: "#" or "'"
    QString Conn_Str;             ///< every recordset is opened with it
    bool Conn_OK = false;         ///< the database could be read
    Pending_Error Conn_Trouble;   ///< why it could not
    bool Update_235_Done = false; ///< the one-time upgrade window finished
    QString Curr_User;            ///< login name in force
    QString Root_Name;            ///< name and icon of the home node
    QString Root_Icon;
    QString Com_Name; ///< facts COM_NAME and COM_ICON of the database
    QString Com_Icon;
};

Process_State &App();

/// Major, minor and revision number, one after the other, as in "256".
QString Version_Digits();
/// "2.5.6"
QString Version_Text();
