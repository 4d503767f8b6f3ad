// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Skins for every window of the program, changed while it runs. A skin is a text file of three parts: `[Skin]` (its
/// name, the digest of the password that opens it, which glyphs it wants), `[Colours]` (roles of the palette and the
/// colours that the style sheet calls by name) and, after the line `[Style]`, a style sheet of its own. The style
/// sheet's frame and the glyphs that all skins share are in the skin library.

/// Names the library file that an attach loads.
void SkinH_Set_Library(const QString &libraryFile);

/// Puts a skin on; one that is on already gives way to it.
/// @returns 0, or 1 when the file is missing, no skin or not opened by the password: then nothing changes
/// @throws Run_Time_Error 53 when the skin library is missing or no library
int SkinH_Attach_Ex(const QString &skinFile, const QString &password);

/// Takes the skin off: the windows look as the platform has them. Nothing when none is on.
void SkinH_Detach();
