// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/page_attachments.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/settings.h"
#include "documents/attachment_export.h"
#include "documents/attachment_place.h"
#include "editor/pictures.h"
#include "platform/files/directory_walk.h"
#include "platform/files/door.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "ui/document/attachment_actions.h"
#include "ui/document/attachment_news.h"
#include "ui/kit/command_keys.h"
#include "ui/kit/file_drops.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"
#include "ui/kit/work_window.h"
#include "ui_page_attachments.h"

#include <QClipboard>
#include <QDropEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QMimeDatabase>

struct Page_Attachments::Command {
    const char *name;
    const char *icon;
    const char *shortcut;
    void (Page_Attachments::*run)();
    bool changes;
    const char *button; ///< the button that runs it, or whose menu has it; "" for none
};

namespace
{
const QString Source = QStringLiteral("Frm_Doc_Standard\\Attachments");
using Attachment_Actions::Report;
} // namespace

std::span<const Page_Attachments::Command> Page_Attachments::Commands()
{
    using Page = Page_Attachments;
    static constexpr Command commands[] = {
        {"Mnu_Open", "open", "Return", &Page::Open, false, "Cmd_Open"},
        {"Mnu_Add", "new", "Ins", &Page::Add_Chosen, true, "Cmd_Add"},
        {"Mnu_Paste", "paste", "Ctrl+V", &Page::Paste, true, ""},
        {"Mnu_Copy", "copy", "Ctrl+C", &Page::Copy, false, ""},
        {"mnuFile_Path", "link", "", &Page::Add_Reference, true, "Cmd_Link"},
        {"mnuFile_Path_Curr", "link", "", &Page::Add_Reduced, true, "Cmd_Link"},
        {"Mnu_Out_Direct", "folder", "", &Page::Add_Folder, true, "Cmd_Link"},
        {"Mnu_Out_Web", "link", "", &Page::Add_Page, true, "Cmd_Link"},
        {"Mnu_Export", "save-as", "Ctrl+E", &Page::Export, false, "Cmd_Export"},
        {"Mnu_Remark", "edit", "F2", &Page::Edit_Remark, true, "Cmd_Remark"},
        {"Mnu_Up", "up", "Alt+Up", &Page::Move_Up, true, "Img_List_Up"},
        {"Mnu_Down", "down", "Alt+Down", &Page::Move_Down, true, "Img_List_Down"},
        {"Mnu_Delete", "delete", "Del", &Page::Delete, true, "Cmd_Del"},
    };
    return commands;
}

Page_Attachments::Page_Attachments(Shell &shell, QWidget &form)
    : m_shell(shell), m_ui(std::make_unique<Ui::Page_Attachments>()), m_lang(*this, QStringLiteral("Page_Attachments")),
      m_list({Attachment_Model::Column::Name, Attachment_Model::Column::Size, Attachment_Model::Column::Date,
              Attachment_Model::Column::Kind, Attachment_Model::Column::Remark}),
      m_opened(Opened_Attachments::Of(form))
{
    m_ui->setupUi(this);
    setAcceptDrops(true);
    m_list.Files_For = [this](const QList<Attachment> &files) {
        return Laid_Out(files);
    };
    m_ui->Lsv_File->setModel(&m_list);
    m_ui->Lsv_File->setDragDropMode(QAbstractItemView::DragOnly); // drops go to the page
    Add_Commands();
    Load_Lang();
    connect(m_ui->Lsv_File, &QTreeView::doubleClicked, this, &Page_Attachments::Open);
    connect(m_ui->Lsv_File, &QTreeView::customContextMenuRequested, this, &Page_Attachments::Show_Menu);
    connect(&m_opened, &Opened_Attachments::Told, this, [this](const QString &text) { m_shell.Set_Status(text); });
    connect(&Attachment_News::The(), &Attachment_News::Changed, this, [this](const QString &code_id) {
        if (code_id == m_id)
            Refresh();
    });
}

Page_Attachments::~Page_Attachments()
{
    if (!m_laidOut.isEmpty())
        Files::Delete_Folder(m_laidOut);
}

void Page_Attachments::Load_Lang()
{
    m_lang.LoadControlsCaption();
    m_list.Load_Lang();
    constexpr int widths[] = {26, 12, 22, 12};
    for (int i = 0; i < static_cast<int>(std::size(widths)); ++i)
        m_ui->Lsv_File->setColumnWidth(i, widths[i] * fontMetrics().averageCharWidth());
    m_filled = false;
    Fill();
    emit Caption_Changed();
}

QString Page_Attachments::Caption() const
{
    const QString caption = m_lang.GetString("_Tab");
    return m_count == 0 ? caption : QStringLiteral("%1 (%2)").arg(caption, locale().toString(m_count));
}

void Page_Attachments::Add_Commands()
{
    for (const Command &command : Commands()) {
        auto *action = new QAction(Line_Icon(QLatin1String(command.icon)), QString(), this);
        action->setObjectName(QLatin1String(command.name));
        action->setShortcut(QKeySequence(QLatin1String(command.shortcut)));
        action->setShortcutContext(Qt::WidgetShortcut);
        m_ui->Lsv_File->addAction(action);
        Command_Keys::Of_Program().Give(*action, Command_Keys::Place::Attachments);
        connect(action, &QAction::triggered, this, [this, &command] { Run(command); });
        auto *button = findChild<QToolButton *>(QLatin1String(command.button));
        if (button == m_ui->Cmd_Link) {
            button->setPopupMode(QToolButton::InstantPopup);
            button->setIcon(Line_Icon(QStringLiteral("link")));
            button->addAction(action);
        } else if (button != nullptr) {
            button->setIcon(action->icon());
            connect(button, &QToolButton::clicked, action, &QAction::trigger);
        }
    }
}

void Page_Attachments::Run(const Command &command)
{
    if (command.changes && !m_changeable)
        return Report(Pack_Text("Frm_Doc_Standard", "_ReadOnly"));
    Trap(
        Source, [&] { (this->*command.run)(); }, [] { Report(Error_Text(Err())); });
}

void Page_Attachments::Show_Menu(const QPoint &where)
{
    QMenu menu(this);
    menu.addActions(m_ui->Lsv_File->actions());
    menu.exec(m_ui->Lsv_File->viewport()->mapToGlobal(where));
}

void Page_Attachments::Show_Document(const QString &code_id, const QString & /*title*/)
{
    m_id = code_id;
    Refresh();
}

void Page_Attachments::Document_Saved(const QString &code_id, const QString & /*title*/)
{
    if (m_id == code_id)
        return;
    const bool adopted = m_id.isEmpty();
    if (adopted)
        m_opened.Adopt(code_id);
    m_id = code_id;
    Refresh();
    if (adopted) // other new documents have none of them any more
        emit Attachment_News::The().Changed({});
}

/// Counts always, and reads the rows when they are on screen.
void Page_Attachments::Refresh(const QString &selected)
{
    m_filled = false;
    m_count = Trap(Source, [this] { return Attachment_Count(m_id); });
    emit Caption_Changed();
    if (isVisible())
        Fill();
    const QModelIndex row = m_list.index(m_list.Find(selected.toLongLong()), 0);
    if (row.isValid())
        m_ui->Lsv_File->setCurrentIndex(row);
}

void Page_Attachments::Fill()
{
    if (m_filled)
        return;
    m_filled = true;
    m_list.Show(m_count == 0 ? QList<Attachment>() : Trap(Source, [this] { return Attachments_Of(m_id); }));
}

void Page_Attachments::Changed(const QString &selected)
{
    Refresh(selected);
    if (!m_id.isEmpty())
        m_shell.Document_Changed(m_id);
}

QList<Attachment> Page_Attachments::Selected() const
{
    return Selected_Attachments(*m_ui->Lsv_File, m_list);
}

void Page_Attachments::showEvent(QShowEvent *event)
{
    Document_Page::showEvent(event);
    Fill();
}

void Page_Attachments::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->source() != m_ui->Lsv_File && !Dropped_Files(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void Page_Attachments::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    if (Config().Cob_AddinFileType == Addin_Mode::Nothing)
        return;
    if (!m_changeable)
        return Report(Pack_Text("Frm_Doc_Standard", "_ReadOnly"));
    Trap(
        Source, [&] { Add_Dropped(Dropped_Files(*event->mimeData()), Config().Cob_AddinFileType); },
        [] { Report(Error_Text(Err())); });
}

void Page_Attachments::Add_Chosen()
{
    const QString mode = Config().Cob_AddinFileType;
    Add_Files(Prompts::Open_Files(m_lang.GetString("_Choose_Files"), {}),
              mode == Addin_Mode::Nothing ? Addin_Mode::Internal : mode);
}

void Page_Attachments::Paste()
{
    const QMimeData &clip = *QGuiApplication::clipboard()->mimeData();
    const QString mode = Config().Cob_AddinFileType;
    if (const QStringList files = Dropped_Files(clip); !files.isEmpty())
        Add_Dropped(files, mode == Addin_Mode::Nothing ? Addin_Mode::Internal : mode);
    else if (const QByteArray picture = Pictures::In(clip); !picture.isEmpty())
        Paste_Picture(picture);
}

void Page_Attachments::Paste_Picture(const QByteArray &picture)
{
    const QString folder = App().App_Path + QStringLiteral("data/temp");
    const QString name =
        Files::Name_For(m_lang.GetString("_Picture") + Machine::Now().toString(QStringLiteral(" yyyy-MM-dd HHmmss")),
                        QStringLiteral("picture")) +
        QLatin1Char('.') + QMimeDatabase().mimeTypeForData(picture).preferredSuffix();
    const QString path = folder + QLatin1Char('/') + name;
    Files::Make_Directory(folder);
    Files::Write_Bytes(path, picture, Files::Durability::Staging);
    Add_Files({path}, Config().Cob_AddinFileType == Addin_Mode::Copy ? Addin_Mode::Copy : Addin_Mode::Internal);
    Files::Delete_If_Present(path);
}

void Page_Attachments::Copy()
{
    if (QMimeData *files = m_list.mimeData(m_ui->Lsv_File->selectionModel()->selectedRows()))
        QGuiApplication::clipboard()->setMimeData(files);
}

QList<QUrl> Page_Attachments::Laid_Out(const QList<Attachment> &files)
{
    return Trap(
        Source,
        [&] {
            if (!m_laidOut.isEmpty())
                Files::Delete_Folder(m_laidOut);
            m_laidOut = App().App_Path + QStringLiteral("data/temp/attached_%1").arg(Machine::Random_Below(1000000));
            QList<QUrl> urls;
            Long_Work::Run(this, m_lang.GetString("_Copying"),
                           [&](Work &work) { urls = Lay_Out_Attachments(files, m_laidOut, work); });
            return urls;
        },
        [] { Report(Error_Text(Err())); });
}

void Page_Attachments::Add_Reference()
{
    Add_Files(Prompts::Open_Files(m_lang.GetString("_Choose_Files"), {}), Addin_Mode::Link);
}

void Page_Attachments::Add_Reduced()
{
    for (const QString &path : Prompts::Open_Files(m_lang.GetString("_Choose_Files"), {}))
        Keep(Add_Reduced_Link(m_id, path), path);
}

void Page_Attachments::Add_Folder()
{
    const QString folder = Prompts::Folder(Pack_Text("Frm_Main", "_Seldb"), {});
    if (!folder.isEmpty())
        Keep(Add_Folder_Link(m_id, folder), folder);
}

void Page_Attachments::Add_Page()
{
    QString address = QStringLiteral("https://");
    for (;;) { // what was typed comes back for another try
        address = Prompts::Input(m_lang.GetString("_Ask_Address"), App().App_Title, address).trimmed();
        if (address.isEmpty())
            return;
        if (Attachment_Place::Is_Safe_Address(address))
            return Keep(Add_Page_Link(m_id, address), address);
        Report(Pack_Text("Editor_Bar", "_Link_Refused").arg(address));
    }
}

/// Of a folder its files are added or, where they are to be linked or the user wants it so, a link to it.
void Page_Attachments::Add_Dropped(const QStringList &paths, const QString &mode)
{
    QStringList files;
    for (const QString &path : paths) {
        const bool whole = mode == Addin_Mode::Link || !QFileInfo(path).isDir();
        const QStringList taken = whole ? QStringList{path} : Wanted_Of_Folder(path);
        if (taken.isEmpty())
            return;
        files += taken;
    }
    Add_Files(files, mode);
}

/// Asks what of a folder is to be added. @returns its files or itself, nothing when the user gave up
QStringList Page_Attachments::Wanted_Of_Folder(const QString &folder)
{
    Files::Found_Files found;
    Long_Work::Run(this, m_lang.GetString("_Adding"), [&](Work &work) {
        const auto step = [&](const QString &below, qint64 count) {
            return work.Next(count, 0, below);
        };
        found = Files::Walk_Directory(folder, QStringLiteral("*.*"), true, step);
    });
    if (found.stopped)
        return {};
    if (found.files.empty())
        return {folder};
    const QString question =
        Filled(m_lang.GetString("_Ask_Folder"),
               {QFileInfo(folder).fileName(), locale().toString(static_cast<qint64>(found.files.size()))});
    switch (Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No_Cancel)) {
    case Prompts::Answer::Yes:
        break;
    case Prompts::Answer::No:
        return {folder};
    default:
        return {};
    }
    QStringList files;
    for (const Files::Found_File &file : found.files)
        files << file.path;
    return files;
}

void Page_Attachments::Add_Files(const QStringList &paths, const QString &mode)
{
    if (paths.isEmpty() || mode == Addin_Mode::Nothing)
        return;
    QList<Failed_Item> failed;
    Saved_Attachment saved;
    qint64 added = 0;
    Long_Work::Run(this, m_lang.GetString("_Adding"), [&](Work &work) {
        for (const QString &path : paths) {
            saved =
                QFileInfo(path).isDir() ? Add_Folder_Link(m_id, path) : S_SaveFile(m_id, path, QString(), mode, work);
            if (saved.stopped)
                return;
            if (saved.id != 0)
                ++added;
            else
                failed << Failed_Item{QFileInfo(path).fileName(), Attachment_Trouble(saved.trouble)};
        }
    });
    Changed(QString::number(saved.id));
    if (added > 0)
        m_shell.Set_Status(m_lang.GetString("_Added") + locale().toString(added));
    Attachment_Actions::Report_Failures(failed);
}

void Page_Attachments::Keep(const Saved_Attachment &saved, const QString &name)
{
    if (saved.id == 0)
        return Report(name + QLatin1Char('\n') + Attachment_Trouble(saved.trouble));
    Changed(QString::number(saved.id));
}

void Page_Attachments::Open()
{
    const QList<Attachment> files = Selected();
    if (files.size() == 1)
        m_opened.Open(files.first());
}

void Page_Attachments::Edit_Remark()
{
    const QList<Attachment> files = Selected();
    if (files.size() == 1 && Attachment_Actions::Edit_Remark(files.first()))
        Changed(QString::number(files.first().id));
}

void Page_Attachments::Delete()
{
    if (Attachment_Actions::Delete_After_Question(*this, Selected()))
        Changed();
}

void Page_Attachments::Move(int step)
{
    const int row = m_ui->Lsv_File->currentIndex().row();
    const int other = row + step;
    if (row < 0 || other < 0 || other >= m_list.rowCount())
        return;
    const qint64 id = m_list.Files()[row].id;
    ChangeFileOrder(id, m_list.Files()[other].id);
    Refresh(QString::number(id));
}

void Page_Attachments::Export()
{
    Attachment_Actions::Export(*this, Selected());
}
