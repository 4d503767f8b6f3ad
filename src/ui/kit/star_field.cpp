// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/star_field.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <cmath>
#include <numbers>

namespace
{
constexpr int Most = 5;
constexpr QChar Full(u'★');
constexpr QChar Hollow(u'☆');

QPainterPath Star(const QPointF &middle, double radius)
{
    constexpr double Inner = 0.42;
    QPainterPath path;
    for (int i = 0; i < 2 * Most; ++i) {
        const double angle = i * std::numbers::pi / Most - std::numbers::pi / 2;
        const double r = i % 2 == 0 ? radius : radius * Inner;
        const QPointF point = middle + QPointF(r * std::cos(angle), r * std::sin(angle));
        i == 0 ? path.moveTo(point) : path.lineTo(point);
    }
    path.closeSubpath();
    return path;
}
} // namespace

Star_Field::Star_Field(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

void Star_Field::Set_Text(const QString &text)
{
    m_text = text;
    setAccessibleDescription(QString::number(Stars()));
    update();
}

int Star_Field::Stars() const
{
    return static_cast<int>(m_text.count(Full));
}

QSize Star_Field::sizeHint() const
{
    return {Star_Width() * Most + 6, Star_Width() + 4};
}

void Star_Field::paintEvent(QPaintEvent * /*event*/)
{
    QStylePainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    const int width = Star_Width();
    for (int i = 0; i < Most; ++i) {
        const QPainterPath path = Star(QPointF(3 + width * (i + 0.5), height() / 2.0 + 1), width * 0.42);
        painter.setPen(QPen(color, 1));
        painter.setBrush(i < Stars() ? QBrush(color) : QBrush(Qt::NoBrush));
        painter.drawPath(path);
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
    }
}

void Star_Field::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const int star = std::clamp(static_cast<int>((event->position().x() - 3) / Star_Width()) + 1, 1, Most);
    // The star that is the last full one takes itself away.
    Choose(star == Stars() ? star - 1 : star);
}

void Star_Field::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Right || event->key() == Qt::Key_Plus)
        Choose(Stars() + 1);
    else if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Minus)
        Choose(Stars() - 1);
    else if (event->key() >= Qt::Key_0 && event->key() <= Qt::Key_5)
        Choose(event->key() - Qt::Key_0);
    else
        QWidget::keyPressEvent(event);
}

void Star_Field::Choose(int stars)
{
    const int chosen = std::clamp(stars, 0, Most);
    if (chosen == Stars())
        return;
    Set_Text(QString(chosen, Full) + QString(Most - chosen, Hollow));
    emit Edited();
}

int Star_Field::Star_Width() const
{
    return fontMetrics().height();
}
