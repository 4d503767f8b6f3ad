// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/edit_commands.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/text_editor.h"
#include "editor/word_count.h"
#include "platform/prompts/prompts.h"

#include <QStringList>

void Edit_Commands::Undo(Text_Editor &editor, bool /*on*/)
{
    editor.undo();
}

void Edit_Commands::Redo(Text_Editor &editor, bool /*on*/)
{
    editor.redo();
}

void Edit_Commands::Cut(Text_Editor &editor, bool /*on*/)
{
    editor.cut();
}

void Edit_Commands::Copy(Text_Editor &editor, bool /*on*/)
{
    editor.copy();
}

void Edit_Commands::Paste(Text_Editor &editor, bool /*on*/)
{
    editor.paste();
}

void Edit_Commands::Paste_Plain(Text_Editor &editor, bool /*on*/)
{
    editor.Paste_Plain();
}

void Edit_Commands::Select_All(Text_Editor &editor, bool /*on*/)
{
    editor.selectAll();
}

void Edit_Commands::Word_Count_Box(Text_Editor &editor, bool /*on*/)
{
    const bool selected = editor.textCursor().hasSelection();
    const Word_Count count = Count_Words(selected ? editor.textCursor().selectedText() : editor.toPlainText());
    const auto line = [](const char *key, int number) {
        return Pack_Text("Editor_Bar", key).arg(number);
    };
    const QStringList lines{selected ? Pack_Text("Editor_Bar", "_Words_Selected")
                                     : Pack_Text("Editor_Bar", "_Words_All"),
                            QString(),
                            line("_Words", count.words),
                            line("_Ideographs", count.ideographs),
                            line("_Characters", count.characters),
                            line("_Characters_All", count.characters + count.blanks),
                            line("_Paragraphs", count.paragraphs)};
    Prompts::Message(lines.join(u'\n'), App().App_Title);
}
