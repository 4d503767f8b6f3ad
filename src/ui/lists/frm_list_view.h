// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"
#include "ui/kit/ctrl_language.h"
#include "views/list_engine.h"

#include <QPixmap>
#include <QWidget>
#include <functional>
#include <memory>

class QAction;
class QMenu;
class Shell;
namespace Ui
{
class Frm_ListView;
}

/// The document list and its page bar.
class Frm_ListView : public QWidget
{
    Q_OBJECT

public:
    /// Fills one page; the list asks for it when the user turns the page.
    using Page_Source = std::function<Page_Info(List_Model &list, int page)>;

    explicit Frm_ListView(Shell &shell, QWidget *parent = nullptr);
    ~Frm_ListView() override;

    void Load_Lang();
    /// Shows a page of a source and keeps the source for paging.
    /// @param emptyText  what stands there when it has no rows; "" for the usual hint. A locked folder and a list
    ///                   that failed say that they are.
    void Show_Source(Page_Source source, int page = 1, const QString &emptyText = {});
    /// Shows nothing but a text.
    void Show_Text(const QString &text);
    /// Fills the page on screen anew, the last one where there is none of its number any more. The current row stays,
    /// or the one that takes its place is current.
    void Reload();
    /// Reads a document's row anew; one that is not there yet is looked for, unless a search is shown.
    void Refresh_Row(const QString &code_id);
    /// Puts the keyboard into the rows, on the first one when none is current.
    void Focus_Rows();
    /// Ids of the selected rows, in their order.
    [[nodiscard]] QStringList Selected_Ids() const;
    /// The id of a document's neighbour, "" at the ends of the page or when the document is not on it.
    [[nodiscard]] QString Neighbour(const QString &code_id, int step) const;
    void Select_Document(const QString &code_id);
    /// What was searched, a key in columns; "" for a list of another kind. An opened document shows the key's places, a
    /// row's tool tip the words around the first one.
    void Set_Search(const QString &key, const QStringList &fields);
    /// What stands above the rows while a search is listed; "" for nothing.
    void Set_Heading(const QString &text);
    /// Gives the list the font, the colours and the lines of the settings.
    void Apply_Look();
    /// Shows a page of the source, the nearest one where there is none of that number.
    void Go_To_Page(int page);
    /// Writes the widths and places of the columns to the settings.
    void Save_Columns();
    /// Shows the picture of that name in data\img\ beside the list, or says that there is none; "" closes the pane.
    void setListPic(const QString &name);

signals:
    /// The user wants more of the documents that were found.
    void More_Wanted();
    /// The user is done with what was searched.
    void Search_Left();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Command;
    [[nodiscard]] static const std::vector<Command> &Commands();

    [[nodiscard]] QString Empty_Hint() const;
    [[nodiscard]] QString Empty_Text(Page_Info::State state) const;
    void Go_To_Typed_Page();
    void Fill();
    void Connect_Controls();
    void Add_Commands();
    void Show_Menu(const QPoint &at);
    void Show_Column_Menu(const QPoint &at);
    void Apply_Columns();
    /// The titles take the room that the other columns leave.
    void Fit_Title();
    void Switch_Comfortable();
    void Show_Range();
    void ShowPageInfo(const Page_Info &info);
    void Sort_By(int column);
    void Mark_Sorted_Column();
    void Open_Row(const QModelIndex &row);
    void Show_Picture();
    [[nodiscard]] QString Hit_Tip_Of(const QModelIndex &row) const;

    void Open_Selected();
    void New_Document();
    void Delete_Selected();
    void Move_Selected();
    void Edit_Memberships();
    void Copy_Titles();
    void Tag_Rows();
    void Color_Rows();
    void Set_Up_Columns();
    void Choose_Picture();
    void Close_Picture();
    void Show_Properties();

    Shell &m_shell;
    std::unique_ptr<Ui::Frm_ListView> m_ui;
    ctrlLanguage m_lang;
    List_Model m_list;
    QMenu *m_menu = nullptr;
    std::vector<QAction *> m_actions; ///< one for each command
    Page_Source m_source;
    Page_Info m_info;
    QString m_emptyText;
    QString m_searchKey;
    QStringList m_searchFields;
    QString m_pictureFile; ///< the file that m_picture shows
    QPixmap m_picture;
    int m_page = 1;
    int m_sortColumn = 0; ///< 0: as listed
    bool m_ascending = true;
    bool m_fitting = false; ///< the title's width is being set by the program
    bool m_comfortable = false;
};
