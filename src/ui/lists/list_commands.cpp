// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/command_keys.h"
#include "ui/kit/forms.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"
#include "ui/lists/frm_list_view.h"
#include "ui_frm_list_view.h"
#include "views/document_facts.h"
#include "views/list_columns.h"

#include <QAction>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QPixmap>

/// How many selected rows a command works on.
enum class Rows { Any, Some, One };

/// One command of the list: an entry of its context menu and a key.
struct Frm_ListView::Command {
    const char *name;
    const char *caption; ///< key in the section of the form
    const char *icon;
    QKeySequence key;
    Rows rows;
    bool endsGroup;
    void (Frm_ListView::*run)();
};

const std::vector<Frm_ListView::Command> &Frm_ListView::Commands()
{
    static const std::vector<Command> commands = {
        {"Mnu_List_Open", "_Mnu_Open", "open", Qt::Key_Return, Rows::Some, false, &Frm_ListView::Open_Selected},
        {"Mnu_List_New", "_Mnu_New", "new", {}, Rows::Any, false, &Frm_ListView::New_Document},
        {"Mnu_List_Delete", "_Mnu_Delete", "delete", QKeySequence::Delete, Rows::Some, true,
         &Frm_ListView::Delete_Selected},
        {"Mnu_List_Move", "_Mnu_Move", "folder_move", Qt::CTRL | Qt::SHIFT | Qt::Key_M, Rows::Some, false,
         &Frm_ListView::Move_Selected},
        {"Mnu_Lsv_Code_Info_VirCate", "_Mnu_VirCate", "folder", {}, Rows::One, true, &Frm_ListView::Edit_Memberships},
        {"Mnu_List_Copy_Title", "_Mnu_Copy_Title", "copy", QKeySequence::Copy, Rows::Some, false,
         &Frm_ListView::Copy_Titles},
        {"Mnu_List_Tags", "_Mnu_Tags", "tag", Qt::CTRL | Qt::Key_T, Rows::Some, false, &Frm_ListView::Tag_Rows},
        {"Mnu_List_Color", "_Mnu_Color", "color", {}, Rows::Some, true, &Frm_ListView::Color_Rows},
        {"Mnu_List_Columns", "_Mnu_Columns", "columns", {}, Rows::Any, false, &Frm_ListView::Set_Up_Columns},
        {"Mnu_List_Comfortable", "_Mnu_Comfortable", "", {}, Rows::Any, false, &Frm_ListView::Switch_Comfortable},
        {"Mnu_List_Picture", "_Mnu_Picture", "", {}, Rows::Any, false, &Frm_ListView::Choose_Picture},
        {"Mnu_List_No_Picture", "_Mnu_No_Picture", "", {}, Rows::Any, true, &Frm_ListView::Close_Picture},
        {"Mnu_List_Properties", "_Mnu_Properties", "properties", Qt::ALT | Qt::Key_Return, Rows::One, false,
         &Frm_ListView::Show_Properties},
    };
    return commands;
}

void Frm_ListView::Add_Commands()
{
    m_menu = new QMenu(this);
    for (const Command &command : Commands()) {
        QAction *action = m_menu->addAction(Pack_Text("Frm_ListView", command.caption));
        action->setObjectName(QLatin1String(command.name));
        if (*command.icon != '\0')
            action->setIcon(Line_Icon(QLatin1String(command.icon)));
        action->setShortcut(command.key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, [this, run = command.run] { (this->*run)(); });
        action->setCheckable(command.run == &Frm_ListView::Switch_Comfortable);
        m_ui->Lsv_Code_Info->addAction(action);
        Command_Keys::Of_Program().Give(*action, Command_Keys::Place::List);
        m_actions.push_back(action);
        if (command.endsGroup)
            m_menu->addSeparator();
    }
}

void Frm_ListView::Show_Menu(const QPoint &at)
{
    const qsizetype rows = Selected_Ids().size();
    for (size_t i = 0; i < m_actions.size(); ++i) {
        const Rows wanted = Commands()[i].rows;
        m_actions[i]->setEnabled(wanted == Rows::Any || rows == 1 || (rows > 1 && wanted == Rows::Some));
    }
    m_menu->findChild<QAction *>(QStringLiteral("Mnu_List_No_Picture"))->setVisible(!Config().Pic_List.isEmpty());
    m_menu->findChild<QAction *>(QStringLiteral("Mnu_List_Comfortable"))->setChecked(m_comfortable);
    m_menu->exec(m_ui->Lsv_Code_Info->viewport()->mapToGlobal(at));
    for (QAction *action : m_actions)
        action->setEnabled(true); // their keys look at the selection themselves
}

void Frm_ListView::Show_Column_Menu(const QPoint &at)
{
    QHeaderView *header = m_ui->Lsv_Code_Info->header();
    QMenu menu(this);
    for (int i = 1; i < header->count(); ++i) {
        QAction *action = menu.addAction(m_list.Columns()[static_cast<size_t>(i)].caption);
        action->setCheckable(true);
        action->setChecked(!header->isSectionHidden(i));
        connect(action, &QAction::toggled, header, [this, header, i](bool on) {
            header->setSectionHidden(i, !on);
            const int least = std::max(header->sectionSizeHint(i), Document_Columns()[static_cast<size_t>(i)].width);
            if (on && header->sectionSize(i) < header->sectionSizeHint(i))
                header->resizeSection(i, least);
            Fit_Title();
        });
    }
    menu.addSeparator();
    menu.addAction(Pack_Text("Frm_ListView", "_Mnu_Columns"), this, &Frm_ListView::Set_Up_Columns);
    menu.exec(header->mapToGlobal(at));
}

void Frm_ListView::Open_Selected()
{
    const QModelIndex current = m_ui->Lsv_Code_Info->currentIndex();
    const QStringList ids = Selected_Ids();
    if (ids.size() <= 1 && current.isValid())
        Open_Row(current);
    for (const QString &id : ids.size() > 1 ? ids : QStringList())
        m_shell.Open_Document(id);
}

void Frm_ListView::New_Document()
{
    m_shell.New_Document();
}

void Frm_ListView::Delete_Selected()
{
    const QStringList ids = Selected_Ids();
    if (!ids.isEmpty())
        m_shell.Delete_Documents(ids, Asked_In::List);
}

void Frm_ListView::Move_Selected()
{
    m_shell.Move_Documents(Selected_Ids());
}

void Frm_ListView::Edit_Memberships()
{
    const QStringList ids = Selected_Ids();
    if (ids.size() == 1 && Forms::Show_Modal(QStringLiteral("Frm_ListView_VirCate"),
                                             {.parent = this, .documents = ids}) == Forms::Outcome::Accepted)
        Reload();
}

void Frm_ListView::Copy_Titles()
{
    QStringList titles;
    const int column = m_list.Column(QStringLiteral("Lsv_Code_Info_Title"));
    for (const QString &id : Selected_Ids())
        titles << m_list.Row(m_list.Find(id)).texts.value(column);
    if (!titles.isEmpty())
        QGuiApplication::clipboard()->setText(titles.join(QLatin1Char('\n')));
}

void Frm_ListView::Color_Rows()
{
    const QStringList ids = Selected_Ids();
    if (ids.isEmpty())
        return;
    Forms::Show_Modal(QStringLiteral("Frm_ListView_Color"), {.parent = this, .documents = ids, .changed = [&] {
                                                                 m_shell.Colors_Chosen(ids);
                                                             }});
}

void Frm_ListView::Tag_Rows()
{
    const QStringList ids = Selected_Ids();
    if (ids.isEmpty())
        return;
    Forms::Show_Modal(QStringLiteral("Frm_ListView_Tags"), {.parent = this, .documents = ids, .changed = [&] {
                                                                for (const QString &id : ids)
                                                                    m_shell.Document_Changed(id);
                                                            }});
}

void Frm_ListView::Set_Up_Columns()
{
    Save_Columns();
    Forms::Show_Modal(QStringLiteral("Frm_ListView_Para"), {.parent = this, .changed = [this] {
                                                                Apply_Columns();
                                                            }});
}

void Frm_ListView::Show_Properties()
{
    const QStringList ids = Selected_Ids();
    if (ids.size() != 1)
        return;
    Trap(
        QStringLiteral("Frm_ListView\\Mnu_List_Properties"),
        [&] { Prompts::Message(Document_Facts(ids.first()), Pack_Text("Frm_ListView", "_Properties")); },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
}

namespace
{
/// Copies a picture into the folder. @returns its name there: with a number where another picture has its own
QString Take_Picture(const QString &path, const QString &folder)
{
    Files::Make_Directory(folder);
    const QFileInfo file(path);
    for (int number = 1;; ++number) {
        QString name =
            number == 1
                ? file.fileName()
                : QStringLiteral("%1 (%2).%3").arg(file.completeBaseName(), QString::number(number), file.suffix());
        const QString target = folder + QLatin1Char('/') + name;
        if (QFileInfo::exists(target) && Files::Read_Bytes(target) != Files::Read_Bytes(path))
            continue;
        Files::Copy_File(path, target);
        return name;
    }
}
} // namespace

void Frm_ListView::Choose_Picture()
{
    const QString folder = Files::Native_Path(App().App_Path + QStringLiteral("data/img"));
    const QString path = Prompts::Open_File(Pack_Text("Frm_ListView", "_Mnu_Picture"), folder,
                                            QStringLiteral("*.png;*.jpg;*.bmp;*.gif|*.png *.jpg *.jpeg *.bmp *.gif"));
    if (path.isEmpty())
        return;
    Trap(
        QStringLiteral("Frm_ListView\\Mnu_List_Picture"),
        [&] {
            const bool isThere = QFileInfo(path).absolutePath() == QFileInfo(folder).absoluteFilePath();
            const QString name = isThere ? QFileInfo(path).fileName() : Take_Picture(path, folder);
            Keep_Setting(&Settings_Record::Pic_List, name);
            setListPic(name);
        },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
}

void Frm_ListView::Close_Picture()
{
    Keep_Setting(&Settings_Record::Pic_List, {});
    setListPic({});
}
