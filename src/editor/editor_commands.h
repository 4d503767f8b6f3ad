// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/command_table.h"

#include <QAction>
#include <QList>
#include <QPointer>

class Text_Editor;

/// The commands of one document's panes: an action for each row of the table, acting on the pane that has the keyboard
/// or had it last.
class Editor_Commands : public QObject
{
    Q_OBJECT

public:
    /// The actions are children of `owner`, so that it can caption them.
    explicit Editor_Commands(QWidget *owner);

    /// The panes that the commands act on; the first is the target until another one is entered.
    void Serve(const QList<Text_Editor *> &editors);
    /// nullptr before the first Serve.
    [[nodiscard]] Text_Editor *Target() const;
    [[nodiscard]] const QList<Text_Editor *> &Editors() const { return m_editors; }
    /// nullptr for a name that the table doesn't have.
    [[nodiscard]] QAction *Action(const QString &name) const;
    [[nodiscard]] QList<QAction *> Actions_Of(Command_Menu menu) const;

signals:
    /// The target, or the format at its cursor, is another one.
    void State_Changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Watch(Text_Editor *editor);
    void Show_State();

    struct Entry {
        const Command_Row *row;
        QAction *action;
    };
    QList<Entry> m_entries;
    QList<Text_Editor *> m_editors;
    QPointer<Text_Editor> m_target;
};
