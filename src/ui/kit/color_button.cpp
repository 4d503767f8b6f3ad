// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/color_button.h"

#include "views/list_style.h"

#include <QColorDialog>
#include <QEvent>
#include <QPainter>

Color_Button::Color_Button(QWidget *parent) : QPushButton(parent)
{
    connect(this, &QPushButton::clicked, this, &Color_Button::Choose);
}

void Color_Button::Set_Number(const QString &number)
{
    m_number = number;
    Show_Color();
    emit Number_Changed();
}

void Color_Button::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        Show_Color();
}

void Color_Button::Choose()
{
    const QColor present = Stored_Color(m_number);
    const QColor chosen =
        QColorDialog::getColor(present.isValid() ? present : QColor(Qt::white), this, text().remove(QLatin1Char('&')));
    if (chosen.isValid())
        Set_Number(Color_Number(chosen));
}

/// A stroke through the field says that the skin's own colour is meant.
void Color_Button::Show_Color()
{
    const qreal scale = devicePixelRatioF();
    QPixmap pixmap(iconSize() * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    const QColor chosen = Chosen_Background(m_number);
    const QRectF field = QRectF(QPointF(), QSizeF(iconSize())).adjusted(1.5, 1.5, -1.5, -1.5);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor edge = palette().color(QPalette::ButtonText);
    edge.setAlphaF(0.5F);
    painter.setPen(edge);
    painter.setBrush(chosen.isValid() ? chosen : palette().color(QPalette::Base));
    painter.drawRoundedRect(field, 3, 3);
    if (!chosen.isValid())
        painter.drawLine(field.bottomLeft(), field.topRight());
    painter.end();
    setIcon(pixmap);
}
