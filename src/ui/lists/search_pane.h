// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"
#include "views/find_tree.h"
#include "views/search.h"
#include "views/search_run.h"

#include <QTimer>
#include <QWidget>
#include <memory>

class Shell;
namespace Ui
{
class Search_Pane;
}

/// What a search found, and what it asked for.
struct Search_Result {
    Condition_Rows found;
    QString key;
    QStringList fields; ///< columns that were searched
    QString scope;      ///< for a list that stays empty: which folders and fields were searched, or what went wrong
    bool old = false;   ///< the rows are to be read anew when they are shown
};

/// The search pane: the key, the folders and the fields that are searched.
class Search_Pane : public QWidget
{
    Q_OBJECT

public:
    explicit Search_Pane(Shell &shell, QWidget *parent = nullptr);
    ~Search_Pane() override;

    /// Takes the folders of the main tree over.
    void Copy_Folders(const Tree_Model &tree);
    /// A key is searched when nothing was typed for so long; milliseconds.
    static constexpr int Typing_Pause = 250;
    /// Whether a key that is being typed finds little enough: two letters, or one of a script that needs no more.
    static bool Is_Worth_Searching(const QString &key);

    [[nodiscard]] QString Key() const;
    void Set_Key(const QString &key);
    /// Starts the search that is set up on screen, unless there is nothing to search or the key is searched already.
    /// Nothing is asked, told or remembered.
    void Search_Quietly();
    /// Puts the cursor into the key.
    void Start_Typing();
    /// Writes the keys at the end of the list to the settings, the last one first.
    void Save_History();
    /// Starts the search that is set up on screen.
    void Cmd_FindTxt();
    /// Runs the last search again, to list ten times as many documents.
    void List_More();
    /// Stops a running search and waits for its end.
    void Stop_Now();

signals:
    /// The list is to be cleared; the result follows.
    void Search_Started();
    /// The result has its first rows, or more of them, and the search goes on.
    void Search_Goes_On(const std::shared_ptr<Search_Result> &result);
    void Search_Ended(const std::shared_ptr<Search_Result> &result);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void Fill_Fields();
    void Add_Folds();
    void Show_Folds();
    void Start(const QString &key, const Search_Request &request);
    void Connect_Controls();
    void Show_Running(bool running);
    void Show_Progress(qint64 documents, qint64 all);
    void Show_Early(Condition_Rows &found);
    void Show_Outcome(Search_Outcome &outcome);
    void Run();
    [[nodiscard]] Search_Request Request_On_Screen();
    [[nodiscard]] QString Scope_Of(const Search_Request &request) const;
    void Remember_Key(const QString &key);

    Shell &m_shell;
    std::unique_ptr<Ui::Search_Pane> m_ui;
    ctrlLanguage m_lang;
    Find_Tree m_folders;
    Search_Run m_run;
    std::shared_ptr<Search_Result> m_result; ///< of the search that is running, or was the last
    QString m_where;                         ///< its condition
    int m_limit = Search_Limit;              ///< documents that it lists
    QTimer m_typing;
};
