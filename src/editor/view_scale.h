// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPaintDevice>

class QWidget;

/// The measures by which a pane lays its text out: those of a widget, with more or fewer dots to an inch. All that a
/// document gives in points and inches is shown larger or smaller by it, and the document knows nothing of it.
class View_Scale : public QPaintDevice
{
public:
    explicit View_Scale(const QWidget &widget);

    void Set_Percent(int percent);
    [[nodiscard]] int Percent() const { return m_percent; }
    [[nodiscard]] int devType() const override { return QInternal::Pixmap; }
    [[nodiscard]] QPaintEngine *paintEngine() const override { return nullptr; }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric which) const override;

private:
    const QWidget &m_widget;
    int m_percent = 100;
    int m_dotsX = 0; ///< to an inch; a layout asks for them at each line
    int m_dotsY = 0;
};
