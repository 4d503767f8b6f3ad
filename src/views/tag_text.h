// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

/// What stands in Code_Tags, and names of tags, as text.

/// Characters of the field Code_Tags.
inline constexpr qsizetype Longest_Tags = 255;

/// A name as it is stored: trimmed and in lower case.
QString Tag_Name(const QString &text);
QString Tag_Token(int tagId);
/// The ids that a document shows: what stands before each "}", without "{". What is no number is left out.
QList<int> Tag_Ids(const QString &field);
/// The ids of the whole tokens in a field, each once: those that statements find. A damaged field may show more.
QList<int> Tags_In(const QString &field);
/// A field after tokens were taken out and those that it does not hold were put at its end.
QString Changed_Tags(QString field, const QList<int> &give, const QList<int> &take);
/// A field in which one token stands for several: at the place of the first one, or where it stood already.
QString Merged_Tags(QString field, const QList<int> &from, int into);
/// Two names that may be meant to be one: they differ by case, by an ending of the plural, or by one letter (in words
/// of four letters or more; digits that differ are another matter, as in the years of two reports).
bool Are_Alike(const QString &one, const QString &other);
