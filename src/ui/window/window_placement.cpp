// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/window_placement.h"

#include "core/config_store.h"
#include "core/settings.h"
#include "ui/kit/twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace
{
enum Window_State { Minimised = 1, Maximised = 2, Normal = 3 };

const QString Section = QStringLiteral("Settings");

int Kept(const char *key)
{
    constexpr int Far = 1'000'000; // twips: beyond all screens, within what can be reckoned with
    return std::clamp(GetIni(Section, QLatin1String(key)).toInt(), -Far, Far);
}

/// A side of the window, or the one it has by itself where what was kept is too small to be one.
int Kept_Side(const char *key, int usual)
{
    constexpr int Least = 200;
    const int side = Pixels(Kept(key));
    return side < Least ? usual : side;
}

void Keep_Number(const char *key, int value)
{
    WriteIni(Section, QLatin1String(key), QString::number(value));
}

/// The place itself when enough of the window's head to take hold of lies on a screen, else the nearest one in `area`:
/// a screen may be gone.
QRect On_A_Screen(QRect place, const QRect &area)
{
    constexpr int Head = 40, Hold = 200;
    const QRect head(place.topLeft(), QSize(place.width(), Head));
    const QList<QScreen *> screens = QGuiApplication::screens();
    const bool reached = std::any_of(screens.begin(), screens.end(), [&](const QScreen *screen) {
        const QRect seen = screen->availableGeometry() & head;
        return seen.height() > Head / 2 && seen.width() >= std::min(Hold, head.width());
    });
    if (!reached)
        place.moveTo(std::clamp(place.x(), area.left(), area.right() + 1 - place.width()),
                     std::clamp(place.y(), area.top(), area.bottom() + 1 - place.height()));
    return place;
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
    const QSize size =
        QSize(Kept_Side("MainWidth", window.width()), Kept_Side("MainHeight", window.height())).boundedTo(area.size());
    window.setGeometry(On_A_Screen({QPoint(Pixels(Kept("MainLeft")), Pixels(Kept("MainTop"))), size}, area));
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
    // Without its frame, as setGeometry() takes it: a frame has no size while the window fills the screen.
    const QRect place = window.normalGeometry();
    Keep_Number("MainLeft", Twips(place.x()));
    Keep_Number("MainTop", Twips(place.y()));
    Keep_Number("MainWidth", Twips(place.width()));
    Keep_Number("MainHeight", Twips(place.height()));
    Keep_Number("WindowState", window.isMaximized() ? Maximised : Normal);
}
