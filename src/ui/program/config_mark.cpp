// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/config_mark.h"

#include <QEvent>
#include <QPainter>

namespace
{
constexpr int Gap = 3;
}

Config_Mark::Config_Mark(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void Config_Mark::Put_Around(QWidget *control)
{
    if (m_control != nullptr)
        m_control->removeEventFilter(this);
    m_control = control;
    setVisible(control != nullptr);
    if (control == nullptr)
        return;
    setParent(control->parentWidget());
    control->installEventFilter(this);
    Follow();
    raise();
    show();
}

void Config_Mark::Follow()
{
    setGeometry(m_control->geometry().adjusted(-Gap, -Gap, Gap, Gap));
}

bool Config_Mark::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_control && (event->type() == QEvent::Move || event->type() == QEvent::Resize))
        Follow();
    return false;
}

void Config_Mark::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Link), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), Gap, Gap);
}
