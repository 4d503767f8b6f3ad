// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/list_labels.h"

#include "platform/richtext/kept_properties.h"

#include <QTextBlock>
#include <QTextList>

#include <algorithm>
#include <array>

namespace
{
constexpr int mostLevels = 9;
constexpr int farthestParent = 1000; // paragraphs between a list's first item and the one it stands under

QString Letters(int number, char16_t first, int count)
{
    QString letters;
    for (; number > 0; number = (number - 1) / count)
        letters.prepend(QChar(first + (number - 1) % count));
    return letters;
}

QString Roman(int number)
{
    struct Part {
        int value;
        const char *digits;
    };
    static constexpr Part parts[] = {{1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"},
                                     {90, "xc"},  {50, "l"},   {40, "xl"}, {10, "x"},   {9, "ix"},
                                     {5, "v"},    {4, "iv"},   {1, "i"}};
    if (number > 4999)
        return QString::number(number);
    QString roman;
    for (const Part &part : parts) {
        for (; number >= part.value; number -= part.value)
            roman += QLatin1String(part.digits);
    }
    return roman;
}

/// 二十三, 一百零五: each digit with its unit, one 零 for a gap, and no 一 before a leading 十.
QString Chinese(int number)
{
    static constexpr char16_t digits[] = u"零一二三四五六七八九";
    static constexpr std::array<char16_t, 4> units{0, u'十', u'百', u'千'};
    if (number < 1 || number > 9999)
        return QString::number(number);
    QString text;
    bool gap = false;
    int unit = 1000;
    for (std::size_t place = units.size(); place-- > 0; unit /= 10) {
        const int digit = number / unit % 10;
        if (digit == 0) {
            gap = true;
            continue;
        }
        if (gap && !text.isEmpty())
            text += QChar(digits[0]);
        gap = false;
        if (digit != 1 || place != 1 || !text.isEmpty())
            text += QChar(digits[digit]);
        if (place > 0)
            text += QChar(units[place]);
    }
    return text;
}

QString Ordinal(int number)
{
    const int last = number % 100 / 10 == 1 ? 0 : number % 10;
    return QString::number(number) + QLatin1String(last == 1 ? "st" : last == 2 ? "nd" : last == 3 ? "rd" : "th");
}

/// Signs that follow each other in Unicode; beyond the last one numbers are plain.
QString Sign(int number, char16_t first, int count)
{
    return number >= 1 && number <= count ? QString(QChar(first + number - 1)) : QString::number(number);
}

QString Fullwidth(int number)
{
    QString digits = QString::number(number);
    for (QChar &digit : digits)
        digit = digit.isDigit() ? QChar(digit.unicode() - u'0' + u'０') : digit;
    return digits;
}

/// A number as \levelnfc asks for it (RTF 1.9.1, "List Table"); ways that are not known here are decimal.
QString Number_Text(int kind, int number)
{
    static constexpr char16_t stems[] = u"甲乙丙丁戊己庚辛壬癸";
    static constexpr char16_t branches[] = u"子丑寅卯辰巳午未申酉戌亥";
    switch (kind) {
    case 1:
        return Roman(number).toUpper();
    case 2:
        return Roman(number);
    case 3:
        return Letters(number, u'A', 26);
    case 4:
        return Letters(number, u'a', 26);
    case 5:
        return Ordinal(number);
    case 10:
    case 11:
    case 16:
    case 33:
    case 34:
    case 35:
    case 36:
    case 37:
    case 39:
        return Chinese(number);
    case 14:
    case 19:
        return Fullwidth(number);
    case 18:
    case 28:
        return Sign(number, u'①', 20);
    case 22:
        return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
    case 26:
        return Sign(number, u'⒈', 20);
    case 27:
        return Sign(number, u'⑴', 20);
    case 29:
        return Sign(number, u'㈠', 10);
    case 30:
        return QChar(stems[std::max(0, number - 1) % 10]);
    case 31:
        return QChar(branches[std::max(0, number - 1) % 12]);
    case 58:
        return Letters(number, u'а', 32);
    case 59:
        return Letters(number, u'А', 32);
    default:
        return QString::number(number);
    }
}

struct Known_Style {
    QTextListFormat::Style style;
    int kind;
    char16_t sign; ///< of a bullet
};
constexpr Known_Style styles[] = {
    {QTextListFormat::ListDecimal, 0, 0},
    {QTextListFormat::ListUpperRoman, 1, 0},
    {QTextListFormat::ListLowerRoman, 2, 0},
    {QTextListFormat::ListUpperAlpha, 3, 0},
    {QTextListFormat::ListLowerAlpha, 4, 0},
    {QTextListFormat::ListDisc, Rich_Text::Bullet_Kind, u'•'},
    {QTextListFormat::ListCircle, Rich_Text::Bullet_Kind, u'◦'},
    {QTextListFormat::ListSquare, Rich_Text::Bullet_Kind, u'▪'},
};

/// The sign of QTextDocument's own that looks like this one.
char16_t Likeness(char16_t sign)
{
    switch (sign) {
    case 0xB7:
    case u'●':
    case u'∙':
        return u'•';
    case u'o':
    case u'○':
        return u'◦';
    case u'■':
    case u'□':
    case u'◾':
        return u'▪';
    default:
        return sign >= 0xF000 && sign <= 0xF0FF ? u'•' : sign; // a glyph of a font that is not known
    }
}

const Known_Style *Style_For(const Rich_Text::Label_Rule &rule)
{
    const bool isBullet = rule.kind == Rich_Text::Bullet_Kind;
    if (isBullet && rule.text.size() > 1)
        return nullptr;
    const char16_t sign = !isBullet ? u'\0' : rule.text.isEmpty() ? u'•' : Likeness(rule.text.front().unicode());
    const auto *known = std::find_if(std::begin(styles), std::end(styles), [&](const Known_Style &each) {
        return each.kind == rule.kind && each.sign == sign;
    });
    return known == std::end(styles) ? nullptr : known;
}

bool Is_Level(QChar c)
{
    return c.unicode() < mostLevels;
}

int Family_Of(const QTextListFormat &format)
{
    return format.intProperty(Rich_Text::List_Family);
}

/// The number of the item of a higher level that the list stands under.
QString Number_Above(const QTextList &list, int level)
{
    const int family = Family_Of(list.format());
    QTextBlock above = list.item(0).previous();
    for (int steps = 0; family != 0 && above.isValid() && steps < farthestParent; ++steps, above = above.previous()) {
        const QTextList *other = above.textList();
        if (!other || Family_Of(other->format()) != family)
            continue;
        const Rich_Text::Label_Rule rule = Rich_Text::Rule_Of(other->format());
        if (rule.level == level)
            return Number_Text(rule.kind, rule.start + other->itemNumber(above));
        if (rule.level < level)
            break;
    }
    return QStringLiteral("1");
}
} // namespace

namespace Rich_Text
{
QString Item_Label(const QTextBlock &block)
{
    const QTextList *list = block.textList();
    return list ? Item_Label(Rule_In_Place(*list), list->itemNumber(block) + 1) : QString();
}

QString Item_Label(const Label_Rule &rule, int item)
{
    if (rule.kind == Bullet_Kind)
        return rule.text;
    QString label;
    for (const QChar c : rule.text)
        label += c == QChar(rule.level) ? Number_Text(rule.kind, rule.start + item - 1) : QString(c);
    return label;
}

Label_Rule Rule_In_Place(const QTextList &list)
{
    Label_Rule rule = Rule_Of(list.format());
    QString text;
    for (const QChar c : std::as_const(rule.text))
        text += Is_Level(c) && c != QChar(rule.level) && rule.kind != Bullet_Kind ? Number_Above(list, c.unicode())
                                                                                  : QString(c);
    rule.text = text;
    return rule;
}

Label_Rule Rule_Of(const QTextListFormat &format)
{
    Label_Rule rule;
    rule.level = format.intProperty(List_Level);
    if (format.style() == Kept_Labels) {
        rule.kind = format.intProperty(List_Kind);
        rule.start = format.hasProperty(List_Start) ? format.intProperty(List_Start) : 1;
        rule.text = format.stringProperty(List_Text);
        return rule;
    }
    const auto *known = std::find_if(std::begin(styles), std::end(styles),
                                     [&](const Known_Style &each) { return each.style == format.style(); });
    if (known == std::end(styles))
        known = Style_For({.kind = Bullet_Kind, .text = {}});
    rule.kind = known->kind;
    if (rule.kind == Bullet_Kind)
        rule.text = QChar(known->sign);
    else
        rule.text = format.numberPrefix() + QChar(rule.level) +
                    (format.hasProperty(QTextFormat::ListNumberSuffix) ? format.numberSuffix() : QStringLiteral("."));
    return rule;
}

void Set_Rule(QTextListFormat &format, const Label_Rule &rule)
{
    if (rule.level != 0)
        format.setProperty(List_Level, rule.level);
    const qsizetype own = rule.text.indexOf(QChar(rule.level));
    const bool isBullet = rule.kind == Bullet_Kind;
    const Known_Style *known = Style_For(rule);
    if (known && (isBullet ||
                  (rule.start == 1 && own >= 0 && std::count_if(rule.text.begin(), rule.text.end(), Is_Level) == 1))) {
        format.setStyle(known->style);
        if (!isBullet && own > 0)
            format.setNumberPrefix(rule.text.first(own));
        if (!isBullet)
            format.setNumberSuffix(rule.text.sliced(own + 1));
        return;
    }
    format.setStyle(Kept_Labels);
    format.setProperty(List_Kind, rule.kind);
    format.setProperty(List_Text, rule.text);
    if (rule.start != 1)
        format.setProperty(List_Start, rule.start);
}
} // namespace Rich_Text
