// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list_style.h"

#include <QStringList>

namespace
{
constexpr int Largest_Color = 0xFFFFFF;

bool Is_True(const QString &text)
{
    return text.trimmed().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || text.toInt() != 0;
}
} // namespace

QColor Stored_Color(const QString &number)
{
    bool isNumber = false;
    const int bgr = number.trimmed().toInt(&isNumber);
    if (!isNumber || bgr < 0 || bgr > Largest_Color)
        return {};
    return {bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF};
}

QString Color_Number(const QColor &color)
{
    return QString::number(color.red() | (color.green() << 8) | (color.blue() << 16));
}

QColor Chosen_Background(const QString &number)
{
    const QColor color = Stored_Color(number);
    return color == QColor(Qt::white) ? QColor() : color;
}

std::optional<Line_Style> Style_From_Text(const QString &stored)
{
    const QStringList parts = stored.split(QLatin1Char('|'));
    if (parts.size() < 3)
        return std::nullopt;
    return Line_Style{Stored_Color(parts[0]), Stored_Color(parts[1]), Is_True(parts[2]),
                      parts.value(3) == QLatin1String("True")};
}

QString Style_To_Text(const Line_Style &style)
{
    QStringList parts{Color_Number(style.sub_color), Color_Number(style.item_color),
                      style.bold ? QStringLiteral("True") : QStringLiteral("False")};
    if (style.italic)
        parts << QStringLiteral("True");
    return parts.join(QLatin1Char('|'));
}

void Apply_Line_Color(List_Row &row, const QString &stored)
{
    const std::optional<Line_Style> style = Style_From_Text(stored);
    if (!style)
        return;
    row.sub_color = style->sub_color;
    row.item_color = style->item_color;
    row.bold = style->bold;
}
