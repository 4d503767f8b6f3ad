// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/editor_commands.h"
#include "ui/ctrl_language.h"

#include <QWidget>

class QComboBox;
class QFontComboBox;
class QToolButton;

/// What stands above a document's panes: fonts, sizes and buttons of the editor's commands, which it owns.
class Editor_Bar : public QWidget
{
    Q_OBJECT

public:
    explicit Editor_Bar(QWidget *parent = nullptr);

    void Load_Lang();
    /// The panes that the bar and its commands act on.
    void Serve(const QList<Text_Editor *> &editors) { m_commands->Serve(editors); }
    [[nodiscard]] Editor_Commands &Commands() const { return *m_commands; }
    /// Takes over what input methods still compose in any pane: before a save, a tab switch, a lock and the exit.
    void Commit_Composition() const;

private:
    void Add_Fonts();
    void Add_Button(const char *name);
    void Show_State();

    Editor_Commands *m_commands;
    ctrlLanguage m_lang;
    QFontComboBox *m_families = nullptr;
    QComboBox *m_sizes = nullptr;
};
