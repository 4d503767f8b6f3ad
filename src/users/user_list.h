// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// The users that a database file carries. Whoever has logged in may change them all.

/// One user as the form of the users shows it.
struct User {
    QString name;
    QString password; ///< in clear
    QString repeated; ///< the password once more
    bool locked = false;
    QString start, end; ///< days, as they were typed
    QString title, name1, name2, address, telephone, fax, email;
};

enum class User_Refusal {
    None,
    Special_Character,
    No_Name,
    Passwords_Differ,
    Exists,
    Too_Many,
    Unknown,
    Only_One,
    Wrong_Old_Password
};

/// @throws Run_Time_Error (all of them) when the users cannot be read or written; then nothing is changed.

QStringList User_Names();
/// One user with the password in clear; empty fields where a row is missing.
User Read_User(const QString &name);
/// The form for a new user: both days are today.
User Blank_User();
/// A typed day in the short form; what is no day stays as it is.
QString Day_Text(const QString &typed);

/// Adds a user, of whom there may be six.
User_Refusal Add_User(const User &user);
/// Rewrites the user of that name.
User_Refusal Change_User(const User &user);
/// Whether a user may go at all: the last one may not.
User_Refusal May_Delete_User();
void Delete_User(const QString &name);
/// Changes the password of the current user.
User_Refusal Change_Password(const QString &oldPassword, const QString &newPassword, const QString &repeated);
