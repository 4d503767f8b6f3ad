// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextFormat>

/// What RTF says of a format and QTextDocument has no property for. It is kept with the format, so that it follows
/// text through editing and undoing, and is written back. A paragraph's borders are kept in its block format under
/// the properties that a table's cell has for its own (QTextFormat::TableCellTopBorder and so on).
namespace Rich_Text
{
enum Kept_Property : int {
    /// Of characters, int: a kind of underlining (an Rtf::Underline), which counts only while the format's underline
    /// style still is the one that shows it.
    Underline_Property = QTextFormat::UserProperty + 0x5200,
    /// Of a picture, QRectF: the part that is shown, the whole being 1 by 1.
    Picture_Part,
    /// Of a list, int: the number of its first item, where that is not 1.
    List_Start,
    /// Of a list, int: how its numbers are written, as \levelnfc counts the ways.
    List_Kind,
    /// Of a list, QString: its label, in which characters 0 to 8 stand for the numbers of the levels 1 to 9.
    List_Text,
    /// Of a list, int: its level from 0, and what it has in common with the lists whose items its labels count.
    List_Level,
    List_Family,
    /// Of the root frame, Plain_Form: how the plain file is written that the document was loaded from.
    Plain_Form_Property,
    /// Of U+FFFD, QByteArray: what could not be read of a plain file.
    Unread_Property,
    /// Of the root frame, QStringList: headers and footers, by the kinds of Rtf::Page_Text_Words.
    Page_Texts_Property,
    /// Of a list, int: where the first lines of its items begin, in twips from the others; -360 where it is not set.
    /// Of a paragraph in a list: where that of this item does, if elsewhere.
    List_First,
    /// Of the root frame, QByteArray: information on the document and its page, as RTF.
    Head_Property,
    /// Of a paragraph, QByteArray: by its tab stops, what fills the space before each, as an index of
    /// Rtf::Leader_Words.
    Tab_Leaders,
    /// Of a paragraph, bool: it stays on the page of the next one.
    Keep_With_Next,
    /// Of a frame's first paragraph, bool: it is only there because a table follows, which cannot be the first.
    Filler,
    /// Of a Hidden_Object, QString: the text that is not shown, paragraphs parted by line feeds; and int: why, as the
    /// flags of Rtf::Char_Flag.
    Hidden_Text,
    Hidden_Kind,
    /// Of characters, int: which note they belong to, from its " [" to before its "]"; what it is, as Rtf::Note_Kind;
    /// and QStringList, of a comment: its author's initials and name, and its date as RTF has it.
    Note_Number,
    Note_Kind,
    Note_Origin,
    /// Of the root frame, int: what is not kept, by the flags of Rich_Text::Loss.
    Losses_Property,
    /// Of characters, QString: their font, where the document has too many for showing them all.
    Unshown_Font,
    /// Of characters, int: tells formats of different bookmarks apart. QTextDocument finds formats by their numbers and
    /// single texts, not by lists of names.
    Bookmark_Number,
    /// Of a paragraph, bool: it is the rest of the one before, as long as that has not become shorter than
    /// Longest_Block. The layout of a paragraph takes time by the square of its length.
    Rest_Of_Paragraph,
};
inline constexpr int Longest_Block = 20'000; ///< characters; a longer paragraph goes on in the next block

/// Type of the inline object that stands for hidden or deleted text, or, with the properties of an image, for a hidden
/// picture. No handler draws it, so it takes no room.
inline constexpr int Hidden_Object = QTextFormat::UserObject + 0x52;

/// The style of a list whose labels QTextDocument cannot make. It then draws none; Paint_Decorations does.
inline constexpr auto Kept_Labels = static_cast<QTextListFormat::Style>(7);
} // namespace Rich_Text
