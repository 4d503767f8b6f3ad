// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/check_model.h"

#include <QList>
#include <QString>
#include <QStringList>

/// Tags of many documents at once. Errors and Last_Trouble as in views/tags.h.

/// Counts the documents that hold a tag and stores the number. @throws Run_Time_Error
void Count_Tag(int tagId);

/// Fills a list of boxes with all tags: ticked where all of the documents have the tag, half ticked where some have.
void Load_Selection_Tags(Check_Model &list, const QStringList &codeIds);

/// What a change of tags did.
struct Tagging {
    bool done = false;
    int changed = 0;  ///< documents
    QStringList full; ///< documents with no room for another tag; these are as they were
    QStringList gone; ///< documents that are no longer there
};
/// Gives and takes tags in one commit, with their counters right after it. Tags that are gone are not given.
Tagging Change_Tags(const QStringList &codeIds, const QList<int> &give, const QList<int> &take);
/// What was ticked and unticked in a list that Load_Selection_Tags filled. Half ticks stay what they are.
Tagging Apply_Selection_Tags(const Check_Model &list, const QStringList &codeIds);
