// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_writer.h"

#include "platform/richtext/rtf_formats.h"

#include <QBrush>
#include <QColor>
#include <QTextList>

#include <algorithm>
#include <cmath>

namespace Rtf
{
namespace
{
constexpr int listLevels = 9;
constexpr int numberSpace = 360; // twips from a number to its text
constexpr qsizetype longestAffix = 40;

int Number_Kind(QTextListFormat::Style style)
{
    switch (style) {
    case QTextListFormat::ListUpperRoman:
        return 1;
    case QTextListFormat::ListLowerRoman:
        return 2;
    case QTextListFormat::ListUpperAlpha:
        return 3;
    case QTextListFormat::ListLowerAlpha:
        return 4;
    case QTextListFormat::ListDecimal:
        return 0;
    default:
        return 23;
    }
}

char16_t Bullet(QTextListFormat::Style style)
{
    return style == QTextListFormat::ListCircle ? u'◦' : style == QTextListFormat::ListSquare ? u'▪' : u'•';
}

void Append_Byte(QByteArray &out, qsizetype value)
{
    out += "\\'" + QByteArray::number(value, 16).rightJustified(2, '0');
}

void Append_Level(QByteArray &out, const QTextListFormat &format, int level, int own)
{
    const int kind = Number_Kind(format.style());
    out += "{\\listlevel";
    Append_Word(out, "\\levelnfc", kind);
    Append_Word(out, "\\levelnfcn", kind);
    out += "\\leveljc0\\leveljcn0\\levelfollow0\\levelstartat1\\levelspace0\\levelindent0{\\leveltext";
    if (kind == 23) {
        const QChar bullet(Bullet(format.style()));
        Append_Byte(out, 1);
        Append_Escaped(out, QStringView(&bullet, 1));
        out += ";}{\\levelnumbers;}";
    } else {
        const QString before = format.numberPrefix().left(longestAffix);
        const QString after = format.numberSuffix().left(longestAffix);
        Append_Byte(out, before.size() + 1 + after.size());
        Append_Escaped(out, before);
        Append_Byte(out, level);
        Append_Escaped(out, after);
        out += ";}{\\levelnumbers";
        Append_Byte(out, before.size() + 1);
        out += ";}";
    }
    Append_Word(out, "\\fi", -numberSpace);
    Append_Word(out, "\\li", Twips_Per_List_Indent * (level == own ? std::max(1, format.indent()) : level + 1));
    out += '}';
}

QString Letters(int number)
{
    QString letters;
    for (; number > 0; number = (number - 1) / 26)
        letters.prepend(QChar(u'a' + (number - 1) % 26));
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
} // namespace

int Twips(double pixels)
{
    return static_cast<int>(std::lround(std::clamp(pixels, -100'000.0, 100'000.0) * 15));
}

void Append_Word(QByteArray &out, const char *word, int number)
{
    out += word + QByteArray::number(number);
}

void Append_Escaped(QByteArray &out, QStringView text)
{
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        switch (unit) {
        case u'\\':
        case u'{':
        case u'}':
            out += '\\';
            out += static_cast<char>(unit);
            break;
        case u'\t':
            out += "\\tab ";
            break;
        case u'\u2028':
        case u'\n':
            out += "\\line ";
            break;
        case u'\u00A0':
            out += "\\~";
            break;
        case u'\u00AD':
            out += "\\-";
            break;
        case u'\u2011':
            out += "\\_";
            break;
        default:
            if (unit >= 0x20 && unit < 0x7F)
                out += static_cast<char>(unit);
            else if (unit >= 0x7F)
                out += "\\u" + QByteArray::number(static_cast<qint16>(unit)) + '?';
        }
    }
}

int List_Level_Of(const QTextList &list)
{
    return std::clamp(list.format().indent() - 1, 0, listLevels - 1);
}

QString Item_Label(const QTextList &list, int number)
{
    const QTextListFormat format = list.format();
    const int kind = Number_Kind(format.style());
    if (kind == 23)
        return QChar(Bullet(format.style()));
    const QString lower = kind == 0 ? QString::number(number) : kind < 3 ? Roman(number) : Letters(number);
    return format.numberPrefix() + (kind == 1 || kind == 3 ? lower.toUpper() : lower) + format.numberSuffix();
}

int Header_Tables::Font_Number(const QString &family)
{
    const auto known = m_fontNumbers.constFind(family);
    if (known != m_fontNumbers.constEnd())
        return *known;
    m_fontNumbers.insert(family, static_cast<int>(m_fonts.size()));
    m_fonts.append(family);
    return static_cast<int>(m_fonts.size()) - 1;
}

int Header_Tables::Color_Number(const QBrush &brush)
{
    return brush.style() == Qt::NoBrush || brush.color().alpha() == 0 ? 0 : Color_Number(brush.color().rgb());
}

int Header_Tables::Color_Number(QRgb color)
{
    int &number = m_colorNumbers[color | 0xFF000000U];
    if (number == 0) {
        m_colors.push_back(color);
        number = static_cast<int>(m_colors.size());
    }
    return number;
}

int Header_Tables::List_Number(const QTextList &list)
{
    int &number = m_listNumbers[&list];
    if (number == 0) {
        m_lists.push_back(&list);
        number = static_cast<int>(m_lists.size());
    }
    return number;
}

QByteArray Header_Tables::Bytes() const
{
    QByteArray out = "{\\fonttbl";
    for (int i = 0; i < m_fonts.size(); ++i) {
        QString name = m_fonts[i];
        name.remove(u';');
        Append_Word(out, "{\\f", i);
        out += "\\fnil\\fcharset0 ";
        Append_Escaped(out, name);
        out += ";}";
    }
    out += "}\r\n{\\colortbl ;";
    for (const QRgb color : m_colors) {
        Append_Word(out, "\\red", qRed(color));
        Append_Word(out, "\\green", qGreen(color));
        Append_Word(out, "\\blue", qBlue(color));
        out += ';';
    }
    out += "}\r\n";
    return m_lists.empty() ? out : out + List_Bytes();
}

QByteArray Header_Tables::List_Bytes() const
{
    QByteArray lists = "{\\*\\listtable";
    QByteArray overrides = "{\\*\\listoverridetable";
    for (std::size_t i = 0; i < m_lists.size(); ++i) {
        const int id = static_cast<int>(i) + 1;
        const int own = List_Level_Of(*m_lists[i]);
        Append_Word(lists, "{\\list\\listtemplateid", id);
        for (int level = 0; level < listLevels; ++level)
            Append_Level(lists, m_lists[i]->format(), level, own);
        Append_Word(lists, "{\\listname ;}\\listid", id);
        lists += "}\r\n";
        Append_Word(overrides, "{\\listoverride\\listid", id);
        Append_Word(overrides, "\\listoverridecount0\\ls", id);
        overrides += '}';
    }
    return lists + "}\r\n" + overrides + "}\r\n";
}
} // namespace Rtf
