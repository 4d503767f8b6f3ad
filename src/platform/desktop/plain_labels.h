// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Makes each label of the program, those of the toolkit's own boxes among them, show its text as it is. A label that
/// was left to guess takes a folder's name that looks like a page for one, and reads the files that it names. A form
/// that writes a page of its own says so in its label.
void Keep_Labels_Plain();
