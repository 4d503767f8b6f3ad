// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <FL/Enumerations.H>
#include <cstdint>

/// The viewer's colours.
namespace Colors
{
constexpr Fl_Color Of(std::uint32_t rgb)
{
    return rgb == 0 ? FL_BLACK : static_cast<Fl_Color>(rgb << 8);
}
inline constexpr Fl_Color Page = Of(0xFFFFFF);
inline constexpr Fl_Color Text = Of(0x1F2328);
inline constexpr Fl_Color Quiet = Of(0x6B7280);
inline constexpr Fl_Color Line = Of(0xC9CDD4);
inline constexpr Fl_Color Marked = Of(0xBBD6FB);
inline constexpr Fl_Color Bar = Of(0xEEF0F3);
inline constexpr Fl_Color List = Of(0xF6F7F9);
inline constexpr Fl_Color Chosen = Of(0x2F6FDE);
} // namespace Colors
