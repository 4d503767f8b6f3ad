// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// New ids below a parent ("" for the top level). Both walk the existing children in ascending order; neither caps the
/// sibling number: after 999 the increment carries into the parent's digits.

/// The walk starts at the first child that exists: a gap in front of it is never used, the first one behind it is.
QString Next_Id_From_First(const QString &parentId);
/// The walk starts at 001: the lowest free number, in front of the first child too.
QString Lowest_Free_Id(const QString &parentId);

/// @throws Run_Time_Error when the id is none, or when it lies below a folder that does not exist: such a row would
/// keep the tree from loading.
void Require_Place(const QString &id);
