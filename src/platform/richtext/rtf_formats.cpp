// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_formats.h"

#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"
#include "platform/richtext/rtf_borders.h"
#include "platform/richtext/rtf_builder.h"
#include "platform/richtext/rtf_notes.h"

#include <QBrush>
#include <QColor>
#include <QSet>

#include <algorithm>
#include <atomic>

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

/// The fonts of a document that are shown: to look for many of them in the system takes seconds.
class Shown_Fonts
{
public:
    void Set(const QString &name, QTextCharFormat &format)
    {
        if (m_names.size() < mostFonts)
            m_names.insert(name);
        if (m_names.contains(name))
            format.setFontFamilies({name});
        else
            format.setProperty(Rich_Text::Unshown_Font, name);
    }

private:
    static constexpr qsizetype mostFonts = 256;
    QSet<QString> m_names;
};

QTextCharFormat Char_Format(const Model &model, const Char_Style &style, int firstNote, Shown_Fonts &fonts)
{
    QTextCharFormat format;
    if (const auto font = static_cast<std::size_t>(std::max(style.font, 0));
        style.font >= 0 && !model.fonts[font].name.isEmpty())
        fonts.Set(model.fonts[font].name, format);
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
        const Link &link = model.links[static_cast<std::size_t>(style.link)];
        format.setAnchorHref(link.target);
        if (!link.tip.isEmpty())
            format.setToolTip(link.tip);
    }
    if (style.anchor >= 0) {
        format.setAnchor(true);
        format.setAnchorNames(model.anchors[static_cast<std::size_t>(style.anchor)]);
        format.setProperty(Rich_Text::Bookmark_Number, style.anchor);
    }
    if (style.note >= 0)
        Set_Note(model.notes[static_cast<std::size_t>(style.note)], firstNote + style.note, format);
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

int First_Of(const List_Level *level)
{
    return !level || level->first == Not_Set ? Usual_First : level->first;
}

/// @param ofList where the first lines of the list begin  @returns where the text of this item's does
int Set_First(const Para_Style &style, int ofList, QTextBlockFormat &format)
{
    const int first = style.first == Not_Set ? ofList : style.first;
    if (first != ofList)
        format.setProperty(Rich_Text::List_First, first);
    return Label_Room(first);
}

/// QTextDocument moves items of a list in by its level, so their margins count from there, and has them begin with
/// their text, not with the label.
void Set_Indents(const Model &model, const Para_Style &style, QTextBlockFormat &format)
{
    int left = Given(style.left);
    int first = Given(style.first);
    if (Is_List_Item(model, style)) {
        const List_Level *level = Level_Of(model, style);
        const int usual = Twips_Per_List_Indent * (style.level + 1);
        const int ofLevel = !level || level->left == Not_Set ? usual : level->left;
        left = (style.left == Not_Set ? ofLevel : style.left) - usual;
        first = Set_First(style, First_Of(level), format);
    } else if (style.oldList >= 0) {
        const int usual = Twips_Per_List_Indent * (model.oldLists[static_cast<std::size_t>(style.oldList)].level + 1);
        left = style.left == Not_Set ? 0 : style.left - usual;
        first = Set_First(style, Usual_First, format);
    }
    if (left)
        format.setLeftMargin(Pixels(left));
    if (first)
        format.setTextIndent(Pixels(first));
}

/// A pattern of dots in one colour on another looks like what is between them.
QBrush Shaded(const Model &model, int back, int pattern, int shading)
{
    const QBrush ground = back > 0 ? Brush(model, back) : QBrush(Qt::NoBrush);
    if (shading <= 0)
        return ground;
    const QBrush dots = pattern > 0 ? Brush(model, pattern) : QBrush(Qt::NoBrush);
    const QColor over = Is_Set(dots) ? dots.color() : Qt::black, under = Is_Set(ground) ? ground.color() : Qt::white;
    const auto between = [share = std::min(shading, 10'000)](int one, int other) {
        return (one * share + other * (10'000 - share)) / 10'000;
    };
    return QColor(between(over.red(), under.red()), between(over.green(), under.green()),
                  between(over.blue(), under.blue()));
}

void Set_Tabs(const QList<Tab_Stop> &stops, QTextBlockFormat &format)
{
    QList<QTextOption::Tab> tabs;
    QByteArray leaders;
    for (const Tab_Stop &stop : stops) {
        tabs.append(QTextOption::Tab(Pixels(stop.position), tabKinds[static_cast<int>(stop.kind)],
                                     stop.kind == Tab_Kind::Decimal ? QChar(u'.') : QChar()));
        leaders.append(static_cast<char>(stop.leader));
    }
    if (!tabs.isEmpty())
        format.setTabPositions(tabs);
    if (std::any_of(leaders.begin(), leaders.end(), [](char leader) { return leader != 0; }))
        format.setProperty(Rich_Text::Tab_Leaders, leaders);
}

QTextBlockFormat Block_Format(const Model &model, const Para_Style &style)
{
    QTextBlockFormat format;
    Set_Indents(model, style, format);
    if (const auto align =
            (style.direction == Direction::Leftwards ? mirrored : alignments)[static_cast<int>(style.align)];
        align != Qt::AlignLeft)
        format.setAlignment(align);
    if (style.right)
        format.setRightMargin(Pixels(style.right));
    if (style.before)
        format.setTopMargin(Pixels(style.before));
    if (style.after)
        format.setBottomMargin(Pixels(style.after));
    Set_Line_Height(style, format);
    if (const QBrush brush = Shaded(model, style.back, style.pattern, style.shading); Is_Set(brush))
        format.setBackground(brush);
    if (style.outline >= 0)
        format.setHeadingLevel(style.outline + 1);
    if (style.direction != Direction::By_Text)
        format.setLayoutDirection(style.direction == Direction::Leftwards ? Qt::RightToLeft : Qt::LeftToRight);
    if (style.pageBreakBefore)
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    if (style.keepWithNext)
        format.setProperty(Rich_Text::Keep_With_Next, true);
    if (style.isRest)
        format.setProperty(Rich_Text::Rest_Of_Paragraph, true);
    Set_Tabs(style.tabs, format);
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
    static std::atomic<int> nextNote = 1; // notes stay apart when documents are pasted into each other
    const int firstNote = nextNote.fetch_add(static_cast<int>(model.notes.size()));
    Shown_Fonts fonts;
    std::vector<QTextCharFormat> formats;
    formats.reserve(model.charStyles.size());
    for (const Char_Style &style : model.charStyles)
        formats.push_back(Char_Format(model, style, firstNote, fonts));
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

int Label_Room(int first)
{
    return first > Usual_First / 2 ? first - Usual_First : 0;
}

int First_Of(const QTextListFormat &list, const QTextBlockFormat &item)
{
    if (item.hasProperty(Rich_Text::List_First))
        return item.intProperty(Rich_Text::List_First);
    return list.hasProperty(Rich_Text::List_First) ? list.intProperty(Rich_Text::List_First) : Usual_First;
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
    format.setIndent(style.level + 1);
    if (const int first = First_Of(level); first != Usual_First)
        format.setProperty(Rich_Text::List_First, first);
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
    format.setIndent(list.level + 1);
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
    if (first.left > 0)
        format.setLeftMargin(Pixels(first.left));
    if (table.pageBreakBefore)
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    Set_Columns(grid, format);
    return format;
}

QTextTableCellFormat Cell_Format(const Model &model, const Cell_Definition &cell, bool hasBorders)
{
    QTextTableCellFormat format;
    if (const QBrush brush = Shaded(model, cell.back, cell.pattern, cell.shading); Is_Set(brush))
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
