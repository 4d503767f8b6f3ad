// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/readable_color.h"

#include <algorithm>
#include <cmath>

namespace
{
/// Contrast below which a stored colour is moved away from the background (WCAG 2.1, 1.4.11).
constexpr double Least_Contrast = 3.0;
constexpr int Steps_To_Readable = 20;

double Luminance(const QColor &color)
{
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor &a, const QColor &b)
{
    const double x = Luminance(a);
    const double y = Luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}
} // namespace

QColor Readable(const QColor &color, const QColor &background)
{
    const bool dark = Luminance(background) < 0.5;
    QColor shown = color;
    for (int i = 0; i < Steps_To_Readable && Contrast(shown, background) < Least_Contrast; ++i) {
        const double lightness = shown.lightnessF() + (dark ? 0.05 : -0.05);
        shown.setHslF(shown.hslHueF() < 0 ? 0 : shown.hslHueF(), shown.hslSaturationF(),
                      static_cast<float>(std::clamp(lightness, 0.0, 1.0)));
    }
    return shown;
}
