// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/view_scale.h"

#include <QWidget>

View_Scale::View_Scale(const QWidget &widget) : m_widget(widget)
{
    Set_Percent(m_percent);
}

void View_Scale::Set_Percent(int percent)
{
    m_percent = percent;
    m_dotsX = m_widget.logicalDpiX() * percent / 100;
    m_dotsY = m_widget.logicalDpiY() * percent / 100;
}

int View_Scale::metric(PaintDeviceMetric which) const
{
    const double inch = 25.4; // millimetres
    switch (which) {
    case PdmWidth:
        return m_widget.width();
    case PdmHeight:
        return m_widget.height();
    case PdmWidthMM:
        return static_cast<int>(m_widget.width() * inch / m_widget.logicalDpiX());
    case PdmHeightMM:
        return static_cast<int>(m_widget.height() * inch / m_widget.logicalDpiY());
    case PdmDpiX:
        return m_dotsX;
    case PdmDpiY:
        return m_dotsY;
    case PdmPhysicalDpiX:
        return m_widget.physicalDpiX();
    case PdmPhysicalDpiY:
        return m_widget.physicalDpiY();
    case PdmDevicePixelRatio:
        return static_cast<int>(m_widget.devicePixelRatioF());
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(m_widget.devicePixelRatioF() * devicePixelRatioFScale());
    case PdmDepth:
        return m_widget.depth();
    case PdmNumColors:
        return m_widget.colorCount();
    }
    return 0;
}
