// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class Document_Tabs;
class QAction;
class Shell;

/// The documents that were open at the last exit, for a user who wants them back at the next start.
namespace Tab_Memory
{
/// Binds an entry of a menu to the wish.
void Bind(QAction &entry);
/// Writes down which documents are open.
void Save(const Document_Tabs &tabs);
/// Opens those of the last time, if they are wanted; what was shown stays in front.
void Bring_Back(Document_Tabs &tabs, Shell &shell);
} // namespace Tab_Memory
