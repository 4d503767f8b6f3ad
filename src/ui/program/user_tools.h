// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

class QMenu;

/// A program, or anything that the desktop can open, which the user put into the menu of tools.
struct User_Tool {
    QString name;
    QString path;
    bool operator==(const User_Tool &) const = default;
};

/// The tools as the setting keeps them: names and paths in turn, "|" between. Half an entry is none.
QList<User_Tool> Tools_Of_Text(const QString &text);
QString Text_Of_Tools(const QList<User_Tool> &tools);

/// Puts the user's tools at the end of a menu, in the place of those that it had.
void Fill_User_Tools(QMenu &menu);
/// Starts a program, and gives anything else to the desktop. What is gone is told.
void Start_Tool(const User_Tool &tool);
