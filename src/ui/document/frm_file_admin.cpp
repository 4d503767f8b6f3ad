// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/frm_file_admin.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "documents/attachment_place.h"
#include "platform/prompts/prompts.h"
#include "ui/document/attachment_actions.h"
#include "ui/document/attachment_news.h"
#include "ui/document/opened_attachments.h"
#include "ui/kit/numbers.h"
#include "ui/kit/shell.h"
#include "ui/kit/work_window.h"
#include "ui_frm_file_admin.h"

#include <QAction>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QSet>
#include <algorithm>

namespace
{
const QString Source = QStringLiteral("Frm_File_Admin");
using Attachment_Actions::Report;

struct Shown {
    Attachment_Trait trait;
    const char *caption;
};
constexpr Shown All_Shown[] = {
    {Attachment_Trait::Any, "_Show_All"},
    {Attachment_Trait::Dangling, "_Show_Dangling"},
    {Attachment_Trait::Without_Document, "_Show_Alone"},
    {Attachment_Trait::Twice, "_Show_Twice"},
};

bool Is_Place(const Attachment &file)
{
    return file.type == Attachment_Type::External &&
           Attachment_Place::Expanded(file.path).kind != Attachment_Place::Kind::Page;
}
} // namespace

Frm_File_Admin::Frm_File_Admin(Shell *shell, QWidget *parent)
    : QDialog(parent), m_shell(shell), m_ui(std::make_unique<Ui::Frm_File_Admin>()),
      m_list({Attachment_Model::Column::Name, Attachment_Model::Column::Document, Attachment_Model::Column::Size,
              Attachment_Model::Column::Date, Attachment_Model::Column::Kind, Attachment_Model::Column::Place,
              Attachment_Model::Column::Remark}),
      m_opened(Opened_Attachments::Of(parent != nullptr ? *parent : *this))
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    m_opened.Allow_With(*this);
    Set_Up_List();
    Set_Up_Buttons();
    for (const Shown &shown : All_Shown)
        m_ui->Cob_Show->addItem(m_lang.GetString(shown.caption));
    m_ui->Cob_Show->setPlaceholderText(m_lang.GetString("_Show_Found"));
    connect(m_ui->Cob_Show, &QComboBox::activated, this, &Frm_File_Admin::Show_Chosen);
    connect(m_ui->Cmd_Find, &QPushButton::clicked, this, &Frm_File_Admin::Find);
    connect(&m_opened, &Opened_Attachments::Told, m_ui->Lab_Sum, &QLabel::setText);
    connect(&Attachment_News::The(), &Attachment_News::Changed, this, [this] {
        if (!m_telling)
            Load();
    });
    Load();
    m_ui->Lsv_File->sortByColumn(0, Qt::AscendingOrder);
    m_ui->Txt_key->setFocus();
}

Frm_File_Admin::~Frm_File_Admin() = default;

void Frm_File_Admin::done(int result)
{
    m_opened.Look_After();
    QDialog::done(result);
}

void Frm_File_Admin::Set_Up_List()
{
    m_list.Load_Lang();
    m_ui->Lsv_File->setModel(&m_list);
    m_ui->Lsv_File->setAccessibleName(windowTitle());
    constexpr int widths[] = {23, 16, 12, 25, 12, 12};
    for (int i = 0; i < static_cast<int>(std::size(widths)); ++i)
        m_ui->Lsv_File->setColumnWidth(i, widths[i] * fontMetrics().averageCharWidth());
    connect(m_ui->Lsv_File, &QTreeView::doubleClicked, this, &Frm_File_Admin::Open);
    connect(m_ui->Lsv_File->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &Frm_File_Admin::Show_State);
}

void Frm_File_Admin::Set_Up_Buttons()
{
    struct Row {
        QPushButton *button;
        void (Frm_File_Admin::*run)();
    };
    for (const Row &row : {Row{m_ui->Cmd_Open, &Frm_File_Admin::Open},
                           {m_ui->Cmd_Goto, &Frm_File_Admin::Go_To},
                           {m_ui->Cmd_Export, &Frm_File_Admin::Export},
                           {m_ui->Cmd_Remark, &Frm_File_Admin::Edit_Remark},
                           {m_ui->Cmd_Del, &Frm_File_Admin::Delete},
                           {m_ui->Cmd_Place, &Frm_File_Admin::Find_Place},
                           {m_ui->Cmd_Give, &Frm_File_Admin::Give},
                           {m_ui->Cmd_Repeated, &Frm_File_Admin::Select_Repeated},
                           {m_ui->Cmd_Compact, &Frm_File_Admin::Compact}})
        connect(row.button, &QPushButton::clicked, this, [this, run = row.run] {
            Trap(
                Source, [&] { (this->*run)(); }, [] { Report(Error_Text(Err())); });
        });
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_File_Admin::reject);
    auto *remove = new QAction(m_ui->Lsv_File);
    remove->setShortcut(QKeySequence::Delete);
    remove->setShortcutContext(Qt::WidgetShortcut);
    connect(remove, &QAction::triggered, m_ui->Cmd_Del, &QPushButton::click);
    m_ui->Lsv_File->addAction(remove);
}

/// Reads all rows anew; what is shown stays shown as far as it is still there.
void Frm_File_Admin::Load()
{
    Trap(
        Source,
        [this] {
            Long_Work::Run_To_End(this, windowTitle(), [this] { m_all = All_Attachments(); });
            return true;
        },
        [] { Report(Error_Text(Err())); });
    QHash<qint64, Attachment> now;
    for (const Attachment &file : m_all)
        now[file.id] = file;
    QList<Attachment> still;
    for (const Attachment &file : m_found.files) {
        if (const auto found = now.constFind(file.id); found != now.constEnd())
            still << *found;
    }
    m_found.files = m_ui->Cob_Show->currentIndex() <= 0 && m_searched.isEmpty() ? m_all : still;
    m_list.Show(m_found.files);
    m_list.sort(m_ui->Lsv_File->header()->sortIndicatorSection(), m_ui->Lsv_File->header()->sortIndicatorOrder());
    Show_Sum();
    Show_State();
}

/// What is there twice stays in its groups; all else is in the order that was chosen last.
void Frm_File_Admin::Show_Found(Found_Attachments found)
{
    const bool grouped = !found.repeated.isEmpty();
    m_found = std::move(found);
    m_list.Show(m_found.files);
    if (grouped)
        m_ui->Lsv_File->header()->setSortIndicator(-1, Qt::AscendingOrder);
    else
        m_list.sort(m_ui->Lsv_File->header()->sortIndicatorSection(), m_ui->Lsv_File->header()->sortIndicatorOrder());
    Show_Sum();
    Show_State();
    Attachment_Actions::Report_Failures(m_found.failed);
}

void Frm_File_Admin::Show_Chosen()
{
    const Attachment_Trait trait = All_Shown[std::max(0, m_ui->Cob_Show->currentIndex())].trait;
    m_searched.clear();
    Found_Attachments found;
    Long_Work::Run(this, m_ui->Cob_Show->currentText(),
                   [&](Work &work) { found = Attachments_With(trait, m_all, work); });
    Show_Found(std::move(found));
}

void Frm_File_Admin::Find()
{
    const Attachment_Search search{m_ui->Txt_key->text().trimmed(), m_ui->Chk_Key_0->isChecked(),
                                   m_ui->Chk_Key_1->isChecked(), m_ui->Chk_Key_2->isChecked()};
    if (search.text.isEmpty() || !(search.name || search.remark || search.content)) {
        Report(m_lang.GetString("_SeachText"));
        return m_ui->Txt_key->setFocus();
    }
    Found_Attachments found;
    Long_Work::Run(this, m_ui->Cmd_Find->text().remove(QLatin1Char('&')),
                   [&](Work &work) { found = Search_Attachments(search, m_all, work); });
    m_searched = m_lang.GetString(found.stopped ? "_Stopped" : "_ProcessDone") + Grouped(found.files.size()) +
                 QStringLiteral("    ");
    m_ui->Cob_Show->setCurrentIndex(-1);
    Show_Found(std::move(found));
}

void Frm_File_Admin::Show_Sum()
{
    const auto say = [this](const char *key, const QList<Attachment> &files) {
        const Attachment_Sum sum = Sum_Of(files);
        return Filled(m_lang.GetString(key),
                      {Grouped(sum.inside + sum.outside), Grouped(sum.inside),
                       locale().formattedDataSize(sum.bytes, 2, QLocale::DataSizeTraditionalFormat),
                       Grouped(sum.outside)});
    };
    const QList<Attachment> selected = Selected();
    QString text = m_searched + say("_Sum", m_list.Files());
    if (selected.size() > 1)
        text += QStringLiteral("    ") + say("_Sum_Selected", selected);
    m_ui->Lab_Sum->setText(text);
}

void Frm_File_Admin::Show_State()
{
    const QList<Attachment> selected = Selected();
    const bool any = !selected.isEmpty();
    const bool one = selected.size() == 1;
    for (QPushButton *button : {m_ui->Cmd_Open, m_ui->Cmd_Remark})
        button->setEnabled(one);
    for (QPushButton *button : {m_ui->Cmd_Export, m_ui->Cmd_Del})
        button->setEnabled(any);
    m_ui->Cmd_Goto->setEnabled(one && selected.first().has_document && m_shell != nullptr);
    m_ui->Cmd_Place->setEnabled(one && Is_Place(selected.first()));
    m_ui->Cmd_Give->setEnabled(any && !Target_Document().isEmpty());
    m_ui->Cmd_Repeated->setEnabled(!m_found.repeated.isEmpty());
    m_ui->Cmd_Compact->setEnabled(parentWidget() != nullptr);
    Show_Sum();
}

QList<Attachment> Frm_File_Admin::Selected() const
{
    return Selected_Attachments(*m_ui->Lsv_File, m_list);
}

/// The one whose tab is on screen behind this form.
QString Frm_File_Admin::Target_Document() const
{
    return m_shell == nullptr ? QString() : m_shell->Document_On_Screen();
}

void Frm_File_Admin::Open()
{
    const QList<Attachment> files = Selected();
    if (files.size() == 1)
        m_opened.Open(files.first());
}

void Frm_File_Admin::Go_To()
{
    const QList<Attachment> files = Selected();
    if (files.size() != 1 || m_shell == nullptr)
        return;
    accept();
    m_shell->Open_Document(files.first().document);
}

void Frm_File_Admin::Export()
{
    Attachment_Actions::Export(*this, Selected());
}

void Frm_File_Admin::Edit_Remark()
{
    const QList<Attachment> files = Selected();
    if (files.size() == 1 && Attachment_Actions::Edit_Remark(files.first()))
        Read_Again(files.first());
}

void Frm_File_Admin::Delete()
{
    const QList<Attachment> files = Selected();
    if (!Attachment_Actions::Delete_After_Question(*this, files))
        return;
    Tell(files);
    Prompts::Message(m_lang.GetString("_DelOk"), App().App_Title);
}

/// A link that leads nowhere, or elsewhere, leads to what the user chooses.
void Frm_File_Admin::Find_Place()
{
    const QList<Attachment> files = Selected();
    if (files.size() != 1 || !Is_Place(files.first()))
        return;
    const Attachment_Place::Place place = Attachment_Place::Expanded(files.first().path);
    const QString before = QFileInfo(place.target).path();
    const QString directory = QFileInfo::exists(before) ? before : QString();
    const QString path = place.kind == Attachment_Place::Kind::Folder
                             ? Prompts::Folder(Pack_Text("Frm_Main", "_Seldb"), directory)
                             : Prompts::Open_File(m_lang.GetString("_New_Place"), directory);
    if (path.isEmpty())
        return;
    Set_Attachment_Place(files.first(), path);
    Read_Again(files.first());
}

void Frm_File_Admin::Give()
{
    const QList<Attachment> files = Selected();
    const QString document = Target_Document();
    if (files.isEmpty() || document.isEmpty())
        return;
    QList<qint64> ids;
    for (const Attachment &file : files)
        ids << file.id;
    Give_Attachments(ids, document);
    QList<Attachment> told = files;
    told.append(Read_Attachment(ids.first()));
    Tell(told);
}

void Frm_File_Admin::Select_Repeated()
{
    const QSet<qint64> repeated(m_found.repeated.begin(), m_found.repeated.end());
    QItemSelection rows;
    for (int i = 0; i < m_list.rowCount(); ++i) {
        if (repeated.contains(m_list.Files()[i].id))
            rows.select(m_list.index(i, 0), m_list.index(i, m_list.columnCount() - 1));
    }
    m_ui->Lsv_File->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    m_ui->Lsv_File->setFocus();
}

/// The main window's command, which says what was given back.
void Frm_File_Admin::Compact()
{
    if (auto *compact = parentWidget()->findChild<QAction *>(QStringLiteral("mnuComp")))
        compact->trigger();
}

void Frm_File_Admin::Read_Again(const Attachment &file)
{
    Attachment now = Read_Attachment(file.id);
    now.title = file.title;
    now.has_document = file.has_document;
    for (QList<Attachment> *list : {&m_all, &m_found.files}) {
        for (Attachment &one : *list)
            one = one.id == now.id ? now : one;
    }
    m_list.Set_File(now);
    m_telling = true;
    emit Attachment_News::The().Changed(file.document);
    m_telling = false;
    emit Changed();
}

/// Rows went or changed hands: pages of their documents and this list are read anew.
void Frm_File_Admin::Tell(const QList<Attachment> &files)
{
    QSet<QString> documents;
    for (const Attachment &file : files)
        documents.insert(file.document);
    m_telling = true; // once is enough here
    for (const QString &document : documents)
        emit Attachment_News::The().Changed(document);
    m_telling = false;
    Load();
    emit Changed();
}
