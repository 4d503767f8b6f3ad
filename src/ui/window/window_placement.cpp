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

constexpr const char *Section = "Settings";

int Kept(const char *key)
{
    constexpr int Far = 1'000'000; // twips: beyond all screens, within what can be reckoned with
    return std::clamp(Kept_Value{Section, key}.Read().toInt(), -Far, Far);
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
    Kept_Value{Section, key}.Keep(QString::number(value));
}

/// The screen that most of a place lies on, `own` when it lies on none: a screen may be gone, or smaller.
QRect Area_Of(const QRect &place, const QRect &own)
{
    QRect best = own;
    qint64 most = 0;
    for (const QScreen *screen : QGuiApplication::screens()) {
        const QRect seen = screen->availableGeometry() & place;
        const qint64 size = static_cast<qint64>(seen.width()) * seen.height();
        if (!seen.isEmpty() && size > most) {
            most = size;
            best = screen->availableGeometry();
        }
    }
    return best;
}

/// The whole window on one screen, its head too: a frame is not known before the window is shown.
QRect Wholly_On(QRect place, const QRect &area)
{
    constexpr int Head = 32; // of a usual frame
    const QRect room = area.adjusted(0, std::min(Head, area.height() / 4), 0, 0);
    place.setSize(place.size().boundedTo(room.size()));
    place.moveTo(std::clamp(place.x(), room.left(), room.right() + 1 - place.width()),
                 std::clamp(place.y(), room.top(), room.bottom() + 1 - place.height()));
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
    const QRect kept(Pixels(Kept("MainLeft")), Pixels(Kept("MainTop")), Kept_Side("MainWidth", window.width()),
                     Kept_Side("MainHeight", window.height()));
    window.setGeometry(Wholly_On(kept, Area_Of(kept, area)));
}

void Window_Placement::Show(QWidget &window)
{
    const int state = Is_On(&Settings_Record::CH_MIN) ? Minimised : Kept("WindowState");
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
