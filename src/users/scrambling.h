// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// How many substitution tables take part, even and at most 20. Stored passwords are of this level.
inline constexpr int Scrambling_Level = 2;

/// Turns a password into its stored form by a substitution that depends on the position, and back. The result is as
/// long as the text; equal texts give equal results. CR, LF and the double quote stay what and where they are, and
/// no other character becomes one of them, so that Decode(Encode(x)) is x for every x of printable ASCII.
/// Any other character is lost: callers refuse it, see Has_Special_Characters.
QString Encode(const QString &text, int level = Scrambling_Level);
QString Decode(const QString &scrambled, int level = Scrambling_Level);

/// The text without blanks around it, each character joined with one of a stream of numbers that is always the same.
/// The result may hold any character, quotes, blanks at its ends and NUL included.
QString Scramble_Text(const QString &text);
/// The trimmed text that Scramble_Text got. Nothing is dropped from `scrambled`.
QString Unscramble_Text(const QString &scrambled);

/// The rule for passwords: true for a character beyond ASCII, which Encode cannot carry.
bool Has_Special_Characters(const QString &text);
