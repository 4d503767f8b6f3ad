// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class Text_Editor;

/// Commands on tables. All but Insert need the cursor in one and do nothing elsewhere.
namespace Table_Commands
{
inline constexpr int Most_Rows = 500;
inline constexpr int Most_Columns = 60;

struct Shape {
    int rows = 3;
    int columns = 3;
    bool header = true; ///< the first row is repeated on each printed page, and shown as a heading
};
/// A table as wide as the text, put after the cursor's paragraph.
void Insert(Text_Editor &editor, const Shape &shape);

void Row_Above(Text_Editor &editor, bool on);
void Row_Below(Text_Editor &editor, bool on);
void Column_Left(Text_Editor &editor, bool on);
void Column_Right(Text_Editor &editor, bool on);
void Delete_Rows(Text_Editor &editor, bool on);
void Delete_Columns(Text_Editor &editor, bool on);
void Delete_Table(Text_Editor &editor, bool on);
void Merge_Cells(Text_Editor &editor, bool on);
void Split_Cell(Text_Editor &editor, bool on);
void Even_Columns(Text_Editor &editor, bool on);

/// Goes to the next cell or the one before; after the last one a row is added.
bool Step(Text_Editor &editor, bool back);
bool Is_In_Table(const Text_Editor &editor);
} // namespace Table_Commands
