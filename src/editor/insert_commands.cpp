// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/insert_commands.h"

#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/links.h"
#include "editor/paragraph_commands.h"
#include "editor/pictures.h"
#include "editor/text_editor.h"
#include "platform/database/database.h"
#include "platform/machine/machine.h"
#include "platform/pictures/raster.h"
#include "platform/prompts/prompts.h"

#include <QFileInfo>
#include <QTextBlock>

namespace
{
constexpr Kept_Value Picture_Path{"Page", "PicturePath"};

/// Selects the whole link that the cursor stands in.
QTextCursor Around_Link(QTextCursor cursor)
{
    const QString target = cursor.charFormat().anchorHref();
    if (target.isEmpty() || cursor.hasSelection())
        return cursor;
    const QTextBlock block = cursor.block();
    int from = -1, to = -1;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment part = it.fragment();
        const bool same = part.charFormat().anchorHref() == target;
        if (same && from < 0)
            from = part.position();
        if (same)
            to = part.position() + part.length();
        else if (to < cursor.position())
            from = -1;
        else if (from >= 0)
            break;
    }
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    return cursor;
}

QTextCharFormat Link_Format(const QString &target)
{
    QTextCharFormat format;
    format.setAnchor(true);
    format.setAnchorHref(target);
    format.setFontUnderline(true);
    format.setForeground(QColor(0x05, 0x63, 0xC1));
    return format;
}

void Unlink(QTextCursor &cursor)
{
    QTextCharFormat format = cursor.charFormat();
    for (const auto property : {QTextFormat::IsAnchor, QTextFormat::AnchorHref, QTextFormat::ForegroundBrush,
                                QTextFormat::TextUnderlineStyle, QTextFormat::FontUnderline})
        format.clearProperty(property);
    cursor.setCharFormat(format);
}
} // namespace

void Insert_Commands::Picture(Text_Editor &editor, bool /*on*/)
{
    const QString path = Prompts::Open_File(Pack_Text("Editor_Bar", "_Choose_Picture"), Picture_Path.Read(),
                                            Pack_Text("Editor_Bar", "_Pictures"));
    if (path.isEmpty())
        return;
    Picture_Path.Keep(QFileInfo(path).path());
    QTextCursor cursor = editor.textCursor();
    if (!Pictures::Insert(cursor, Raster::Read_File(path)))
        Prompts::Message(Pack_Text("Editor_Bar", "_No_Picture"), App().App_Title, Prompts::Icon::Exclamation);
    editor.ensureCursorVisible();
}

void Insert_Commands::Link(Text_Editor &editor, bool /*on*/)
{
    QTextCursor cursor = Around_Link(editor.textCursor());
    const QString old = cursor.charFormat().anchorHref();
    const QString answer = Prompts::Input(Pack_Text("Editor_Bar", "_Link_Target"), App().App_Title, old);
    if (answer.isNull())
        return;
    const QString target = Links::Completed(answer);
    cursor.beginEditBlock();
    // Text in the format of a picture would be taken for pictures.
    const QTextCharFormat here = cursor.charFormat();
    const QTextCharFormat before = here.isImageFormat() ? Paragraph_Commands::Body_Format(editor, here) : here;
    if (target.isEmpty() && !old.isEmpty())
        Unlink(cursor);
    else if (!target.isEmpty() && cursor.hasSelection())
        cursor.mergeCharFormat(Link_Format(target));
    else if (!target.isEmpty()) {
        QTextCharFormat format = before;
        format.merge(Link_Format(target));
        cursor.insertText(answer.trimmed(), format);
        cursor.insertText(QStringLiteral(" "), before);
    }
    cursor.endEditBlock();
    if (!cursor.hasSelection())
        editor.setTextCursor(cursor);
}

void Insert_Commands::Rule(Text_Editor &editor, bool /*on*/)
{
    QTextCursor cursor = editor.textCursor();
    cursor.beginEditBlock();
    const QTextBlockFormat before = cursor.blockFormat();
    QTextBlockFormat after = before;
    Paragraph_Commands::Make_Body(after);
    QTextBlockFormat line;
    line.setProperty(QTextFormat::BlockTrailingHorizontalRulerWidth, QTextLength(QTextLength::PercentageLength, 100));
    if (!cursor.atBlockStart() || !cursor.atBlockEnd())
        cursor.insertBlock();
    cursor.setBlockFormat(line);
    after.setObjectIndex(-1);
    cursor.insertBlock(after);
    cursor.endEditBlock();
    editor.setTextCursor(cursor);
    editor.ensureCursorVisible();
}

void Insert_Commands::Date(Text_Editor &editor, bool /*on*/)
{
    Text(editor, Database_Engine::Short_Date(Machine::Now().date().startOfDay()));
}

void Insert_Commands::Date_And_Time(Text_Editor &editor, bool /*on*/)
{
    const QDateTime now = Machine::Now();
    Text(editor, Database_Engine::Short_Date(now.date().startOfDay()) + now.toString(QStringLiteral(" HH:mm")));
}

void Insert_Commands::Text(Text_Editor &editor, const QString &text)
{
    editor.textCursor().insertText(text);
    editor.ensureCursorVisible();
}
