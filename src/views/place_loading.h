// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/anywhere.h"

#include <QSet>

/// Adds the documents by title, the folders by path, the tags and the bookmarks of the database. What lies in a locked
/// folder or below one is not named, nor is what lies in the recycle bin.
/// @param unlocked  ids of locked folders whose passwords were given
/// The documents that were read last count as used. May run in a thread of its own.
/// Keys are a document's id, "C_" + folder id, "T_" + tag id, and for a bookmark the document's id, "/" and the line.
/// Errors go under "Mod_DataBase\Load_Places"; what was read until then stays.
void Load_Places(Place_Index &index, const QSet<QString> &unlocked = {});
