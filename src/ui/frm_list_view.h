// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"
#include "ui/ctrl_language.h"
#include "views/list_engine.h"

#include <QWidget>
#include <functional>
#include <memory>

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
    void Show_Source(Page_Source source, int page = 1);
    /// Fills the page on screen anew.
    void Reload();
    void Refresh_Row(const QString &code_id);
    /// Takes rows out of the page on screen.
    void Remove_Rows(const QStringList &codeIds);
    /// Puts the keyboard into the rows, on the first one when none is current.
    void Focus_Rows();
    /// Ids of the selected rows, in their order.
    [[nodiscard]] QStringList Selected_Ids() const;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void Set_Up_Columns();
    void ShowPageInfo(const Page_Info &info);
    void Go_To_Page(int page);
    void Sort_By(int column);

    Shell &m_shell;
    std::unique_ptr<Ui::Frm_ListView> m_ui;
    ctrlLanguage m_lang;
    List_Model m_list;
    Page_Source m_source;
    Page_Info m_info;
    int m_page = 1;
    int m_sortColumn = 0; ///< 0: as listed
    bool m_ascending = true;
};
