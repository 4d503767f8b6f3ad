// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QTextBlock;
class QTextList;
class QTextListFormat;

/// Labels of lists, those that QTextDocument makes by itself and those that only RTF knows: other first numbers,
/// numbers of several levels as in 1.2.3, other signs and other ways to count.
namespace Rich_Text
{
/// What stands before an item of a list; "" for a paragraph that is none.
QString Item_Label(const QTextBlock &block);
/// How the labels of a list are made, in RTF's terms.
struct Label_Rule {
    int kind = 0; ///< as \levelnfc counts
    int start = 1;
    int level = 0; ///< from 0
    QString text;  ///< characters 0 to 8 stand for the numbers of the levels 1 to 9
};
inline constexpr int Bullet_Kind = 23; ///< the label is its text
inline constexpr int No_Label_Kind = 255;

Label_Rule Rule_Of(const QTextListFormat &format);
/// The same for a list of a document, with the numbers of the items that it stands under written out. Looking for
/// them takes time.
Label_Rule Rule_In_Place(const QTextList &list);
/// The label of the item of a number, which counts from 1 in each list.
QString Item_Label(const Label_Rule &rule, int item);
/// Makes the format show such labels: by QTextDocument where it can, else as kept ones.
void Set_Rule(QTextListFormat &format, const Label_Rule &rule);
} // namespace Rich_Text
