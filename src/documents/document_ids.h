// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <array>
#include <cstdint>

/// The 16 bytes of a GUID as text: two upper-case hexadecimal digits a byte, in memory order, a "-" behind the bytes
/// with index 3, 5, 7 and 9.
QString GUID_ToText(const std::array<std::uint8_t, 16> &guid);

/// A new document id: GUID_ToText of a fresh GUID between braces, 38 characters.
QString Make_Code_ID();
