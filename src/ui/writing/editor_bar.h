// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/editor_commands.h"
#include "ui/kit/ctrl_language.h"

#include <QWidget>

class Find_Bar;
class QComboBox;
class QFontComboBox;
class QHBoxLayout;
class QMenu;
class QToolButton;

/// What stands above a document's panes: fonts, sizes and buttons of the editor's commands, which it owns, in one row.
/// What finds no room there is in the menu at its end. It opens the forms that the commands ask for.
class Editor_Bar : public QWidget
{
    Q_OBJECT

public:
    explicit Editor_Bar(QWidget *parent = nullptr);

    void Load_Lang();
    /// The panes that the bar and its commands act on, and where they search.
    void Serve(const QList<Text_Editor *> &editors, Find_Bar *findBar = nullptr);
    [[nodiscard]] Editor_Commands &Commands() const { return *m_commands; }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void Fit();
    void Fill_More();
    void Add(QWidget *item);
    void Add_Fonts();
    void Add_Buttons();
    void Set_Icons();
    void Set_Tool_Tips();
    void Show_State();
    void Answer(Command_Request request);

    Editor_Commands *m_commands;
    ctrlLanguage m_lang;
    Find_Bar *m_find = nullptr;
    QComboBox *m_styles = nullptr;
    QFontComboBox *m_families = nullptr;
    QComboBox *m_sizes = nullptr;
    QHBoxLayout *m_row = nullptr;
    QList<QWidget *> m_items; ///< in their order in the row
    QToolButton *m_more = nullptr;
};
