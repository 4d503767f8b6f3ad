// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Grammar of folder ids, node keys and captions.
///
/// A folder id is a string of three-digit segments, one for each level; the parent is the id without its last three
/// characters, "" is the root, "000" the recycle bin. A node key is a prefix, "_" and the rest: "C_" + id for a
/// folder. A caption is a name and "[" count "]".

inline const QString Root_Key = QStringLiteral("qvmxcode_");
inline const QString Recycle_Bin_Id = QStringLiteral("000");
inline const QString Recycle_Bin_Name = QStringLiteral("回收站"); ///< in a new file

enum class Key_Part {
    After_Underscore = 1,  ///< what follows the first "_"
    Before_Underscore = 2, ///< what precedes the first "_"
    From_Bracket = 3,      ///< from the first "[" on
    Before_Bracket = 4,    ///< what precedes the first "["
};

/// Part of a key or caption; "" when the delimiter is absent.
QString GetKeyPart(const QString &text, Key_Part mode);

/// The trimmed value padded on the left up to `width`; "" when it is empty or "0".
QString PadLeft(const QString &value, int width, QChar padChar);

/// Key of a folder's node, and of its parent's node. A malformed id gives a key that no node has.
QString Folder_Key(const QString &id);
QString Parent_Key(const QString &id);
/// The id without its last segment, "" for a top-level one.
QString Parent_Id(const QString &id);
/// Whether an id keeps the grammar: digits in threes, at least one segment. Only such an id may stand in a LIKE
/// pattern of a statement that changes rows, or a hand-made id as "%" would reach every folder.
bool Is_Folder_Id(const QString &id);
/// Whether everything about that id lies in the recycle bin, the bin itself included.
bool In_Recycle_Bin(const QString &id);
/// Position number of a new folder: the number of its last segment.
int Order_Of_Id(const QString &id);
/// Whether a node key names a folder.
bool Is_Folder_Key(const QString &key);

/// A folder name as the dialogs store it: each of \ / : * ? " < > | becomes "_", line ends are dropped.
QString Clean_Name(const QString &text);

/// Name and count as a caption, and the name of a caption: all of it when it carries no count.
QString Make_Caption(const QString &name, qint64 count);
QString Caption_Name(const QString &caption);
