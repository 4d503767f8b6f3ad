// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/drag_label.h"

#include <QApplication>
#include <QDrag>
#include <QFontMetrics>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

void Label_Drag(QDrag &drag, const QString &text)
{
    constexpr int Longest = 260, Pad = 8;
    const auto *source = qobject_cast<QWidget *>(drag.source());
    const qreal scale = source == nullptr ? qApp->devicePixelRatio() : source->devicePixelRatioF();
    const QFontMetrics metrics(QApplication::font());
    const QString shown = metrics.elidedText(text, Qt::ElideRight, Longest);
    const QSize size(metrics.horizontalAdvance(shown) + 2 * Pad, metrics.height() + Pad);
    QPixmap label(size * scale);
    label.setDevicePixelRatio(scale);
    label.fill(Qt::transparent);
    QPainter painter(&label);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette palette = QApplication::palette();
    painter.setPen(palette.color(QPalette::Dark));
    painter.setBrush(palette.color(QPalette::ToolTipBase));
    painter.drawRoundedRect(QRectF(0.5, 0.5, size.width() - 1, size.height() - 1), 4, 4);
    painter.setPen(palette.color(QPalette::ToolTipText));
    painter.drawText(QRect({}, size), Qt::AlignCenter, shown);
    painter.end();
    drag.setPixmap(label);
    drag.setHotSpot(QPoint(-14, -18));
}
