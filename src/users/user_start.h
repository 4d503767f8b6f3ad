// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The part of start-up that belongs to users.

enum class Login_Need { None, Dialog };

/// Reads the last login name into App().Curr_User; an empty one becomes the root's name.
void Read_Last_User();

/// Deletes credentials without a profile and profiles without credentials.
/// @throws Run_Time_Error when the tables cannot be changed.
void Repair_Users();

/// Decides whether App().Curr_User must log in. A database without users gets the default user, who need not; a
/// user whose profile is missing gets it made and becomes the default user.
Login_Need Decide_Login();

/// Gives a database without users the default user, unless the one in force can log in.
void Make_First_User();
