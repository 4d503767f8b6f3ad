// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"

#include <span>

/// One column of the document list: its key, the key of its caption in the section Frm_ListView, and the column of
/// Code_Info that it shows ("" for those that are made otherwise).
struct Document_Column {
    const char *key;
    const char *caption;
    const char *field;
    int width; ///< in pixels at 96 dpi, until the user sets another
};

/// The columns in their default order; the first is the running row number.
std::span<const Document_Column> Document_Columns();
/// The same with captions of the pack in force.
std::vector<List_Column> Captioned_Columns();
