// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/editor_commands.h"
#include "editor/text_search.h"
#include "ui/kit/ctrl_language.h"

#include <QTimer>
#include <QWidget>
#include <memory>

namespace Ui
{
class Find_Bar;
}

/// Finding and replacing in the pane that the commands act on. All matches are marked while the bar is open.
class Find_Bar : public QWidget
{
    Q_OBJECT

public:
    explicit Find_Bar(QWidget *parent = nullptr);
    ~Find_Bar() override;

    void Load_Lang();
    void Serve(Editor_Commands &commands);
    /// Find, Replace, Find_Next or Find_Previous.
    void Answer(Command_Request request);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Open(bool replacing);
    void Close();
    void Search();
    void Go(bool forward);
    void Seek();
    void Select(const Text_Search::Match &match);
    void Replace_One();
    void Replace_All();
    void Mark_Matches(Text_Editor &editor) const;
    void Show_Count();
    [[nodiscard]] Text_Search Searcher() const;

    std::unique_ptr<Ui::Find_Bar> m_ui;
    ctrlLanguage m_lang;
    Editor_Commands *m_commands = nullptr;
    QPointer<Text_Editor> m_marked; ///< the pane whose matches are marked
    QList<Text_Search::Match> m_matches;
    QTimer m_later;
    bool m_seeks = false; ///< what is typed is gone to
};
