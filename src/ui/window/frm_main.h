// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"
#include "ui/kit/shell.h"
#include "views/anywhere.h"

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <memory>

class At_Hand;
class Database_Commands;
class Document_Tabs;
class First_Steps;
class Frm_ListView;
class Left_Tabs;
class Program_Lock;
class QStackedWidget;
class Search_Box;
class Status_Line;
class Tree_Pane;
class View_Entries;
namespace Ui
{
class Frm_Main;
}

/// The main window: a shell that owns places and wires the panes to each other.
class Frm_Main : public QMainWindow, public Shell
{
    Q_OBJECT

public:
    Frm_Main();
    ~Frm_Main() override;

    /// Shows the window in the state that the settings ask for.
    void Show_As_Kept();
    /// Selects the folder that was used last and lists it.
    void Select_Last_Folder();
    /// Loads tree and list anew, after the database changed.
    void Reload_All() override;
    /// Saves every unsaved document. @returns false when one stays unsaved
    bool Save_All_Documents();
    /// Keeps the width of the tree's side, while it is shown, and the keys of the searches.
    void Save_Left_Side();
    /// Writes the window's placement to section Settings; a minimised window leaves the stored one alone.
    void Save_Placement();
    /// Shows the window in front, wherever it was put away.
    void Bring_Back();
    /// Brings up what is at hand while the window is out of sight: keys, message link, floating window.
    void Come_To_Hand();
    /// Takes it off the screen, the tray icon too.
    void Leave_Hand();

    /// Asked before the window closes for good; false keeps the program open.
    std::function<bool()> Query_Unload;
    /// Told when it has closed.
    std::function<void()> Unloaded;
    /// Told when another database was chosen, before its folders are shown.
    std::function<void()> Database_Chosen;

    void Set_Status(const QString &text) override;
    void Offer_Undo(const QString &done, const std::function<void()> &undo) override;
    [[nodiscard]] QString Selected_Folder() const override;
    void Folder_Changed(const QString &id) override;
    void Document_Changed(const QString &code_id) override;
    void Open_Document(const QString &code_id) override;
    [[nodiscard]] bool Is_Open(const QString &code_id) const override;
    [[nodiscard]] QString Document_On_Screen() const override;
    [[nodiscard]] QString Neighbour(const QString &code_id, int step) const override;
    void Select_In_List(const QString &code_id) override;
    void Panes_Changed() override;
    void Delete_Documents(const QStringList &ids, Asked_In place) override;
    void Open_Document_At(const QString &code_id, const QString &key, qint64 place) override;
    void New_Document() override;
    int Import_Files(const QStringList &paths, const QString &folderId) override;
    void List_Documents(const QString &where) override;
    void Focus_List() override;
    void Documents_Moved(const QStringList &codeIds, const QString &folderId) override;
    void Folder_Renumbered(const QString &oldId, const QString &newId) override;
    void Colors_Chosen(const QStringList &codeIds) override;
    void Move_Documents(const QStringList &codeIds) override;
    void Lock() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void Load_Lang();
    void Add_Panes();
    void Add_Editor_Menus();
    /// Puts the commands of the wings into their menus.
    void Add_Wing_Commands();
    void Add_Due_Button();
    void Add_Lock();
    /// Follows what others change in a library on a server.
    void Add_Server_Watch();
    void Follow_Others(const QStringList &tables);
    void Add_Hand();
    void Add_Status_Line();
    void Add_Search_Box();
    void Add_First_Steps();
    void Add_Ways_Of_Keyboard();
    void Add_Tab_Menu();
    void Connect_Actions();
    void Place_Document_Actions();
    void Place_Tool_Bar();
    void Set_Icons();
    void Bind_View_Entries();
    /// An entry of the menu for each page that a wing brings to the left side.
    void Add_Page_Entries();
    /// Takes the window off the task bar or puts it there, as the settings say.
    void Show_On_Task_Bar();
    /// Puts what the options changed on screen.
    void Apply_Settings();
    /// Deletes the document on screen, or the rows chosen in the list.
    void Delete_Chosen();
    void Choose_Files();
    void Choose_Database();
    void Connect_Documents();
    void Show_Title();
    /// Shows the ways to begin in place of the list, while there is neither folder nor document.
    void Show_First_Steps();
    /// The folder that a first document goes to, made when there is none; it is chosen.
    void Make_First_Folder();
    void Show_In_Tree(const QString &codeId);
    void Show_Keys();
    /// Every command, with what it is called and whether it applies now.
    [[nodiscard]] std::vector<Place> Command_Places() const;
    void Go_Anywhere();
    void Go_To(const Place &place);
    /// Opens the help file where there is one, else tells about the program.
    void Show_Help();
    void Leave();
    /// The window's own close button only puts the window away.
    [[nodiscard]] bool Hides_On_Close(const QCloseEvent &event) const;
    void Put_Away();
    /// Shows the window, or puts it away with all that has opened from it.
    void Toggle();
    void Hide_Beside();

    std::unique_ptr<Ui::Frm_Main> m_ui;
    ctrlLanguage m_lang;
    Tree_Pane *m_tree = nullptr;
    Frm_ListView *m_list = nullptr;
    Document_Tabs *m_tabs = nullptr;
    Left_Tabs *m_left = nullptr;
    View_Entries *m_view = nullptr;
    At_Hand *m_hand = nullptr;
    Status_Line *m_status = nullptr;
    Search_Box *m_search = nullptr;
    Database_Commands *m_database = nullptr;
    QStackedWidget *m_listPlace = nullptr; ///< the list, or the first steps
    Program_Lock *m_lock = nullptr;
    QList<QPointer<QWidget>> m_beside; ///< windows that were hidden with this one, the one on top first
    int m_floor = 0;                   ///< the least height of the documents, in pixels
    bool m_leaving = false;            ///< the close was asked by the program's own command, not by the window's button
};
