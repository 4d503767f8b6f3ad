// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

/// Gives each label that names a field, and each button with words, the letter that reaches it with Alt, where its
/// caption brings none: the first free letter of its words, of a Chinese caption that of its reading in brackets
/// behind it. A label in front of a field that it is not bound to is bound first. Letters differ among all that can be
/// on screen together; the buttons that Enter and Esc press need none.
void Give_Access_Keys(QWidget &form);
