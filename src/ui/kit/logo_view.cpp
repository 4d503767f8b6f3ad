// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/logo_view.h"

#include <QPainter>

// The resource macro declares a function of the global namespace, where it has to stand.
static void Init_Brand()
{
    Q_INIT_RESOURCE(brand);
}

QIcon Program_Icon()
{
    Init_Brand();
    return QIcon(QStringLiteral(":/brand/zelqor.svg"));
}

Logo_View::Logo_View(QWidget *parent) : QWidget(parent), m_icon(Program_Icon()) {}

QSize Logo_View::sizeHint() const
{
    const int lines = fontMetrics().height() * 3;
    return {lines, lines};
}

void Logo_View::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    m_icon.paint(&painter, rect());
}
