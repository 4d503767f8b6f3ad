// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/list_labels.h"

#include <QByteArray>
#include <QHash>
#include <QRgb>
#include <QSet>
#include <QStringList>
#include <QTextBlock>
#include <QTextFrame>

#include <array>
#include <bitset>
#include <vector>

class QBrush;
class QFont;
class QRectF;
class QSizeF;
class QTextBlockFormat;
class QTextCharFormat;
class QTextDocument;
class QTextImageFormat;
class QTextList;
class QTextTable;
class QTextTableCell;

namespace Rtf
{
/// The lists of a document, as they are met in its text. Lists of one family become levels of one list of RTF, where
/// an item of a lower level makes the higher ones begin anew.
class List_Tables
{
public:
    struct Place {
        int number; ///< \ls
        int level;  ///< \ilvl
    };
    Place Place_Of(const QTextList &list);
    QByteArray Bytes() const;

private:
    struct Written_List {
        std::array<const QTextList *, 9> levels{};
        std::array<const QTextList *, 9> open{};
    };
    int New_Number();

    std::vector<Written_List> m_lists;
    QHash<const QTextList *, int> m_numbers; ///< of lists without a family
    QHash<int, int> m_families;              ///< the number that a family has at present
};

/// Fonts, colours and lists of a document, gathered while its text is written; they stand before the text.
class Header_Tables
{
public:
    int Font_Number(const QString &family);
    /// Number of a brush's colour, 0 for none.
    int Color_Number(const QBrush &brush);
    int Color_Number(QRgb color);
    /// Number of the style of a heading; other readers keep headings only by their styles. @param level from 1
    int Heading_Style(int level);
    List_Tables &Lists() { return m_lists; }

    QByteArray Bytes() const;

private:
    QByteArray Style_Sheet() const;

    QStringList m_fonts;
    QHash<QString, int> m_fontNumbers;
    std::vector<QRgb> m_colors;
    QHash<QRgb, int> m_colorNumbers;
    std::bitset<10> m_headings; ///< the levels that occur
    List_Tables m_lists;
};

/// Text as RTF in ASCII: what is not ASCII becomes \uN with "?" for readers that know no Unicode.
void Append_Escaped(QByteArray &out, QStringView text);
/// A control word with its number.
void Append_Word(QByteArray &out, const char *word, int number);
/// Pixels of a document as twips.
int Twips(double pixels);
/// Where a paragraph's lines begin, in twips from the margin.
int Left_Of(const QTextBlock &block);

/// Whether the block is the rest of a long paragraph, and that still is long.
bool Is_Rest(const QTextBlock &block);

struct Shown_Border;

/// Writes one document.
class Writer
{
public:
    explicit Writer(const QTextDocument &document);
    QByteArray Write();

private:
    /// Whether the block is only there because a table follows, which cannot be the first in a frame or cell, nor stand
    /// directly behind another table.
    static bool Is_Filler(const QTextFrame::iterator &at);
    void Write_Frame(const QTextFrame &frame, int nesting);
    void Write_Flow(const QTextFrame::iterator &begin, const QTextFrame::iterator &end, int nesting, const char *last);
    /// @param end the word behind the paragraph, "" where its rest follows
    void Write_Block(const QTextBlock &block, int nesting, const char *end);
    void Write_Block_Properties(const QTextBlock &block, int nesting);
    void Write_Indents(const QTextBlock &block);
    void Write_Paragraph_Borders(const QTextBlockFormat &format);
    void Write_Fragments(const QTextBlock &block);
    void Write_Text(const QString &text);
    void Write_Bookmarks(const QTextCharFormat &format);
    void Write_Picture(const QTextImageFormat &format);
    void Write_Picture_Size(const QSizeF &shown, const QRectF &part);
    /// Opens the group of text that looks like this, if another or none is open.
    /// @param index  the format's own in the document, -1 for one that has been changed
    void Select(const QTextCharFormat &format, int index);
    void Close_Look();
    QByteArray Associated_Properties(const QFont &font, int number, double pointSize);
    QByteArray Char_Properties(const QTextCharFormat &format);
    void Switch_Link(const QTextCharFormat &format);
    qsizetype Switch_Note(const QTextBlock::iterator &at);
    void Begin_Note(const QTextFragment &bracket);
    void End_Note();
    void Write_Origin(qsizetype field, const QString &text);

    void Write_Table(const QTextTable &table, int nesting);
    void Write_Row_Definition(const QTextTable &table, int row);
    void Write_Cell(const QTextTable &table, int row, int column, int nesting);
    void Write_Border(const char *word, const Shown_Border &border);
    void Write_Cell_Definition(const QTextTable &table, int row, int column, int right);

    const QTextDocument &m_document;
    Header_Tables m_tables;
    QByteArray m_out;
    /// Of whose characters the document has some. Word processors give them properties of their own.
    bool m_hasEastAsian = false, m_hasRightToLeft = false;
    bool m_goesOn = false;                 ///< the last paragraph does, in the next block
    bool m_afterWord = false;              ///< a blank must end the control word before text
    QByteArray m_selected;                 ///< properties of the group of text that is open; empty for none
    QHash<int, QByteArray> m_propertiesOf; ///< by the index of a format
    QString m_link, m_linkTip;             ///< target and help text of the field that is open
    QSet<QString> m_bookmarks;             ///< that have been told of
    int m_note = 0;                        ///< of the last characters
    bool m_inNote = false;                 ///< its group is open
    struct Written_Items {
        int count = 0;
        Rich_Text::Label_Rule rule;
    };
    QHash<const QTextList *, Written_Items> m_items;
};
} // namespace Rtf
