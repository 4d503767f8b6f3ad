// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/command_table.h"

#include <QAction>
#include <QHash>
#include <QList>
#include <QPointer>

class QMenu;
class Text_Editor;

/// The commands of one document's panes: an action for each row of the table, acting on the pane that has the keyboard
/// or had it last.
class Editor_Commands : public QObject
{
    Q_OBJECT

public:
    /// Actions and menus are children of `owner`, so that it can caption them. They fit no target before Serve or
    /// Show_State, which without Serve disables all of them.
    explicit Editor_Commands(QWidget *owner);

    /// The panes that the commands act on; the first is the target until another one is entered.
    /// @param form  the widget in which the keys of find and the like work
    void Serve(const QList<Text_Editor *> &editors, QWidget &form);
    /// Commands that have got keys are heard in the panes too.
    void Hear_Keys();
    /// nullptr before the first Serve.
    [[nodiscard]] Text_Editor *Target() const;
    [[nodiscard]] const QList<Text_Editor *> &Editors() const { return m_editors; }
    /// nullptr for a name that the table doesn't have.
    [[nodiscard]] QAction *Action(const QString &name) const;
    [[nodiscard]] QMenu *Menu(Command_Menu menu) const { return m_menus.value(menu); }
    /// Fits every action to the target: after the document was locked or unlocked, for instance.
    void Show_State();

signals:
    /// The target, or the format at its cursor, is another one.
    void State_Changed();
    /// A command wants a form.
    void Requested(Command_Request request);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Make_Action(const Command_Row &row, QWidget &owner);
    void Make_Menus(QWidget &owner);
    void Nest_Menus();
    void Run(const Command_Row &row, bool on);
    void Watch(Text_Editor *editor);
    void Show_Menu(const QPoint &place);
    void Follow(const QString &target);
    [[nodiscard]] bool Can_Run(const Command_Row &row) const;

    struct Entry {
        const Command_Row *row;
        QAction *action;
    };
    QList<Entry> m_entries;
    QHash<Command_Menu, QMenu *> m_menus;
    QList<Text_Editor *> m_editors;
    QPointer<Text_Editor> m_target;
};
