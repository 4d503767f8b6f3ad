// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// What the desktop that the program runs on is, and lets a window do.
namespace Desktop_Kind
{
/// The session is one of Wayland, whichever way the program is shown in it.
bool Is_Wayland();
/// The program is shown by an X server.
bool Is_X11();
/// A window may say where it stands and that it stays on top.
bool Places_Windows();
/// A window that is on screen may come forward, or back from being minimised, by itself; else it does when it is shown
/// anew.
bool Raises_Windows();
/// Windows may be seen through. It may begin and end while the program runs.
bool Is_Composited();
/// A session bus was there when the program was started; none is started for it.
bool Has_Session_Bus();

/// The name under which desktops know the program: that of its desktop file and of its service on the session bus.
inline constexpr const char *Application_Id = "org.zelqor.Zelqor";
} // namespace Desktop_Kind
