// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The viewer's own texts, by the locale's language.
struct Words {
    const char *title;
    const char *password;
    const char *wrong;
    const char *used_up;
    const char *no_book;
    const char *unreadable;
    const char *no_picture;
    const char *cut;
    const char *search;
    const char *not_found;
    const char *last_use;
    const char *ok;
    const char *cancel;
    const char *tip_before;
    const char *tip_next;
    const char *tip_smaller;
    const char *tip_larger;
    const char *tip_usual;
};

/// Those of the language that the locale names.
const Words &Said();
