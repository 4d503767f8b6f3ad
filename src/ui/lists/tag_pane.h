// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"
#include "ui/kit/left_page.h"
#include "views/tag_care.h"

#include <memory>
#include <vector>

class QAction;
class QMenu;
class Row_Choice;
namespace Ui
{
class Tag_Pane;
}

/// The page of tags: a click lists a tag's documents, and tags are made, renamed, merged and deleted.
class Tag_Pane : public Left_Page
{
    Q_OBJECT

public:
    Tag_Pane(Shell &shell, QWidget *parent);
    ~Tag_Pane() override;

    void List_More() override;

protected:
    void Fill() override;
    void List_Chosen() override;

private:
    struct Command;
    [[nodiscard]] static const std::vector<Command> &Commands();

    void Add_Commands();
    void Add_Filters();
    void Show_State();
    void Choose();
    void Order_By(int column);
    void Open_Frm_TagAdd();
    void Rename();
    void Delete();
    void Refresh_Tags();
    void Merge();
    void Drop(const QString &text, const QString &key);
    /// The tags as they are now; a trouble is told on the status line.
    void Show_Changed(const QString &trouble);

    [[nodiscard]] QString Current_Key() const;
    [[nodiscard]] QString Name_Of(const QString &key) const;
    /// Keys of the selected tags.
    [[nodiscard]] QStringList Selected() const;

    Shell &m_shell;
    std::unique_ptr<Ui::Tag_Pane> m_ui;
    ctrlLanguage m_lang;
    List_Model m_tags;
    QMenu *m_menu = nullptr;
    Row_Choice *m_choice = nullptr;
    std::vector<QAction *> m_actions; ///< one for each command
    Tag_Filter m_filter = Tag_Filter::All;
    Tag_Order m_order = Tag_Order::Name;
    int m_limit = 0; ///< documents that are listed at most
};
