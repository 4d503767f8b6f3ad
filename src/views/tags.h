// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/check_model.h"
#include "platform/models/list_model.h"
#include "views/tag_text.h"

#include <QList>
#include <QString>
#include <QStringList>

/// Tags of documents. A tag is a row of tab_tags, its name trimmed and in lower case; a document holds the ids of its
/// tags in Code_Tags as tokens "{id}", one behind the other in the order in which they came. A row of a tag list has
/// the tag "T_" + id, and its name and number of documents as texts.
///
/// Errors go to Error.log under "Mod_Tags\" and the procedure's name; Last_Trouble (core/trouble.h) tells them.

QString Tag_Key(int tagId);
/// The id in a key; 0 for "".
int Tag_Of_Key(const QString &key);

/// Fills a list with all tags.
void Load_Tags(List_Model &list);
/// Fills a list of boxes with a document's tags, ticked; with all other tags too if `showAll`.
void Load_Doc_Tags(Check_Model &list, const QString &codeId, bool showAll);

/// The id of a name, 0 when it is unknown.
int Get_Tag_Id(const QString &name);
/// The id of a name; the tag is made when it is new. 0 after an error, and for an empty name.
int Add_Tag(const QString &name);
/// Gives a document a tag and counts the tag anew. @returns false when the tag is gone or an error came up
bool Add_Doc_Tag(int tagId, const QString &codeId);
/// Takes a tag from a document and counts the tag anew. @returns false when the tag is gone or an error came up
bool Remove_Doc_Tag(int tagId, const QString &codeId);
/// @returns false when another tag has that name, or after an error
bool Rename_Tag(int tagId, const QString &newName);
/// Removes a tag and its tokens in all documents, in one commit. @returns false when there is no such tag
bool Delete_Tag(int tagId);

/// The condition that lists a tag's documents.
QString Tag_Where(int tagId);

/// Makes a tag of each word, separated by blanks, and adds the new ones to the list. @returns their ids, without those
/// that could not be made
QList<int> Add_Tag_Words(const QString &words, List_Model &list);

/// What is dropped on the list of tags: rows of the document list or a tag's name.
bool Is_Document_Drop(const QString &text);
/// @param tagKey    the row under the pointer, "" for empty space, where a drop of documents does nothing
/// @param openDocument  the document in front, which gets a tag that is dropped as text; "" for none
/// @returns the tag that was made or given, 0 for none
int Drop_On_Tags(List_Model &tags, const QString &text, const QString &tagKey, const QString &openDocument);
