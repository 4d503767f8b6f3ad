// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_form.h"

#include <span>

/// What a field of a document holds, and so how it is read, written and shown.
enum class Field_Kind {
    Title,  ///< has a limit and a message of its own
    Folder, ///< an id; the form shows the folder's name
    Stars,
    Text, ///< as much as its column takes
    File, ///< the same; a row that never had one gets none by being saved empty
    Created,
    Updated,  ///< a date that a save joins with the present time
    Password, ///< in the stream; only a sealed draft holds it
    Again,    ///< the password's repetition, which only the form has
    Hidden,   ///< no control shows it
};

/// One field of a document, spelled once for the store, the reading, the drafts and the form.
struct Document_Field {
    QString Document_Form::*text;
    Field_Kind kind;
    const char *control; ///< of the form, "" for none
    const char *column;  ///< of the row, "" where the row doesn't hold the field as it is
    const char *name;    ///< in a draft, "" where no draft holds it
};

std::span<const Document_Field> Document_Fields();

/// The field's text is bounded by its column.
constexpr bool Is_Bounded(Field_Kind kind)
{
    return kind == Field_Kind::Text || kind == Field_Kind::File;
}
