// SPDX-License-Identifier: GPL-3.0-or-later
#include "glyphs.h"

#include <FL/fl_draw.H>
#include <algorithm>
#include <array>
#include <memory>
#include <unordered_map>
#include <vector>

namespace
{
constexpr int Largest = 240;
constexpr double Small_Share = 0.7; ///< of letters above or below the line
constexpr std::size_t Letters_Of_A_Page = 256;
constexpr char32_t Last_Of_Plane = 0xFFFF;

/// What is known of one font: pages of letters, made as they are met.
struct Known {
    int height = 0;
    int descent = 0;
    std::array<std::unique_ptr<std::array<float, Letters_Of_A_Page>>, Letters_Of_A_Page> pages;
};

Known &Known_Of(const Glyphs::Font &font)
{
    static std::unordered_map<int, Known> all;
    static int last = 0; // runs of text ask for the same font again and again
    static Known *lastKnown = nullptr;
    const int key = font.number * (Largest + 1) + font.size;
    if (lastKnown != nullptr && key == last)
        return *lastKnown;
    Known &known = all[key];
    last = key;
    lastKnown = &known;
    if (known.height == 0) {
        fl_font(font.number, font.size);
        known.height = std::max(fl_height(), 1);
        known.descent = fl_descent();
    }
    return known;
}

int Rounded(double size)
{
    const int whole = std::clamp(static_cast<int>(size + 0.5), 5, Largest);
    const int step = whole < 24 ? 1 : whole < 48 ? 2 : whole < 96 ? 4 : 8;
    return whole / step * step;
}
} // namespace

Glyphs::Font Glyphs::Font_Of(const Book::Look &look, double zoom)
{
    constexpr double Pixels = 96.0 / 72 / 2; ///< for half a point
    const double share = look.raised != 0 ? Small_Share : 1;
    return {FL_HELVETICA + (look.bold ? FL_BOLD : 0) + (look.italic ? FL_ITALIC : 0),
            Rounded(look.half_points * Pixels * zoom * share)};
}

double Glyphs::Advance(const Font &font, char32_t character)
{
    Known &known = Known_Of(font);
    if (character > Last_Of_Plane)
        return fl_font(font.number, font.size), fl_width(character);
    auto &page = known.pages[character / Letters_Of_A_Page];
    if (!page) {
        page = std::make_unique<std::array<float, Letters_Of_A_Page>>();
        page->fill(-1);
    }
    float &width = (*page)[character % Letters_Of_A_Page];
    if (width < 0) {
        fl_font(font.number, font.size);
        width = static_cast<float>(fl_width(static_cast<unsigned>(character)));
    }
    return width;
}

int Glyphs::Height(const Font &font)
{
    return Known_Of(font).height;
}

int Glyphs::Descent(const Font &font)
{
    return Known_Of(font).descent;
}
