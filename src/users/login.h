// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/config_store.h"

#include <QString>
#include <QStringList>

/// The name that logged in last here.
inline constexpr Kept_Value Last_Login{"Col", "Login_Uname"};

enum class Login_Result { Success, Special_Character, Unknown_User, Wrong_Password, Locked };

/// Names of all users in their order, for the box of the login window.
QStringList Login_Names();

/// Whether a name can log in at all.
/// @throws Run_Time_Error when the users cannot be read.
bool Is_User(const QString &name);

/// Checks a name and a password. Success makes the trimmed name the current user, keeps it in Config.ini and writes
/// a line to the system log; any other result changes nothing.
///
/// A user is taken for locked when the stored *password* is "X": `User_Lock` has no effect here.
/// @throws Run_Time_Error when the users cannot be read.
Login_Result Try_Login(const QString &name, const QString &password);
