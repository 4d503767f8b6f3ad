// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/column_setup.h"

#include "views/list_columns.h"

#include <QStringList>
#include <algorithm>

namespace
{
constexpr int Widest = 60000;
constexpr int Twips_Per_Pixel = 1440 / 96;
} // namespace

std::vector<int> Initial_Widths()
{
    std::vector<int> widths;
    for (const Document_Column &column : Document_Columns())
        widths.push_back(column.width * Twips_Per_Pixel);
    return widths;
}

std::vector<int> Widths_From_Text(const QString &text)
{
    std::vector<int> widths = Initial_Widths();
    const QStringList parts = text.split(QLatin1Char(','));
    for (size_t i = 0; i < widths.size() && i < static_cast<size_t>(parts.size()); ++i) {
        bool isNumber = false;
        const int width = parts[static_cast<qsizetype>(i)].trimmed().toInt(&isNumber);
        if (isNumber && width >= 0)
            widths[i] = std::min(width, Widest);
    }
    // A list without any column could not be set up again.
    if (std::all_of(widths.begin(), widths.end(), [](int width) { return width == 0; }))
        return Initial_Widths();
    return widths;
}

std::vector<int> Order_From_Text(const QString &text)
{
    const int count = static_cast<int>(Document_Columns().size());
    std::vector<int> order;
    const auto add = [&](int column) {
        if (column >= 0 && column < count && std::find(order.begin(), order.end(), column) == order.end())
            order.push_back(column);
    };
    for (const QString &part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        bool isNumber = false;
        const int column = part.trimmed().toInt(&isNumber);
        if (isNumber)
            add(column);
    }
    for (int column = 0; column < count; ++column)
        add(column);
    return order;
}

QString Numbers_To_Text(const std::vector<int> &numbers)
{
    QString text;
    for (const int number : numbers)
        text += QString::number(number) + QLatin1Char(',');
    return text;
}
