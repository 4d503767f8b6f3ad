// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/column_setup.h"

#include "views/list_columns.h"

#include <QStringList>
#include <algorithm>

namespace
{
constexpr int Widest = 60000;
/// The columns of a list that was never set up, from left to right.
constexpr const char *Read_By[] = {"",
                                   "Lsv_Code_Info_Title",
                                   "Lsv_Code_Info_CateName",
                                   "Lsv_Code_Info_KeyWord",
                                   "Lsv_Code_Info_Star",
                                   "Lsv_Code_Info_Update"};
constexpr int Twips_Per_Pixel = 1440 / 96;
} // namespace

std::vector<int> Initial_Widths()
{
    std::vector<int> widths;
    for (const Document_Column &column : Document_Columns())
        widths.push_back(column.width * Twips_Per_Pixel);
    return widths;
}

std::vector<int> First_Widths()
{
    std::vector<int> widths = Initial_Widths();
    for (size_t i = 0; i < widths.size(); ++i) {
        const bool shown = std::any_of(std::begin(Read_By), std::end(Read_By),
                                       [&](const char *key) { return qstrcmp(key, Document_Columns()[i].key) == 0; });
        if (!shown)
            widths[i] = 0;
    }
    return widths;
}

std::vector<int> First_Order()
{
    QString first;
    for (const char *key : Read_By) {
        const auto columns = Document_Columns();
        const auto column = std::find_if(columns.begin(), columns.end(),
                                         [&](const Document_Column &one) { return qstrcmp(one.key, key) == 0; });
        first += QString::number(column - columns.begin()) + QLatin1Char(',');
    }
    return Order_From_Text(first);
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
