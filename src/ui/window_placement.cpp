// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window_placement.h"

#include "core/config_store.h"
#include "core/settings.h"
#include "ui/twips.h"

#include <QScreen>
#include <QWidget>

namespace
{
enum Window_State { Minimised = 1, Maximised = 2, Normal = 3 };

const QString Section = QStringLiteral("Settings");

int Kept(const char *key)
{
    return GetIni(Section, QLatin1String(key)).toInt();
}

void Keep_Number(const char *key, int value)
{
    WriteIni(Section, QLatin1String(key), QString::number(value));
}
} // namespace

void Window_Placement::Restore(QWidget &window)
{
    const QRect area = window.screen()->availableGeometry();
    if (Kept("WindowState") <= 0) {
        window.resize(window.size().boundedTo(area.size()));
        window.move(area.center() - window.rect().center());
        return;
    }
    const QSize kept(Pixels(Kept("MainWidth")), Pixels(Kept("MainHeight")));
    window.resize(kept.boundedTo(area.size()));
    window.move(Pixels(Kept("MainLeft")), Pixels(Kept("MainTop")));
}

void Window_Placement::Show(QWidget &window)
{
    const int state = Config().CH_MIN == QLatin1String("1") ? Minimised : Kept("WindowState");
    if (state == Minimised)
        window.showMinimized();
    else if (state == Maximised)
        window.showMaximized();
    else
        window.show();
}

void Window_Placement::Keep(const QWidget &window)
{
    if (window.isMinimized())
        return;
    const QRect place = window.normalGeometry();
    // The frame's corner, which is what move() takes; without it the window would creep at each start.
    const QPoint corner = window.isMaximized() ? place.topLeft() : window.pos();
    Keep_Number("MainLeft", Twips(corner.x()));
    Keep_Number("MainTop", Twips(corner.y()));
    Keep_Number("MainWidth", Twips(place.width()));
    Keep_Number("MainHeight", Twips(place.height()));
    Keep_Number("WindowState", window.isMaximized() ? Maximised : Normal);
}
