// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/flow_layout.h"

#include <QWidget>

namespace
{
constexpr int Gap = 2;
}

Flow_Layout::Flow_Layout(QWidget *parent) : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
}

Flow_Layout::~Flow_Layout()
{
    qDeleteAll(m_items);
}

QLayoutItem *Flow_Layout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

int Flow_Layout::heightForWidth(int width) const
{
    return Place_Items(QRect(0, 0, width, 0), false);
}

QSize Flow_Layout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem *item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

QSize Flow_Layout::sizeHint() const
{
    constexpr int Usual_Width = 640;
    return {Usual_Width, heightForWidth(Usual_Width)};
}

void Flow_Layout::setGeometry(const QRect &place)
{
    QLayout::setGeometry(place);
    Place_Items(place, true);
}

/// @returns the height that the items take
int Flow_Layout::Place_Items(const QRect &place, bool move) const
{
    struct Line {
        QList<QLayoutItem *> items;
        int height = 0;
    };
    QList<Line> lines;
    int x = 0;
    for (QLayoutItem *item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint();
        if (lines.isEmpty() || (x > 0 && x + size.width() > place.width())) {
            lines << Line();
            x = 0;
        }
        lines.last().items << item;
        lines.last().height = std::max(lines.last().height, size.height());
        x += size.width() + Gap;
    }
    int y = place.y();
    for (const Line &line : lines) {
        x = place.x();
        for (QLayoutItem *item : line.items) {
            const QSize size = item->sizeHint();
            if (move)
                item->setGeometry({QPoint(x, y + (line.height - size.height()) / 2), size});
            x += size.width() + Gap;
        }
        y += line.height + Gap;
    }
    return lines.isEmpty() ? 0 : y - Gap - place.y();
}
