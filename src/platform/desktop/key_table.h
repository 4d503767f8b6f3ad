// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/desktop/hot_keys.h"

#include <QStringList>
#include <cstdint>

/// The keys that can be wished: the number of the settings (a virtual-key code), the name on keyboards, and X's symbol
/// for it (X11/keysymdef.h) with its name.
namespace Key_Table
{
struct Row {
    int key;
    std::uint32_t symbol;
    const char *name;
    const char *symbol_name;
};

/// Letters, digits and function keys are reckoned; these are the others.
inline constexpr Row Others[] = {
    {0x20, 0x0020, "Space", "space"},
    {0x2D, 0xff63, "Ins", "Insert"},
    {0x2E, 0xffff, "Del", "Delete"},
    {0x24, 0xff50, "Home", "Home"},
    {0x23, 0xff57, "End", "End"},
    {0x21, 0xff55, "PgUp", "Page_Up"},
    {0x22, 0xff56, "PgDown", "Page_Down"},
    {0x25, 0xff51, "Left", "Left"},
    {0x26, 0xff52, "Up", "Up"},
    {0x27, 0xff53, "Right", "Right"},
    {0x28, 0xff54, "Down", "Down"},
    {0x13, 0xff13, "Pause", "Pause"},
    {0x91, 0xff14, "ScrollLock", "Scroll_Lock"},
    {0xC0, 0x0060, "`", "grave"},
};

inline constexpr int First_Function_Key = 0x70;
inline constexpr int Function_Keys = 12;
inline constexpr std::uint32_t First_Function_Symbol = 0xffbe;

constexpr bool Is_Letter(int key)
{
    return key >= 'A' && key <= 'Z';
}
constexpr bool Is_Digit(int key)
{
    return key >= '0' && key <= '9';
}
constexpr bool Is_Function_Key(int key)
{
    return key >= First_Function_Key && key < First_Function_Key + Function_Keys;
}

/// X's symbol of a key, 0 for one that cannot be wished.
std::uint32_t Symbol_Of(int key);
/// A combination in the words that the desktops agreed on: "CTRL+ALT+i".
QString Trigger_Of(const Hot_Keys::Combination &combination);
} // namespace Key_Table
