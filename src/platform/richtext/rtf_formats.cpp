// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_formats.h"

#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"
#include "platform/richtext/rtf_borders.h"
#include "platform/richtext/rtf_builder.h"

#include <QBrush>
#include <QColor>

#include <algorithm>

namespace Rtf
{
namespace
{
/// By Align. QTextDocument mirrors left and right in text from right to left, RTF doesn't.
constexpr Qt::Alignment alignments[] = {Qt::AlignLeft, Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter,
                                        Qt::AlignJustify};
constexpr Qt::Alignment mirrored[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignJustify};
constexpr QTextOption::TabType tabKinds[] = {QTextOption::LeftTab, QTextOption::RightTab, QTextOption::CenterTab,
                                             QTextOption::DelimiterTab};
constexpr int mostLevels = 9;

double Pixels(int twips)
{
    return twips / Twips_Per_Pixel;
}
int Given(int length)
{
    return length == Not_Set ? 0 : length;
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
        format.setUnderlineStyle(Underline_Rows[static_cast<int>(style.underline)].style);
    if (style.underline > Underline::Wave)
        format.setProperty(Rich_Text::Underline_Property, static_cast<int>(style.underline));
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
    if (const auto align = (style.rightToLeft ? mirrored : alignments)[static_cast<int>(style.align)];
        align != Qt::AlignLeft)
        format.setAlignment(align);
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
    for (std::size_t side = 0; side < style.borders.size(); ++side) {
        if (style.borders[side].line != Line::None)
            Set_Border(format, side, Shown(model, style.borders[side]));
    }
    return format;
}

/// The template of a level's label, without the mark of its length and the end's semicolon.
QString Label_Text(const List_Level &level)
{
    return level.text.sliced(1, std::max<qsizetype>(1, level.text.lastIndexOf(u';')) - 1);
}

bool Counts_Other_Levels(const List_Definition &list)
{
    for (std::size_t i = 0; i < list.levels.size(); ++i) {
        const List_Level &level = list.levels[i];
        const QStringView text = QStringView(level.text).mid(1);
        if (level.kind != Rich_Text::Bullet_Kind && std::any_of(text.begin(), text.end(), [&](QChar c) {
                return c.unicode() < mostLevels && c.unicode() != i;
            }))
            return true;
    }
    return false;
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

QBrush Brush(const Model &model, int color)
{
    if (color < 0 || static_cast<std::size_t>(color) >= model.colors.size())
        return Qt::NoBrush;
    const QRgb value = model.colors[static_cast<std::size_t>(color)];
    return value ? QBrush(QColor::fromRgb(value)) : QBrush(Qt::NoBrush);
}

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
    if (!level)
        return model.listOfNumber.contains(style.list);
    return level->kind != Rich_Text::No_Label_Kind && (level->text.isEmpty() || !Label_Text(*level).isEmpty());
}

bool Is_Family(const Model &model, const Para_Style &style)
{
    const auto list = model.listOfNumber.constFind(style.list);
    return list != model.listOfNumber.constEnd() && Counts_Other_Levels(model.lists[static_cast<std::size_t>(*list)]);
}

QTextListFormat List_Format(const Model &model, const Para_Style &style, int family)
{
    QTextListFormat format;
    const List_Level *level = Level_Of(model, style);
    format.setIndent(List_Indent(level ? level->left : Not_Set, style.level));
    Rich_Text::Label_Rule rule{.kind = Rich_Text::Bullet_Kind, .text = {}};
    if (level) {
        rule = {.kind = level->kind, .start = level->start, .text = QChar(style.level) + QLatin1String(".")};
        if (!level->text.isEmpty())
            rule.text = Label_Text(*level);
    }
    if (family) {
        rule.level = style.level;
        format.setProperty(Rich_Text::List_Family, family);
    } else if (rule.kind != Rich_Text::Bullet_Kind) {
        rule.text.replace(QChar(style.level), QChar(0));
    }
    Rich_Text::Set_Rule(format, rule);
    return format;
}

QTextListFormat List_Format(const Old_List &list)
{
    QTextListFormat format;
    format.setIndent(1);
    const bool isBullet = list.kind == Rich_Text::Bullet_Kind;
    Rich_Text::Set_Rule(
        format,
        {.kind = list.kind, .start = list.start, .text = isBullet ? list.before : list.before + QChar(0) + list.after});
    return format;
}

QTextTableFormat Table_Format(const Model &model, const Table &table, const Grid &grid, const Border *common)
{
    QTextTableFormat format;
    const Row_Definition &first = table.rows.front().definition;
    const Shown_Border border = common ? Shown(model, *common) : Shown_Border{};
    format.setBorder(border.width);
    format.setBorderStyle(border.style);
    if (Is_Set(border.brush))
        format.setBorderBrush(border.brush);
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

QTextTableCellFormat Cell_Format(const Model &model, const Cell_Definition &cell, bool hasBorders)
{
    QTextTableCellFormat format;
    if (const QBrush brush = Brush(model, cell.back); cell.back > 0 && Is_Set(brush))
        format.setBackground(brush);
    if (cell.vertical)
        format.setVerticalAlignment(cell.vertical == 1 ? QTextCharFormat::AlignMiddle : QTextCharFormat::AlignBottom);
    for (std::size_t side = 0; side < cell.borders.size(); ++side) {
        Shown_Border border = hasBorders ? Shown(model, cell.borders[side]) : Shown_Border{};
        border.space = cell.padding[side] == Not_Set ? -1 : Pixels(cell.padding[side]);
        if (border.Is_Line())
            Set_Border(format, side, border);
        else
            Set_Padding(format, side, border.space);
    }
    return format;
}
} // namespace Rtf
