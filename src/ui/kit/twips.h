// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Lengths in the settings file are twips, 1/1440 inch; a device-independent pixel is 1/96 inch.
inline constexpr int Twips_Per_Pixel = 1440 / 96;

constexpr int Pixels(int twips)
{
    return twips / Twips_Per_Pixel;
}

constexpr int Twips(int pixels)
{
    return pixels * Twips_Per_Pixel;
}
