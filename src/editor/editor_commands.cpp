// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/editor_commands.h"

#include "editor/links.h"
#include "editor/text_editor.h"

#include <QEvent>
#include <QMenu>

#include <algorithm>

Editor_Commands::Editor_Commands(QWidget *owner) : QObject(owner)
{
    Make_Menus(*owner);
    for (const Command_Row &row : Command_Table())
        Make_Action(row, *owner);
    Nest_Menus();
}

void Editor_Commands::Serve(const QList<Text_Editor *> &editors, QWidget &form)
{
    m_editors = editors;
    m_target = editors.value(0);
    for (Text_Editor *editor : editors)
        Watch(editor);
    Hear_Keys();
    for (const Entry &entry : m_entries) {
        if ((entry.row->traits & Anywhere) != 0)
            form.addAction(entry.action);
    }
    Show_State();
}

void Editor_Commands::Hear_Keys()
{
    for (const Entry &entry : m_entries) {
        if (entry.action->shortcut().isEmpty() || (entry.row->traits & Anywhere) != 0)
            continue;
        for (Text_Editor *editor : m_editors) {
            if (!editor->actions().contains(entry.action))
                editor->addAction(entry.action);
        }
    }
}

Text_Editor *Editor_Commands::Target() const
{
    return m_target;
}

QAction *Editor_Commands::Action(const QString &name) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry &entry) { return entry.action->objectName() == name; });
    return found == m_entries.end() ? nullptr : found->action;
}

void Editor_Commands::Show_State()
{
    for (const Entry &entry : m_entries) {
        entry.action->setEnabled(Can_Run(*entry.row));
        if (entry.row->isOn != nullptr && m_target != nullptr)
            entry.action->setChecked(entry.row->isOn(*m_target));
    }
    emit State_Changed();
}

bool Editor_Commands::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && watched != m_target) {
        m_target = qobject_cast<Text_Editor *>(watched);
        Show_State();
    } else if (event->type() == QEvent::ReadOnlyChange) {
        Show_State();
    }
    return false;
}

void Editor_Commands::Make_Action(const Command_Row &row, QWidget &owner)
{
    auto *action = new QAction(QString::fromUtf8(row.words), &owner);
    action->setObjectName(QLatin1String(row.name));
    // Each change of an action that has keys goes through the keys of all documents: the keys come last.
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setShortcuts(QKeySequence::listFromString(QLatin1String(row.shortcut)));
    action->setCheckable(row.isOn != nullptr);
    connect(action, &QAction::triggered, this, [this, &row](bool on) { Run(row, on); });
    m_entries.append({&row, action});
    if ((row.traits & New_Group) != 0)
        Menu(row.menu)->addSeparator();
    Menu(row.menu)->addAction(action);
}

void Editor_Commands::Make_Menus(QWidget &owner)
{
    for (const Command_Menu_Row &row : Command_Menus()) {
        auto *menu = new QMenu(QString::fromUtf8(row.words), &owner);
        menu->setObjectName(QLatin1String(row.name));
        m_menus.insert(row.menu, menu);
    }
}

/// A menu's own commands come first, then the menus inside it.
void Editor_Commands::Nest_Menus()
{
    Command_Menu before = Command_Menu::Edit;
    for (const Command_Menu_Row &row : Command_Menus()) {
        if (row.inside == row.menu)
            continue;
        if (row.inside != before)
            Menu(row.inside)->addSeparator();
        before = row.inside;
        Menu(row.inside)->addMenu(Menu(row.menu));
    }
}

void Editor_Commands::Run(const Command_Row &row, bool on)
{
    if (row.request != Command_Request::None) {
        emit Requested(row.request);
        return;
    }
    if (m_target == nullptr)
        return;
    row.run(*m_target, on);
    Show_State();
}

void Editor_Commands::Watch(Text_Editor *editor)
{
    editor->installEventFilter(this);
    const auto showState = [this, editor] {
        if (editor == m_target)
            Show_State();
    };
    connect(editor, &QTextEdit::currentCharFormatChanged, this, showState);
    connect(editor, &QTextEdit::cursorPositionChanged, this, showState);
    connect(editor, &QTextEdit::selectionChanged, this, showState);
    connect(editor->document(), &QTextDocument::undoAvailable, this, showState);
    connect(editor->document(), &QTextDocument::redoAvailable, this, showState);
    connect(editor, &Text_Editor::Link_Chosen, this, &Editor_Commands::Follow);
    connect(editor, &Text_Editor::Menu_Wanted, this, &Editor_Commands::Show_Menu);
}

void Editor_Commands::Show_Menu(const QPoint &place)
{
    Show_State();
    auto *menu = new QMenu(m_target);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Entry &entry : m_entries) {
        const bool here = (entry.row->traits & On_Picture) != 0 && m_target->Has_Picture();
        if (here || (entry.row->traits & On_Context) != 0)
            menu->addAction(entry.action);
    }
    menu->addSeparator();
    menu->addMenu(Menu(Command_Menu::Paragraph));
    if (m_target->textCursor().currentTable() != nullptr)
        menu->addMenu(Menu(Command_Menu::Table));
    menu->popup(place);
}

void Editor_Commands::Follow(const QString &target)
{
    if (Links::Kind_Of(target) == Links::Kind::Place)
        m_target->scrollToAnchor(target.mid(1));
    else
        Links::Open(target);
}

bool Editor_Commands::Can_Run(const Command_Row &row) const
{
    if (m_target == nullptr)
        return false;
    const QTextCursor cursor = m_target->textCursor();
    const QLatin1String name(row.name);
    if (name == QLatin1String("Cmd_Undo") || name == QLatin1String("Cmd_Redo")) {
        const QTextDocument &document = *m_target->document();
        return !m_target->isReadOnly() &&
               (name == QLatin1String("Cmd_Undo") ? document.isUndoAvailable() : document.isRedoAvailable());
    }
    return ((row.traits & Reads) != 0 || !m_target->isReadOnly()) &&
           ((row.traits & Selected) == 0 || cursor.hasSelection()) &&
           ((row.traits & On_Picture) == 0 || m_target->Has_Picture()) &&
           ((row.traits & In_Table) == 0 || cursor.currentTable() != nullptr);
}
