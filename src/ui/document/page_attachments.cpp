// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/page_attachments.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/settings.h"
#include "documents/attachment_export.h"
#include "documents/attachment_place.h"
#include "platform/prompts/prompts.h"
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

void Report(const QString &text)
{
    Prompts::Message(text, App().App_Title, Prompts::Icon::Exclamation);
}

void Report_Failures(const QList<Failed_Item> &failed)
{
    constexpr qsizetype Most_Named = 8;
    QStringList lines;
    for (const Failed_Item &item : failed.first(std::min(failed.size(), Most_Named)))
        lines << item.name + QStringLiteral(": ") + item.reason;
    if (failed.size() > Most_Named)
        lines << QStringLiteral("… (%1)").arg(failed.size());
    if (!lines.isEmpty())
        Report(lines.join(QLatin1Char('\n')));
}
} // namespace

std::span<const Page_Attachments::Command> Page_Attachments::Commands()
{
    using Page = Page_Attachments;
    static constexpr Command commands[] = {
        {"Mnu_Open", "open", "Return", &Page::Open, false, "Cmd_Open"},
        {"Mnu_Add", "new", "Ins", &Page::Add_Chosen, true, "Cmd_Add"},
        {"Mnu_Paste", "paste", "Ctrl+V", &Page::Paste, true, ""},
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

Page_Attachments::Page_Attachments(Shell &shell, QWidget & /*form*/)
    : m_shell(shell), m_ui(std::make_unique<Ui::Page_Attachments>()), m_lang(*this, QStringLiteral("Page_Attachments")),
      m_opened(*this)
{
    m_ui->setupUi(this);
    setAcceptDrops(true);
    m_ui->Lsv_File->setModel(&m_list);
    Add_Commands();
    Load_Lang();
    connect(m_ui->Lsv_File, &QTreeView::doubleClicked, this, &Page_Attachments::Open);
    connect(m_ui->Lsv_File, &QTreeView::customContextMenuRequested, this, &Page_Attachments::Show_Menu);
    connect(&m_opened, &Opened_Attachments::Replaced, this, [this](const QString &code_id) {
        if (code_id == m_id)
            return Changed();
        m_shell.Document_Changed(code_id);
    });
}

Page_Attachments::~Page_Attachments() = default;

void Page_Attachments::Load_Lang()
{
    m_lang.LoadControlsCaption();
    std::vector<List_Column> columns;
    for (const char *key : {"_Col_Name", "_Col_Size", "_Col_Date", "_Col_Kind", "_Col_Remark"})
        columns.push_back({QLatin1String(key), m_lang.GetString(key)});
    m_list.Set_Columns(std::move(columns));
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
    if (m_id.isEmpty())
        m_opened.Adopt(code_id);
    m_id = code_id;
    Refresh();
}

/// Counts always, and reads the rows when they are on screen.
void Page_Attachments::Refresh(const QString &selected)
{
    m_filled = false;
    m_count = Trap(Source, [this] { return Attachment_Count(m_id); });
    emit Caption_Changed();
    if (isVisible())
        Fill();
    const QModelIndex row = m_list.index(m_list.Find(selected), 0);
    if (row.isValid())
        m_ui->Lsv_File->setCurrentIndex(row);
}

void Page_Attachments::Fill()
{
    if (m_filled)
        return;
    m_filled = true;
    m_files = m_count == 0 ? QList<Attachment>() : Trap(Source, [this] { return Attachments_Of(m_id); });
    std::vector<List_Row> rows;
    for (const Attachment &file : m_files) {
        const bool inside = file.type == Attachment_Type::Internal;
        List_Row row;
        row.tag = QString::number(file.id);
        row.texts = {file.name, file.size, file.date, Pack_Text("Frm_Doc_Standard", inside ? "_Inside" : "_Outside"),
                     file.remark};
        row.tool_tip = file.path;
        rows.push_back(std::move(row));
    }
    m_list.Replace(std::move(rows));
}

void Page_Attachments::Changed(const QString &selected)
{
    Refresh(selected);
    if (!m_id.isEmpty())
        m_shell.Document_Changed(m_id);
}

QList<Attachment> Page_Attachments::Selected() const
{
    QList<Attachment> files;
    for (int i = 0; i < m_files.size() && i < m_list.Row_Count(); ++i) {
        if (m_ui->Lsv_File->selectionModel()->isRowSelected(i, {}))
            files << m_files[i];
    }
    return files;
}

void Page_Attachments::showEvent(QShowEvent *event)
{
    Document_Page::showEvent(event);
    Fill();
}

void Page_Attachments::dragEnterEvent(QDragEnterEvent *event)
{
    if (!Dropped_Files(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void Page_Attachments::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    if (Config().Cob_AddinFileType == Addin_Mode::Nothing)
        return;
    if (!m_changeable)
        return Report(Pack_Text("Frm_Doc_Standard", "_ReadOnly"));
    Add_Files(Dropped_Files(*event->mimeData()), Config().Cob_AddinFileType);
}

void Page_Attachments::Add_Chosen()
{
    const QString mode = Config().Cob_AddinFileType;
    Add_Files(Prompts::Open_Files(m_lang.GetString("_Choose_Files"), {}),
              mode == Addin_Mode::Nothing ? Addin_Mode::Internal : mode);
}

void Page_Attachments::Paste()
{
    Add_Files(Dropped_Files(*QGuiApplication::clipboard()->mimeData()), Config().Cob_AddinFileType);
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

/// A folder is linked; its files are not.
void Page_Attachments::Add_Files(const QStringList &paths, const QString &mode)
{
    if (paths.isEmpty() || mode == Addin_Mode::Nothing)
        return;
    QList<Failed_Item> failed;
    Saved_Attachment saved;
    Long_Work::Run(this, m_lang.GetString("_Adding"), [&](Work &work) {
        for (const QString &path : paths) {
            saved =
                QFileInfo(path).isDir() ? Add_Folder_Link(m_id, path) : S_SaveFile(m_id, path, QString(), mode, work);
            if (saved.stopped)
                return;
            if (saved.id == 0)
                failed << Failed_Item{QFileInfo(path).fileName(), Error_Text(saved.trouble)};
        }
    });
    Changed(QString::number(saved.id));
    Report_Failures(failed);
}

void Page_Attachments::Keep(const Saved_Attachment &saved, const QString &name)
{
    if (saved.id == 0)
        return Report(name + QLatin1Char('\n') + Error_Text(saved.trouble));
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
    if (files.size() != 1)
        return;
    QString remark = files.first().remark;
    for (bool stored = false; !stored;) { // what was typed comes back for another try
        remark =
            Prompts::Input(Pack_Text("Frm_Main", "_IsModifyContent"), Pack_Text("Frm_Main", "_IsModifyTitle"), remark);
        if (remark.isNull())
            return;
        stored = Trap(
            Source,
            [&] {
                Set_Attachment_Remark(files.first().id, remark);
                return true;
            },
            [] { Report(Error_Text(Err())); });
    }
    Changed(QString::number(files.first().id));
}

void Page_Attachments::Delete()
{
    QList<qint64> ids;
    for (const Attachment &file : Selected())
        ids << file.id;
    if (ids.isEmpty() || Prompts::Ask(Pack_Text("Frm_Main", "_DeleteFile"), App().App_Title, Prompts::Choice::Yes_No,
                                      Prompts::Answer::No) != Prompts::Answer::Yes)
        return;
    Delete_Attachments(ids);
    Changed();
}

void Page_Attachments::Move(int step)
{
    const int row = m_ui->Lsv_File->currentIndex().row();
    const int other = row + step;
    if (row < 0 || other < 0 || other >= m_files.size())
        return;
    const qint64 id = m_files[row].id;
    ChangeFileOrder(id, m_files[other].id);
    Refresh(QString::number(id));
}

/// One file under a name that is asked for; several under their own names in a folder, where none is replaced.
void Page_Attachments::Export()
{
    const QList<Attachment> files = Selected();
    const auto linked = [](const Attachment &file) {
        return file.type != Attachment_Type::Internal;
    };
    if (files.isEmpty() || !std::all_of(files.begin(), files.end(), Is_Exportable))
        return Report(Pack_Text("Frm_Main", "_ExpType"));
    if (std::any_of(files.begin(), files.end(), linked) &&
        Prompts::Ask(Pack_Text("Frm_Main", "_ExportFileOut"), App().App_Title, Prompts::Choice::Yes_No) !=
            Prompts::Answer::Yes)
        return;
    QString target;
    if (files.size() == 1) {
        const QString suffix = QFileInfo(files.first().name).suffix();
        const QString kind =
            suffix.isEmpty() ? QString() : QStringLiteral("%1(*.%2)|*.%2|").arg(Pack_Text("Frm_Main", "_File"), suffix);
        target = Prompts::Save_File(Pack_Text("Frm_Main", "_SaveAs"), files.first().name,
                                    kind + Pack_Text("Frm_Main", "_AllFile") + QStringLiteral("(*.*)|*.*"));
    } else
        target = Prompts::Folder(Pack_Text("Frm_Main", "_Seldb"), {});
    if (target.isEmpty())
        return;
    Work_Result result;
    Long_Work::Run(this, Pack_Text("Frm_Main", "_SaveAs"), [&](Work &work) {
        result = files.size() == 1 ? Export_Attachment(files.first(), target, work)
                                   : Export_Attachments(files, target, work);
    });
    Report_Failures(result.failed);
    if (!result.stopped && result.failed.isEmpty())
        Prompts::Message(Pack_Text("Frm_Main", "_ExportFile"), App().App_Title);
}
