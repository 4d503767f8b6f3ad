// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_formats.h"
#include "platform/richtext/rtf_writer.h"

#include <QBrush>
#include <QColor>
#include <QTextBlock>
#include <QTextList>

#include <algorithm>
#include <cmath>

namespace Rtf
{
int Twips(double pixels)
{
    return static_cast<int>(std::lround(std::clamp(pixels, -100'000.0, 100'000.0) * 15));
}

int Left_Of(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    const QTextList *list = block.textList();
    const int steps = format.indent() + (list ? std::max(1, list->format().indent()) : 0);
    return Twips(format.leftMargin()) + Twips_Per_List_Indent * steps;
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

int Header_Tables::Heading_Style(int level)
{
    const int style = std::clamp(level, 1, static_cast<int>(m_headings.size()) - 1);
    m_headings.set(static_cast<std::size_t>(style));
    return style;
}

QByteArray Header_Tables::Style_Sheet() const
{
    if (m_headings.none())
        return {};
    QByteArray out = "{\\stylesheet{\\s0 Normal;}";
    for (int style = 1; style < static_cast<int>(m_headings.size()); ++style) {
        if (!m_headings.test(static_cast<std::size_t>(style)))
            continue;
        Append_Word(out, "{\\s", style);
        Append_Word(out, "\\sbasedon0\\snext0\\sb0\\sa0\\outlinelevel", style - 1);
        Append_Word(out, " heading ", style);
        out += ";}";
    }
    return out + "}\r\n";
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
    return out + Style_Sheet() + m_lists.Bytes();
}
} // namespace Rtf
