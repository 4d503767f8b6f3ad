// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/editor_commands.h"

#include "editor/text_editor.h"

#include <QEvent>

Editor_Commands::Editor_Commands(QWidget *owner) : QObject(owner)
{
    for (const Command_Row &row : Command_Table()) {
        auto *action = new QAction(QString::fromUtf8(row.words), owner);
        action->setObjectName(QLatin1String(row.name));
        action->setShortcuts(QKeySequence::listFromString(QLatin1String(row.shortcut)));
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        action->setCheckable(row.isOn != nullptr);
        action->setEnabled(false);
        connect(action, &QAction::triggered, this, [this, &row](bool on) {
            if (m_target == nullptr)
                return;
            row.run(*m_target, on);
            Show_State();
        });
        m_entries.append({&row, action});
    }
}

void Editor_Commands::Serve(const QList<Text_Editor *> &editors)
{
    m_editors = editors;
    m_target = editors.value(0);
    for (Text_Editor *editor : editors)
        Watch(editor);
    Show_State();
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

QList<QAction *> Editor_Commands::Actions_Of(Command_Menu menu) const
{
    QList<QAction *> actions;
    for (const Entry &entry : m_entries) {
        if (entry.row->menu == menu)
            actions << entry.action;
    }
    return actions;
}

bool Editor_Commands::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && watched != m_target) {
        m_target = qobject_cast<Text_Editor *>(watched);
        Show_State();
    }
    return false;
}

void Editor_Commands::Watch(Text_Editor *editor)
{
    editor->installEventFilter(this);
    for (const Entry &entry : m_entries)
        editor->addAction(entry.action);
    connect(editor, &QTextEdit::currentCharFormatChanged, this, [this, editor] {
        if (editor == m_target)
            Show_State();
    });
}

void Editor_Commands::Show_State()
{
    for (const Entry &entry : m_entries) {
        entry.action->setEnabled(m_target != nullptr && !m_target->isReadOnly());
        if (entry.row->isOn != nullptr && m_target != nullptr)
            entry.action->setChecked(entry.row->isOn(*m_target));
    }
    emit State_Changed();
}
