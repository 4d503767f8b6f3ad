// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_formats.h"

#include "platform/richtext/rtf_builder.h"

#include <QBrush>
#include <QColor>

#include <algorithm>

namespace Rtf
{
namespace
{
constexpr QTextCharFormat::UnderlineStyle underlines[] = {
    QTextCharFormat::NoUnderline,  QTextCharFormat::SingleUnderline, QTextCharFormat::DashUnderline,
    QTextCharFormat::DotLine,      QTextCharFormat::DashDotLine,     QTextCharFormat::DashDotDotLine,
    QTextCharFormat::WaveUnderline};
constexpr Qt::Alignment alignments[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify};
constexpr QTextOption::TabType tabKinds[] = {QTextOption::LeftTab, QTextOption::RightTab, QTextOption::CenterTab,
                                             QTextOption::DelimiterTab};
constexpr QTextListFormat::Style numberStyles[] = {QTextListFormat::ListDecimal, QTextListFormat::ListUpperRoman,
                                                   QTextListFormat::ListLowerRoman, QTextListFormat::ListUpperAlpha,
                                                   QTextListFormat::ListLowerAlpha};

constexpr int bullet = 23; // of \levelnfc
constexpr int noNumber = 255;

double Pixels(int twips)
{
    return twips / Twips_Per_Pixel;
}
int Given(int length)
{
    return length == Not_Set ? 0 : length;
}

/// The brush of a colour's index, or none for an automatic colour.
QBrush Brush(const Model &model, int color)
{
    if (color < 0 || static_cast<std::size_t>(color) >= model.colors.size())
        return Qt::NoBrush;
    const QRgb value = model.colors[static_cast<std::size_t>(color)];
    return value ? QBrush(QColor::fromRgb(value)) : QBrush(Qt::NoBrush);
}

bool Is_Set(const QBrush &brush)
{
    return brush.style() != Qt::NoBrush;
}

void Set_Colors(const Model &model, const Char_Style &style, QTextCharFormat &format)
{
    if (const QBrush brush = Brush(model, style.color); Is_Set(brush))
        format.setForeground(brush);
    if (const QBrush brush = Brush(model, style.back); style.back > 0 && Is_Set(brush))
        format.setBackground(brush);
    if (const QBrush brush = Brush(model, style.underlineColor); style.underlineColor > 0 && Is_Set(brush))
        format.setUnderlineColor(brush.color());
}

QTextCharFormat Char_Format(const Model &model, const Char_Style &style)
{
    QTextCharFormat format;
    if (const auto font = static_cast<std::size_t>(std::max(style.font, 0));
        style.font >= 0 && !model.fonts[font].name.isEmpty())
        format.setFontFamilies({model.fonts[font].name});
    format.setFontPointSize(style.halfPoints / 2.0);
    if (style.flags & Bold)
        format.setFontWeight(QFont::Bold);
    if (style.flags & Italic)
        format.setFontItalic(true);
    if (style.flags & Strike)
        format.setFontStrikeOut(true);
    if (style.flags & (All_Caps | Small_Caps))
        format.setFontCapitalization(style.flags & All_Caps ? QFont::AllUppercase : QFont::SmallCaps);
    if (style.underline != Underline::None)
        format.setUnderlineStyle(underlines[static_cast<int>(style.underline)]);
    if (style.script != Script::Normal)
        format.setVerticalAlignment(style.script == Script::Super ? QTextCharFormat::AlignSuperScript
                                                                  : QTextCharFormat::AlignSubScript);
    if (style.spacing) {
        format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        format.setFontLetterSpacing(Pixels(style.spacing));
    }
    if (style.stretchPercent != 100)
        format.setFontStretch(style.stretchPercent);
    if (style.link >= 0) {
        format.setAnchor(true);
        format.setAnchorHref(model.links[static_cast<std::size_t>(style.link)]);
    }
    Set_Colors(model, style, format);
    return format;
}

void Set_Line_Height(const Para_Style &style, QTextBlockFormat &format)
{
    if (style.line == 0 || (style.lineMultiple && style.line == 240))
        return;
    if (style.lineMultiple)
        format.setLineHeight(std::abs(style.line) / 2.4, QTextBlockFormat::ProportionalHeight);
    else
        format.setLineHeight(Pixels(std::abs(style.line)),
                             style.line > 0 ? QTextBlockFormat::MinimumHeight : QTextBlockFormat::FixedHeight);
}

const List_Level *Level_Of(const Model &model, const Para_Style &style)
{
    const auto list = model.listOfNumber.constFind(style.list);
    if (list == model.listOfNumber.constEnd())
        return nullptr;
    const auto &levels = model.lists[static_cast<std::size_t>(*list)].levels;
    const auto level = static_cast<std::size_t>(style.level);
    return level < levels.size() ? &levels[level] : nullptr;
}

int List_Indent(int twips, int level)
{
    const int steps = (Given(twips) + Twips_Per_List_Indent / 2) / Twips_Per_List_Indent;
    return std::clamp(steps, level + 1, 20);
}

/// A list's own indent takes the place of the margin that its level gives; only what a paragraph adds remains.
void Set_Indents(const Model &model, const Para_Style &style, QTextBlockFormat &format)
{
    int left = Given(style.left);
    int first = Given(style.first);
    if (const List_Level *level = Level_Of(model, style); level && Is_List_Item(model, style)) {
        left = style.left == Not_Set ? 0 : style.left - Given(level->left);
        first = style.first == Not_Set ? 0 : style.first - Given(level->first);
    } else if (style.oldList >= 0) {
        left = 0;
        first = 0;
    }
    if (left)
        format.setLeftMargin(Pixels(left));
    if (first)
        format.setTextIndent(Pixels(first));
}

QTextBlockFormat Block_Format(const Model &model, const Para_Style &style)
{
    QTextBlockFormat format;
    Set_Indents(model, style, format);
    if (style.align != Align::Left)
        format.setAlignment(alignments[static_cast<int>(style.align)]);
    if (style.right)
        format.setRightMargin(Pixels(style.right));
    if (style.before)
        format.setTopMargin(Pixels(style.before));
    if (style.after)
        format.setBottomMargin(Pixels(style.after));
    Set_Line_Height(style, format);
    if (const QBrush brush = Brush(model, style.back); style.back > 0 && Is_Set(brush))
        format.setBackground(brush);
    if (style.outline >= 0)
        format.setHeadingLevel(style.outline + 1);
    if (style.rightToLeft)
        format.setLayoutDirection(Qt::RightToLeft);
    if (style.pageBreakBefore)
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    QList<QTextOption::Tab> tabs;
    for (const Tab_Stop &tab : style.tabs)
        tabs.append(QTextOption::Tab(Pixels(tab.position), tabKinds[static_cast<int>(tab.kind)],
                                     tab.kind == Tab_Kind::Decimal ? QChar(u'.') : QChar()));
    if (!tabs.isEmpty())
        format.setTabPositions(tabs);
    return format;
}

QTextListFormat::Style Bullet_Style(QStringView text)
{
    if (text.isEmpty())
        return QTextListFormat::ListDisc;
    switch (text.front().unicode()) { // the last of each line: the glyph of Symbol or Wingdings
    case u'o':
    case u'◦':
    case u'○':
        return QTextListFormat::ListCircle;
    case u'■':
    case u'▪':
    case u'□':
    case u'\uF06E':
    case u'\uF0A7':
        return QTextListFormat::ListSquare;
    default:
        return QTextListFormat::ListDisc;
    }
}

QTextListFormat::Style Number_Style(int kind)
{
    return kind >= 0 && kind < 5 ? numberStyles[kind] : QTextListFormat::ListDecimal;
}

/// Splits a level's template, such as "<3>(<1>)", at the sign that stands for the level's own number.
void Set_Affixes(const QString &text, int level, QTextListFormat &format)
{
    const qsizetype own = text.indexOf(QChar(level), 1);
    if (own < 0)
        return;
    const auto isPlain = [](QStringView part) {
        return std::none_of(part.begin(), part.end(), [](QChar c) { return c.unicode() < 9; });
    };
    const QString before = text.sliced(1, own - 1);
    QString after = text.sliced(own + 1);
    if (const qsizetype end = after.lastIndexOf(u';'); end >= 0)
        after.truncate(end);
    if (isPlain(before) && !before.isEmpty())
        format.setNumberPrefix(before);
    if (isPlain(after))
        format.setNumberSuffix(after);
}

QTextLength Column_Width(const Grid &grid, std::size_t column)
{
    const Cell_Definition &cell = grid.columnCells[column];
    if (cell.widthKind == Width_Kind::Automatic)
        return {};
    if (cell.widthKind == Width_Kind::Percent)
        return QTextLength(QTextLength::PercentageLength, cell.width / 50.0);
    return QTextLength(QTextLength::FixedLength, Pixels(grid.edges[column + 1] - grid.edges[column]));
}

/// Columns get widths only if one of them has a width at all.
void Set_Columns(const Grid &grid, QTextTableFormat &format)
{
    QList<QTextLength> widths;
    bool anyFixed = false;
    for (std::size_t column = 0; column < grid.columnCells.size(); ++column) {
        widths.append(Column_Width(grid, column));
        anyFixed = anyFixed || widths.last().type() != QTextLength::VariableLength;
    }
    if (anyFixed)
        format.setColumnWidthConstraints(widths);
}
} // namespace

std::vector<QTextCharFormat> Char_Formats(const Model &model)
{
    std::vector<QTextCharFormat> formats;
    formats.reserve(model.charStyles.size());
    for (const Char_Style &style : model.charStyles)
        formats.push_back(Char_Format(model, style));
    return formats;
}

std::vector<QTextBlockFormat> Block_Formats(const Model &model)
{
    std::vector<QTextBlockFormat> formats;
    formats.reserve(model.paraStyles.size());
    for (const Para_Style &style : model.paraStyles)
        formats.push_back(Block_Format(model, style));
    return formats;
}

bool Is_List_Item(const Model &model, const Para_Style &style)
{
    const List_Level *level = Level_Of(model, style);
    return level ? level->kind != noNumber : model.listOfNumber.contains(style.list);
}

QTextListFormat List_Format(const Model &model, const Para_Style &style)
{
    QTextListFormat format;
    const List_Level *level = Level_Of(model, style);
    format.setStyle(QTextListFormat::ListDisc);
    format.setIndent(List_Indent(level ? level->left : Not_Set, style.level));
    if (!level)
        return format;
    if (level->kind == bullet) {
        format.setStyle(Bullet_Style(QStringView(level->text).mid(1)));
        return format;
    }
    format.setStyle(Number_Style(level->kind));
    Set_Affixes(level->text, style.level, format);
    return format;
}

QTextListFormat List_Format(const Old_List &list)
{
    QTextListFormat format;
    format.setIndent(1);
    if (list.kind == bullet) {
        format.setStyle(Bullet_Style(list.before));
        return format;
    }
    format.setStyle(Number_Style(list.kind));
    if (!list.before.isEmpty())
        format.setNumberPrefix(list.before);
    if (!list.after.isEmpty())
        format.setNumberSuffix(list.after);
    return format;
}

QTextTableFormat Table_Format(const Model &model, const Table &table, const Grid &grid)
{
    QTextTableFormat format;
    const Row_Definition &first = table.rows.front().definition;
    int border = 0, color = 0;
    for (const Placement &cell : grid.cells) {
        if (cell.definition.borderWidth > border) {
            border = cell.definition.borderWidth;
            color = cell.definition.borderColor;
        }
    }
    format.setBorder(Pixels(border));
    format.setBorderStyle(border ? QTextFrameFormat::BorderStyle_Solid : QTextFrameFormat::BorderStyle_None);
    if (const QBrush brush = Brush(model, color); color > 0 && Is_Set(brush))
        format.setBorderBrush(brush);
    format.setBorderCollapse(first.spacing <= 0);
    format.setCellSpacing(Pixels(std::max(0, first.spacing)));
    format.setCellPadding(Pixels(std::max(0, first.padding == Not_Set ? first.gap : first.padding)));
    format.setAlignment(alignments[static_cast<int>(first.align)]);
    if (first.widthKind == Width_Kind::Percent && first.width > 0)
        format.setWidth(QTextLength(QTextLength::PercentageLength, first.width / 50.0));
    else if (first.widthKind == Width_Kind::Fixed && first.width > 0)
        format.setWidth(QTextLength(QTextLength::FixedLength, Pixels(first.width)));
    const auto body =
        std::find_if(table.rows.begin(), table.rows.end(), [](const Row &row) { return !row.definition.header; });
    if (body != table.rows.begin())
        format.setHeaderRowCount(static_cast<int>(body - table.rows.begin()));
    Set_Columns(grid, format);
    return format;
}

QTextTableCellFormat Cell_Format(const Model &model, const Cell_Definition &cell)
{
    QTextTableCellFormat format;
    if (const QBrush brush = Brush(model, cell.back); cell.back > 0 && Is_Set(brush))
        format.setBackground(brush);
    if (cell.vertical)
        format.setVerticalAlignment(cell.vertical == 1 ? QTextCharFormat::AlignMiddle : QTextCharFormat::AlignBottom);
    return format;
}
} // namespace Rtf
