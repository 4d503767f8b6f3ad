// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/desktop_kind.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace
{
xcb_connection_t *Connection()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

template <class Reply>
std::unique_ptr<Reply, decltype(&std::free)> Held(Reply *reply)
{
    return {reply, &std::free};
}
} // namespace

bool Desktop_Kind::Is_Wayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) ||
           (Is_X11() && (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                         qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland")));
}

bool Desktop_Kind::Is_X11()
{
    return Connection() != nullptr;
}

bool Desktop_Kind::Places_Windows()
{
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

bool Desktop_Kind::Raises_Windows()
{
    return Places_Windows();
}

/// By the owner of the selection _NET_WM_CM_Sn (Extended Window Manager Hints).
bool Desktop_Kind::Is_Composited()
{
    xcb_connection_t *connection = Connection();
    if (connection == nullptr)
        return Is_Wayland();
    constexpr int Screen = 0; // the desktops of today have one screen of X, however many displays
    const QByteArray name = QStringLiteral("_NET_WM_CM_S%1").arg(Screen).toLatin1();
    const auto atom = Held(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.constData()), nullptr));
    if (!atom)
        return false;
    const auto owner =
        Held(xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

bool Desktop_Kind::Has_Session_Bus()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           (qEnvironmentVariableIsSet("XDG_RUNTIME_DIR") &&
            QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus")));
}
