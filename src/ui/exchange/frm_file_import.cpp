// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/exchange/frm_file_import.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "editor/links.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"
#include "ui/kit/node_delegate.h"
#include "ui/kit/work_window.h"
#include "ui_frm_file_import.h"

#include <QKeyEvent>
#include <QLocale>
#include <QUrl>

namespace
{
enum Step { Start, Kinds, Files_Step, Options, Finish };

/// Work that a label of the form tells of too.
class Named_Work : public Work
{
public:
    Named_Work(Work &work, QLabel &label) : m_work(work), m_label(label) {}
    bool Next(qint64 done, qint64 all, const QString &name) override
    {
        QMetaObject::invokeMethod(
            &m_label, [label = &m_label, name] { label->setText(name); }, Qt::QueuedConnection);
        return m_work.Next(done, all, name);
    }

private:
    Work &m_work;
    QLabel &m_label;
};

std::vector<List_Column> Columns(const ctrlLanguage &lang)
{
    std::vector<List_Column> columns;
    for (const char *key : {"_Col_Name", "_Col_Path", "_Col_Size", "_Col_Type"})
        columns.push_back({QLatin1String(key), lang.GetString(key)});
    return columns;
}
} // namespace

Frm_FileImport::Frm_FileImport(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Frm_FileImport>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->Trv_Code_Class->setModel(&m_tree);
    m_ui->Trv_Code_Class->setItemDelegate(new Node_Delegate(this));
    m_ui->Trv_Code_Class->setAccessibleName(windowTitle());
    GetClassInfo_Ex(m_tree, App().Conn_Str, QStringLiteral("Zelqor"));
    m_ui->Trv_Code_Class->expandToDepth(0);
    m_files.Set_Columns(Columns(Lang));
    m_ui->Lsv_Files->setModel(&m_ticks);
    m_ui->Lsv_Files->setAccessibleName(m_ui->Lab_Count->text());
    const int character = fontMetrics().averageCharWidth();
    constexpr int widths[] = {32, 44, 14, 10};
    for (int i = 0; i < m_ticks.columnCount({}); ++i)
        m_ui->Lsv_Files->setColumnWidth(i, widths[i] * character);
    m_ui->Cbo_ImportFileType->setCurrentIndex(Config().Cob_ImportFileType.toInt());
    connect(m_ui->Trv_Code_Class->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &Frm_FileImport::Choose_Target);
    connect(m_ui->Cmd_SearchPath, &QPushButton::clicked, this, &Frm_FileImport::Choose_Directory);
    // Behind the key itself, which would press the button that the search enables.
    connect(m_ui->Txt_Path, &QLineEdit::returnPressed, this, &Frm_FileImport::Search, Qt::QueuedConnection);
    connect(m_ui->Chk_Input, &QCheckBox::clicked, &m_ticks, &Tick_Model::Tick_All);
    connect(m_ui->Cmd_Prev, &QPushButton::clicked, this, [this] { Modify_Step(m_step - 1); });
    connect(m_ui->Cmd_Next, &QPushButton::clicked, this, [this] { Modify_Step(m_step + 1); });
    connect(m_ui->Cmd_Import, &QPushButton::clicked, this, &Frm_FileImport::Cmd_Import_Click);
    connect(m_ui->Cmd_Cancel, &QPushButton::clicked, this, &Frm_FileImport::reject);
    Modify_Step(Start);
}

Frm_FileImport::~Frm_FileImport() = default;

/// Shows a step and what can be done from it. The list of files is made anew each time.
void Frm_FileImport::Modify_Step(int step)
{
    m_step = step;
    m_ui->Pic_Steps->setCurrentIndex(step);
    constexpr const char *captions[] = {"_Step0", "_Step1", "_Step2", "_Step3", "_Step4"};
    m_ui->Lab_Step->setText(Lang.GetString(captions[step]));
    m_ui->Cmd_Prev->setEnabled(step != Start);
    m_ui->Cmd_Next->setEnabled(step == Kinds || step == Options || (step == Start && !m_plan.folder.isEmpty()));
    m_ui->Cmd_Next->setDefault(step != Files_Step); // there, Enter looks for the files
    for (QLabel *label : {m_ui->Lab_Being, m_ui->Lab_Being_File})
        label->hide();
    if (step == Files_Step) {
        m_plan.found = {};
        m_files.Clear();
        m_ui->Lab_Count->clear();
        m_ui->Lab_Trouble->clear();
        m_ui->Txt_Path->setFocus();
    } else if (step == Finish) {
        m_plan.paths = Ticked_Paths();
        m_plan.directory = m_ui->Txt_Path->text();
        m_plan.title = m_ui->Opt_TitleName_0->isChecked() ? Title_Rule::Whole_Name : Title_Rule::Without_Last_Letters;
        Offer_To_Leave_Out_Known();
        m_ui->Cmd_Import->setFocus();
    }
}

void Frm_FileImport::Choose_Target()
{
    const int node = m_tree.Node_Of(m_ui->Trv_Code_Class->currentIndex());
    const bool isFolder = node >= 0 && Is_Folder_Key(m_tree.Node(node).key);
    m_plan.folder = node < 0 ? QString() : GetKeyPart(m_tree.Node(node).key, Key_Part::After_Underscore);
    m_ui->Lab_TO_NodeName->setText(node < 0 ? QString() : Caption_Name(m_tree.Node(node).caption));
    m_ui->Cmd_Next->setEnabled(isFolder);
}

void Frm_FileImport::Choose_Directory()
{
    const QString path = Prompts::Folder(Lang.GetString("_SelDir"), Files::Native_Path(m_ui->Txt_Path->text()));
    if (path.isEmpty())
        return;
    m_ui->Txt_Path->setText(path);
    Search();
}

void Frm_FileImport::Search()
{
    const QString path = m_ui->Txt_Path->text();
    if (path.isEmpty())
        return;
    m_ui->Txt_Path->setText(Files::With_Final_Separator(path));
    const bool subFolders = m_ui->Chk_SubDir->isChecked();
    Long_Work::Run(this, Lang.GetString("_Searching"), [&](Work &work) {
        m_plan.found =
            Files::Walk_Directory(path, QStringLiteral("*.*"), subFolders,
                                  [&](const QString &folder, qint64 found) { return work.Next(found, 0, folder); });
    });
    Show_Found();
}

void Frm_FileImport::Show_Found()
{
    std::vector<List_Row> rows;
    rows.reserve(m_plan.found.files.size());
    for (const Files::Found_File &file : m_plan.found.files) {
        const Import_Row row = Row_Of(file);
        List_Row line;
        line.tag = file.path;
        line.texts = {row.name, row.folder, row.size, row.type};
        rows.push_back(std::move(line));
    }
    m_files.Replace(std::move(rows));
    m_ticks.Tick_All(m_ui->Chk_Input->isChecked());
    m_ui->Lab_Count->setText(Found_Text(m_plan.found));
    QStringList troubles;
    if (m_plan.found.overflown)
        troubles << Overflow_Text();
    if (!m_plan.found.passed.empty())
        troubles << Lang.GetString("_Passed").arg(m_plan.found.passed.size());
    m_ui->Lab_Trouble->setText(troubles.join(QLatin1Char('\n')));
    m_ui->Cmd_Next->setEnabled(!m_plan.found.files.empty());
    (m_plan.found.files.empty() ? static_cast<QWidget *>(m_ui->Txt_Path) : m_ui->Cmd_Next)->setFocus();
}

QStringList Frm_FileImport::Ticked_Paths() const
{
    QStringList paths;
    for (const Files::Found_File &file : m_plan.found.files) {
        if (m_ticks.Ticked().contains(file.path))
            paths << Row_Of(file).Path();
    }
    return paths;
}

void Frm_FileImport::Offer_To_Leave_Out_Known()
{
    const qsizetype known = Known_Paths(m_plan).size();
    m_ui->Chk_Known->setVisible(known > 0);
    m_ui->Chk_Known->setText(Lang.GetString("_Known").arg(QLocale().toString(known)));
}

void Frm_FileImport::Cmd_Import_Click()
{
    if (m_plan.folder.isEmpty())
        return;
    Directory_Import plan = m_plan;
    if (!m_ui->Chk_Known->isHidden() && m_ui->Chk_Known->isChecked()) {
        const QStringList known = Known_Paths(plan);
        const QSet<QString> left(known.begin(), known.end());
        plan.paths.removeIf([&](const QString &path) { return left.contains(path); });
    }
    for (QLabel *label : {m_ui->Lab_Being, m_ui->Lab_Being_File})
        label->show();
    Import_Result result;
    const bool begun = Trap(
        QStringLiteral("Frm_FileImport\\Cmd_Import"),
        [&] {
            Long_Work::Run(
                this, windowTitle(),
                [&](Work &work) {
                    Named_Work named(work, *m_ui->Lab_Being_File);
                    result = Import_Directory(plan, named, {});
                },
                Lang.GetString("_End"));
            return true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
    emit Imported();
    if (begun)
        Ask_For_Report(result);
    accept();
}

void Frm_FileImport::Ask_For_Report(const Import_Result &result)
{
    const QString question = Lang.GetString("_ReadReport") + QStringLiteral("\r\n") + result.report;
    if (Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No) == Prompts::Answer::Yes)
        Links::Start(QUrl::fromLocalFile(Files::Native_Path(result.report)));
}
