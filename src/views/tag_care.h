// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"

#include <QList>

/// Looking after many tags. Errors and Last_Trouble as in views/tags.h.

enum class Tag_Filter { All, Unused, Once, Alike };
enum class Tag_Order { Name, Count };

/// Fills a list with the tags that pass a filter. By count, the most used come first; tags that are alike stand
/// together.
void Show_Tags(List_Model &list, Tag_Filter filter, Tag_Order order);

/// Documents that hold at least one of some tags. @throws Run_Time_Error
int Documents_Of_Tags(const QList<int> &tags);

/// Puts one tag in the place of others in all documents and removes those others, in one commit.
/// @returns false when the tag is gone, or when a document has no room for it: then nothing was changed
bool Merge_Tags(const QList<int> &from, int into);

/// Counts all tags anew. @returns the counters that were wrong
int Refresh_Tag_Counts();
