// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/view_scale.h"

#include <QWidget>

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
        return m_widget.logicalDpiX() * m_percent / 100;
    case PdmDpiY:
        return m_widget.logicalDpiY() * m_percent / 100;
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
