// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/book/book_page.h"

/// Sizes of letters as the toolkit draws them, each asked for once.
namespace Glyphs
{
/// A font of the toolkit: its number and its height in pixels.
struct Font {
    int number = 0;
    int size = 0;
};
/// Sizes are rounded, so that only so many fonts are ever loaded.
Font Font_Of(const Book::Look &look, double zoom);
double Advance(const Font &font, char32_t character);
/// Of a line in this font, and of what is below its letters' feet.
int Height(const Font &font);
int Descent(const Font &font);
} // namespace Glyphs
