// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QRectF>
#include <QRgb>
#include <QString>

#include <array>
#include <climits>
#include <deque>
#include <vector>

/// A document as its RTF told it, before it becomes a QTextDocument: the reader fills it, the builder shows it.
/// Lengths are in twips (1/1440 inch) unless a name says otherwise; colours are indexes of `Model::colors`.
namespace Rtf
{
enum Char_Flag : quint16 { Bold = 1, Italic = 2, Strike = 4, Hidden = 8, All_Caps = 16, Small_Caps = 32, Deleted = 64 };
inline constexpr int Out_Of_Sight = Hidden | Deleted;
/// As the rows of Underline_Rows; up to Wave QTextDocument has them too.
enum class Underline : quint8 {
    None,
    Single,
    Dash,
    Dot,
    Dash_Dot,
    Dash_Dot_Dot,
    Wave,
    Double,
    Words,
    Thick,
    Long_Dash,
    Thick_Dash,
    Thick_Long_Dash,
    Thick_Dot,
    Thick_Dash_Dot,
    Thick_Dash_Dot_Dot,
    Heavy_Wave,
    Double_Wave
};
enum class Script : quint8 { Normal, Super, Sub };

struct Char_Style {
    int font = -1; ///< index of Model::fonts
    int halfPoints = 24;
    int color = -1;
    int back = 0; ///< 0 is no background
    int underlineColor = 0;
    int link = -1;   ///< index of Model::links
    int anchor = -1; ///< index of Model::anchors
    int note = -1;   ///< index of Model::notes
    int spacing = 0;
    int stretchPercent = 100;
    quint16 flags = 0;
    Underline underline = Underline::None;
    Script script = Script::Normal;

    bool operator==(const Char_Style &) const = default;
};
size_t qHash(const Char_Style &style, size_t seed = 0);

enum class Tab_Kind : quint8 { Left, Right, Center, Decimal };
/// What fills the space before a tab stop.
inline constexpr const char *Leader_Words[] = {"", "\\tldot", "\\tlmdot", "\\tlhyph", "\\tlul", "\\tlth", "\\tleq"};
struct Tab_Stop {
    int position = 0;
    Tab_Kind kind = Tab_Kind::Left;
    quint8 leader = 0; ///< index of Leader_Words
    bool operator==(const Tab_Stop &) const = default;
};
size_t qHash(const Tab_Stop &tab, size_t seed = 0);

enum class Direction : quint8 { By_Text, Rightwards, Leftwards };
/// Leading is where the text's direction begins.
enum class Align : quint8 { Leading, Left, Right, Center, Justify };

/// Numbered as QTextFrameFormat::BorderStyle.
enum class Line : quint8 { None, Dotted, Dashed, Solid, Double, Dot_Dash, Dot_Dot_Dash, Groove, Ridge, Inset, Outset };
enum Side : quint8 { Top, Bottom, Left_Side, Right_Side };
struct Border {
    Line line = Line::None;
    quint8 width = 0; ///< 0 is as thin as can be seen
    qint16 space = 0; ///< between a paragraph's text and the line
    int color = 0;
    bool operator==(const Border &) const = default;
};
using Borders = std::array<Border, 4>; ///< by Side

inline constexpr int Not_Set = INT_MIN;

inline constexpr int Goes_On = -2; ///< a paragraph without a label of its own, which doesn't end its list

struct Para_Style {
    int left = Not_Set;
    int right = 0;
    int first = Not_Set;
    int before = 0;
    int after = 0;
    int line = 0; ///< \sl: 0 automatic, positive at least, negative exact; 240ths of a line if lineMultiple
    int back = 0;
    int pattern = 0; ///< colour of the shading
    int shading = 0; ///< how much of the background the pattern covers, in hundredths of a percent
    int list = 0;    ///< \ls number; 0 is none
    int level = 0;
    int oldList = -1; ///< index of Model::oldLists, or Goes_On
    int outline = -1; ///< \outlinelevel, 0 the highest
    int nesting = 0;  ///< how many tables the paragraph stands in
    QList<Tab_Stop> tabs;
    Borders borders{};
    Align align = Align::Leading;
    bool lineMultiple = false;
    Direction direction = Direction::By_Text;
    bool pageBreakBefore = false;
    bool keepWithNext = false;
    bool isRest = false; ///< of the paragraph before, which was too long

    bool operator==(const Para_Style &) const = default;
};

struct Run {
    qsizetype begin = 0; ///< in Model::text
    qsizetype length = 0;
    int style = 0;    ///< index of Model::charStyles
    int picture = -1; ///< index of Model::pictures; such a run has no text
};

struct Paragraph {
    int firstRun = 0;
    int runCount = 0;
    int style = 0;     ///< index of Model::paraStyles
    int markStyle = 0; ///< character style of the paragraph's end
};

struct Flow_Item {
    bool isTable = false;
    int index = 0; ///< of Model::paragraphs or Model::tables
};
using Flow = std::vector<Flow_Item>;

enum class Width_Kind : quint8 { Not_Given, Automatic, Percent, Fixed };

struct Cell_Definition {
    int right = 0; ///< distance of the right edge from the text's left margin
    int width = 0; ///< twips, or 50ths of a percent
    int back = 0;
    int pattern = 0, shading = 0; ///< as a paragraph's
    Borders borders{};
    std::array<int, 4> padding{Not_Set, Not_Set, Not_Set, Not_Set}; ///< by Side
    Width_Kind widthKind = Width_Kind::Not_Given;
    quint8 vertical = 0; ///< 0 top, 1 centre, 2 bottom
    bool mergeFirst = false, merged = false;
    bool verticalFirst = false, verticalMerged = false;
};

struct Row_Definition {
    int left = 0;
    int gap = 0;           ///< half the space between two cells' texts
    int padding = Not_Set; ///< said outright
    int spacing = 0;
    int width = 0;
    Width_Kind widthKind = Width_Kind::Not_Given;
    Align align = Align::Leading;
    bool header = false;
    std::vector<Cell_Definition> cells;
};

struct Row {
    Row_Definition definition;
    std::vector<Flow> cells;
};
struct Table {
    std::vector<Row> rows;
    bool pageBreakBefore = false;
    bool goesOn = false; ///< the table before, which was too long
};

struct List_Level {
    int kind = 0; ///< \levelnfc: 0 decimal, 1 I, 2 i, 3 A, 4 a, 23 bullet, 255 none
    int start = 1;
    int left = Not_Set;
    int first = Not_Set;
    QString text; ///< length mark and template, as \leveltext has them
    bool operator==(const List_Level &) const = default;
};
struct List_Definition {
    int id = 0;
    std::vector<List_Level> levels;
};
struct Old_List {
    int kind = 23;
    int start = 1;
    int level = 0;
    QString before, after;
    bool operator==(const Old_List &) const = default;
};

struct Picture {
    QByteArray bytes; ///< an image file, complete with the header that RTF leaves out
    int width = 0;    ///< as shown; 0 where nothing was said
    int height = 0;
    QRectF part{0, 0, 1, 1}; ///< what is shown of the picture, the whole being 1 by 1
};

struct Font {
    QString name;
    int codePage = 0;
    bool plainAnsi = false; ///< \fcharset0, which some writers put on any font
};

struct Link {
    QString target;
    QString tip;
    bool operator==(const Link &) const = default;
};

enum class Note_Kind : quint8 { Footnote, Endnote, Comment };
struct Note {
    Note_Kind kind = Note_Kind::Footnote;
    std::array<QString, 3> origin; ///< by Note_Origin_Words
};

struct Model {
    QString text;
    std::vector<Run> runs;
    std::vector<Paragraph> paragraphs;
    std::deque<Table> tables;
    Flow body;
    std::vector<Char_Style> charStyles;
    std::vector<Para_Style> paraStyles;
    std::vector<Font> fonts;
    std::vector<QRgb> colors; ///< 0 where the colour is automatic
    std::vector<Link> links;
    std::vector<QStringList> anchors; ///< names of the bookmarks that begin at one place
    std::vector<Note> notes;
    std::vector<Picture> pictures;
    std::vector<List_Definition> lists;
    QStringList pageTexts;       ///< headers and footers, by their kinds; empty for none
    std::array<QString, 9> info; ///< by Info_Words
    std::array<int, 9> pageMeasures{Not_Set, Not_Set, Not_Set, Not_Set, Not_Set,
                                    Not_Set, Not_Set, Not_Set, Not_Set}; ///< by Page_Measure_Words
    QHash<int, int> listOfNumber;                                        ///< \ls number to index of lists
    std::vector<Old_List> oldLists;
    int losses = 0; ///< flags of Rich_Text::Loss
};
} // namespace Rtf
