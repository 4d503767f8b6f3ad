// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Text that an input method shows in a field and has not given to it yet. It is in no document and no field's text,
/// so whoever is about to read them (a save, a tab switch, a lock, the exit) takes it over first.
namespace Composition
{
/// Starts to notice what is composed in any field of the program. Harmless when repeated.
void Watch();
/// Whether something is being composed.
bool Is_Open();
/// Gives what is composed to its field, as if the user had confirmed it.
void Commit();
} // namespace Composition

/// Composition::Commit, under the name that callers outside the editor know.
inline void Commit_Composition()
{
    Composition::Commit();
}
