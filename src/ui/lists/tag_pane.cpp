// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/tag_pane.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/trouble.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/command_keys.h"
#include "ui/kit/forms.h"
#include "ui/kit/icons.h"
#include "ui/kit/row_choice.h"
#include "ui/kit/shell.h"
#include "ui_tag_pane.h"
#include "views/tags.h"

#include <QAction>
#include <QActionGroup>
#include <QHeaderView>
#include <QMenu>
#include <QSignalBlocker>

namespace
{
constexpr int First_Rows = 100;
constexpr int Count_Column = 1;
} // namespace

/// One command: an entry of the context menu, and a button where there is one of its name.
struct Tag_Pane::Command {
    const char *name;
    const char *caption; ///< key in the section of the page
    const char *icon;
    QKeySequence key;
    bool needsTag;
    void (Tag_Pane::*run)();
};

const std::vector<Tag_Pane::Command> &Tag_Pane::Commands()
{
    static const std::vector<Command> commands = {
        {"Ima_AddTag", "_Add", "tag_add", Qt::Key_Insert, false, &Tag_Pane::Open_Frm_TagAdd},
        {"Ima_ModTag", "_Rename", "rename", Qt::Key_F2, true, &Tag_Pane::Rename},
        {"Ima_DelTag", "_Delete", "delete", QKeySequence::Delete, true, &Tag_Pane::Delete},
        {"Mnu_Merge_Tags", "_Merge", "", {}, true, &Tag_Pane::Merge},
        {"Ima_RefreshTag", "_Refresh", "refresh", {}, false, &Tag_Pane::Refresh_Tags},
    };
    return commands;
}

Tag_Pane::Tag_Pane(Shell &shell, QWidget *parent)
    : Left_Page(parent), m_shell(shell), m_ui(std::make_unique<Ui::Tag_Pane>()),
      m_lang(*this, QStringLiteral("Tag_Pane")), m_limit(First_Rows)
{
    m_ui->setupUi(this);
    m_ui->Lsv_Tags->Show(m_tags);
    m_ui->Lsv_Tags->setAccessibleName(Pack_Text("Frm_Main", "Left_Tags|Index|Caption"));
    m_choice = new Row_Choice(*m_ui->Lsv_Tags);
    Add_Commands();
    Add_Filters();
    Show_State();
    QHeaderView *header = m_ui->Lsv_Tags->header();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(0, Qt::AscendingOrder);
    connect(header, &QHeaderView::sectionClicked, this, &Tag_Pane::Order_By);
    connect(m_choice, &Row_Choice::Chosen, this, &Tag_Pane::Choose);
    connect(m_ui->Lsv_Tags, &QTreeView::activated, this, [this] { m_shell.Focus_List(); });
    connect(m_ui->Lsv_Tags, &Tag_List_View::Dropped, this, &Tag_Pane::Drop);
    connect(m_ui->Lsv_Tags->selectionModel(), &QItemSelectionModel::selectionChanged, this, &Tag_Pane::Show_State);
    connect(m_ui->Lsv_Tags, &QTreeView::customContextMenuRequested, this,
            [this](const QPoint &at) { m_menu->popup(m_ui->Lsv_Tags->viewport()->mapToGlobal(at)); });
}

Tag_Pane::~Tag_Pane() = default;

void Tag_Pane::Add_Commands()
{
    m_menu = new QMenu(this);
    for (const Command &command : Commands()) {
        QAction *action = m_menu->addAction(m_lang.GetString(command.caption));
        if (*command.icon != '\0')
            action->setIcon(Line_Icon(QLatin1String(command.icon)));
        action->setShortcut(command.key);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, command.run);
        m_ui->Lsv_Tags->addAction(action);
        Command_Keys::Of_Program().Give(*action, Command_Keys::Place::Tags, QLatin1String(command.name));
        m_actions.push_back(action);
        if (auto *button = findChild<QToolButton *>(QLatin1String(command.name)))
            button->setDefaultAction(action);
    }
}

void Tag_Pane::Add_Filters()
{
    struct Row {
        const char *caption;
        Tag_Filter filter;
    };
    m_menu->addSeparator();
    auto *group = new QActionGroup(this);
    for (const Row &row : {Row{"_All", Tag_Filter::All},
                           {"_Unused", Tag_Filter::Unused},
                           {"_Once", Tag_Filter::Once},
                           {"_Alike", Tag_Filter::Alike}}) {
        QAction *action = m_menu->addAction(m_lang.GetString(row.caption));
        action->setCheckable(true);
        action->setChecked(row.filter == m_filter);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, filter = row.filter] {
            m_filter = filter;
            Fill();
        });
    }
}

void Tag_Pane::Show_State()
{
    const bool chosen = !Selected().isEmpty();
    for (size_t i = 0; i < m_actions.size(); ++i)
        m_actions[i]->setEnabled(chosen || !Commands()[i].needsTag);
}

void Tag_Pane::Fill()
{
    const QSignalBlocker blocker(m_choice);
    const QString current = Current_Key();
    Show_Tags(m_tags, m_filter, m_order);
    m_ui->Lsv_Tags->Select(current);
    Show_State();
}

void Tag_Pane::Choose()
{
    m_limit = First_Rows;
    List_Chosen();
}

void Tag_Pane::List_Chosen()
{
    const int tag = Tag_Of_Key(Current_Key());
    if (tag == 0)
        return;
    emit Chosen([this, tag](List_Model &list,
                            int page) { return ShowCodeInfoToList_Ex_Key(Tag_Where(tag), list, {}, page, m_limit); },
                m_lang.GetString("_No_Documents"));
}

void Tag_Pane::List_More()
{
    m_limit += First_Rows;
}

void Tag_Pane::Order_By(int column)
{
    m_order = column == Count_Column ? Tag_Order::Count : Tag_Order::Name;
    m_ui->Lsv_Tags->header()->setSortIndicator(column,
                                               column == Count_Column ? Qt::DescendingOrder : Qt::AscendingOrder);
    Fill();
}

void Tag_Pane::Open_Frm_TagAdd()
{
    Forms::Show_Modal(QStringLiteral("Frm_TagAdd"), {.parent = this, .changed = [this] {
                                                         Fill();
                                                     }});
}

void Tag_Pane::Rename()
{
    const QString key = Current_Key();
    const QString old = Name_Of(key);
    const QString name =
        Prompts::Input(Pack_Text("Frm_Main", "_ModTagPrompt"), Pack_Text("Frm_Main", "_ModTagTitle"), old);
    if (key.isEmpty() || name.trimmed().isEmpty() || Tag_Name(name) == old)
        return;
    Rename_Tag(Tag_Of_Key(key), name);
    Show_Changed(Last_Trouble());
}

void Tag_Pane::Delete()
{
    QStringList names;
    const QStringList keys = Selected();
    for (const QString &key : keys)
        names << Name_Of(key);
    const QString question =
        Pack_Text("Frm_Main", "_DelTagPrompt") + QStringLiteral("\n\n") + names.join(QStringLiteral(", "));
    if (keys.isEmpty() ||
        Prompts::Ask(question, Pack_Text("Frm_Main", "_DelTagTitle"), Prompts::Choice::Yes_No, Prompts::Answer::No,
                     {.yes = Pack_Text("Buttons", "_Delete"), .no = Pack_Text("Buttons", "_Cancel")}) !=
            Prompts::Answer::Yes)
        return;
    QString trouble;
    for (const QString &key : keys) {
        if (Delete_Tag(Tag_Of_Key(key)))
            m_tags.Remove(m_tags.Find(key));
        else
            trouble = Last_Trouble();
    }
    Show_Changed(trouble);
}

void Tag_Pane::Refresh_Tags()
{
    Refresh_Tag_Counts();
    Show_Changed(Last_Trouble());
}

void Tag_Pane::Merge()
{
    QList<int> from;
    for (const QString &key : Selected())
        from << Tag_Of_Key(key);
    const QString name = Prompts::Input(m_lang.GetString("_Merge_Into").arg(from.size()),
                                        m_lang.GetString("_Merge_Title"), Name_Of(Current_Key()));
    if (name.trimmed().isEmpty())
        return;
    const int into = Get_Tag_Id(name);
    if (into == 0)
        return Prompts::Message(Pack_Text("Frm_Main", "_Tag_Gone"), App().App_Title, Prompts::Icon::Exclamation);
    Merge_Tags(from, into);
    const QString trouble = Last_Trouble();
    Show_Changed(trouble);
    if (trouble.isEmpty())
        m_ui->Lsv_Tags->Select(Tag_Key(into));
    else
        Prompts::Message(trouble, App().App_Title, Prompts::Icon::Exclamation);
}

void Tag_Pane::Drop(const QString &text, const QString &key)
{
    Drop_On_Tags(m_tags, text, key, m_shell.Document_On_Screen());
    Show_Changed(Last_Trouble());
}

void Tag_Pane::Show_Changed(const QString &trouble)
{
    Fill();
    m_shell.Set_Status(trouble);
}

QString Tag_Pane::Current_Key() const
{
    return m_ui->Lsv_Tags->currentIndex().data(List_Model::Tag_Role).toString();
}

QString Tag_Pane::Name_Of(const QString &key) const
{
    const int row = m_tags.Find(key);
    return row < 0 ? QString() : m_tags.Row(row).texts.value(0);
}

QStringList Tag_Pane::Selected() const
{
    QStringList keys;
    for (const QModelIndex &row : m_ui->Lsv_Tags->selectionModel()->selectedRows())
        keys << row.data(List_Model::Tag_Role).toString();
    return keys;
}
