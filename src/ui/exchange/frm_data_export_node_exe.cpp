// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/exchange/frm_data_export_node_exe.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/links.h"
#include "exchange/book_candidates.h"
#include "exchange/epub_export.h"
#include "platform/desktop/program_start.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"
#include "ui/kit/node_delegate.h"
#include "ui/kit/work_window.h"
#include "ui_frm_data_export_node_exe.h"

#include <QFileInfo>
#include <QIntValidator>
#include <QUrl>

namespace
{
constexpr int Most_Uses = 999'999;
constexpr qsizetype Most_Lines = 10; ///< of one kind in a box

const Selection_Lists::Columns Columns{{"_Col_Id", 12},   {"_Col_Title", 34}, {"_Col_Folder", 16},
                                       {"_Col_Keys", 14}, {"_Col_Type", 12},  {"_Col_Content", 30}};
} // namespace

Frm_DataExport_Node_Exe::Frm_DataExport_Node_Exe(QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_DataExport_Node_Exe>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    constexpr int Tree_Width = 230;
    m_ui->Pic_Sides->setSizes({Tree_Width, 3 * Tree_Width});
    m_ui->Txt_Times->setValidator(new QIntValidator(1, Most_Uses, this));
    Fill_Folders();
    m_lists = std::make_unique<Selection_Lists>(*this, "Frm_DataExport_Ex",
                                                Selection_Lists::Controls{*m_ui->Lsv_Code_Info, *m_ui->Lsv_Done,
                                                                          *m_ui->Chk_Code_Info, *m_ui->Chk_Done,
                                                                          *m_ui->Cmd_ListViewToLsv},
                                                Columns, Columns);
    connect(m_ui->Trv_Export->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &Frm_DataExport_Node_Exe::List_Folder);
    connect(m_ui->Opt_Format_1, &QRadioButton::toggled, this, &Frm_DataExport_Node_Exe::Follow_Format);
    connect(m_ui->Cmd_Browse, &QPushButton::clicked, this, &Frm_DataExport_Node_Exe::Cmd_Browse_Click);
    connect(m_ui->Cmd_Export, &QPushButton::clicked, this, &Frm_DataExport_Node_Exe::Cmd_Export_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_DataExport_Node_Exe::reject);
}

Frm_DataExport_Node_Exe::~Frm_DataExport_Node_Exe() = default;

/// The tree, and the combo that leads to its folders.
void Frm_DataExport_Node_Exe::Fill_Folders()
{
    m_ui->Trv_Export->setModel(&m_tree);
    m_ui->Trv_Export->setItemDelegate(new Node_Delegate(this));
    m_ui->Trv_Export->setAccessibleName(windowTitle());
    GetClassInfo_Ex(m_tree, App().Conn_Str, QStringLiteral("Zelqor"));
    m_ui->Trv_Export->expandToDepth(0);
    Folder_Combo combo{m_ui->Comb_Cate_ID->objectName(), {}};
    Reload_Cate(combo);
    m_ui->Comb_Cate_ID->addItems(combo.items);
    m_ui->Comb_Cate_ID->setCurrentIndex(-1);
    m_ui->Comb_Cate_ID->setAccessibleName(m_ui->Comb_Cate_ID->toolTip());
    connect(m_ui->Comb_Cate_ID, &QComboBox::activated, this, [this](int line) {
        const int node = m_tree.Find(QStringLiteral("C_") + Cate_ID_List().value(line));
        if (node >= 0)
            m_ui->Trv_Export->setCurrentIndex(m_tree.Index_Of(node));
    });
}

void Frm_DataExport_Node_Exe::List_Folder()
{
    const QString id =
        GetKeyPart(m_ui->Trv_Export->currentIndex().data(Tree_Model::Key_Role).toString(), Key_Part::After_Underscore);
    m_ui->Comb_Cate_ID->setCurrentIndex(id.isEmpty() ? -1 : static_cast<int>(Cate_ID_List().indexOf(id)));
    const auto ask = [] {
        return Prompts::Input(Pack_Text("Frm_Main", "_Screct_Word"), Pack_Text("Frm_Main", "_Screct_Title"), {}, true);
    };
    QStringList refused;
    auto outcome = Mod_DataBaseExport::Candidates::Listed;
    const bool done = Trap(
        QStringLiteral("Frm_DataExport_Node_Exe\\List_Folder"),
        [&] {
            m_lists->Forget_Ticks();
            outcome = Fill_Book_Candidates(id, m_lists->Found, ask, refused);
            return true;
        },
        [this] { Refuse(Error_Text(Err())); });
    if (done && outcome == Mod_DataBaseExport::Candidates::Wrong_Password)
        return Refuse(Lang.GetString("_ErrPwd"));
    m_ui->Lab_Found->setText(locale().toString(m_lists->Found.Row_Count()));
    for (QString &title : refused)
        title += Lang.GetString("_ContentEn");
    if (!refused.isEmpty())
        Refuse(Listed("", refused) + QStringLiteral("\n\n") + Lang.GetString("_ChkCont"));
}

bool Frm_DataExport_Node_Exe::Is_Epub() const
{
    return m_ui->Opt_Format_1->isChecked();
}

/// An EPUB has no password, no count, and is always rich text. Its name ends in another way.
void Frm_DataExport_Node_Exe::Follow_Format()
{
    for (QWidget *control : {static_cast<QWidget *>(m_ui->Lab_SafeMode), static_cast<QWidget *>(m_ui->Opt_SafeMode_0),
                             static_cast<QWidget *>(m_ui->Opt_SafeMode_1), static_cast<QWidget *>(m_ui->Opt_SafeMode_2),
                             static_cast<QWidget *>(m_ui->Lab_Pass), static_cast<QWidget *>(m_ui->Txt_Pass),
                             static_cast<QWidget *>(m_ui->Lab_Case), static_cast<QWidget *>(m_ui->Lab_Times),
                             static_cast<QWidget *>(m_ui->Txt_Times), static_cast<QWidget *>(m_ui->Lab_Destroy)})
        control->setEnabled(!Is_Epub());
    const QLatin1String endings[] = {QLatin1String(".exe"), QLatin1String(".epub")};
    const QLatin1String former = endings[Is_Epub() ? 0 : 1];
    QString path = m_ui->Txt_ExportPath->text();
    if (path.endsWith(former, Qt::CaseInsensitive))
        m_ui->Txt_ExportPath->setText(path.chopped(former.size()) + endings[Is_Epub() ? 1 : 0]);
}

void Frm_DataExport_Node_Exe::Cmd_Browse_Click()
{
    const QString path =
        Prompts::Save_File(Lang.GetString("_ExportExe"), Files::Native_Path(m_ui->Txt_ExportPath->text()),
                           Lang.GetString(Is_Epub() ? "_EpubFile" : "_ExeFile"));
    if (path.isEmpty())
        return;
    const QLatin1String ending(Is_Epub() ? ".epub" : ".exe");
    m_ui->Txt_ExportPath->setText(path.endsWith(ending, Qt::CaseInsensitive) ? path : path + ending);
}

void Frm_DataExport_Node_Exe::Refuse(const QString &text, QWidget *focus) const
{
    Prompts::Message(text, App().App_Title, Prompts::Icon::Exclamation);
    if (focus != nullptr)
        focus->setFocus();
}

bool Frm_DataExport_Node_Exe::Is_Ready()
{
    if (m_ui->Txt_ExportPath->text().isEmpty())
        return Refuse(Lang.GetString("_SelFile"), m_ui->Txt_ExportPath), false;
    if (m_lists->Ticked().isEmpty())
        return Refuse(Lang.GetString("_SelDoc"), m_ui->Lsv_Done), false;
    if (!Is_Epub() && !m_ui->Txt_Times->hasAcceptableInput())
        return Refuse(Lang.GetString("_Times"), m_ui->Txt_Times), false;
    return true;
}

QList<Book_Row> Frm_DataExport_Node_Exe::Chosen() const
{
    constexpr int Title = 1, Type = 4;
    QList<Book_Row> rows;
    for (const List_Row &row : m_lists->Ticked())
        rows.append({row.tag, row.texts.value(Title), row.texts.value(Type)});
    return rows;
}

Book_Result Frm_DataExport_Node_Exe::Export(const QString &path)
{
    Book_Result result;
    const QList<Book_Row> rows = Chosen();
    const auto mode = m_ui->Opt_SafeMode_0->isChecked()   ? Book_Mode::Text
                      : m_ui->Opt_SafeMode_1->isChecked() ? Book_Mode::Rich
                                                          : Book_Mode::Pages;
    const Book_Order book{path, m_ui->Txt_Pass->text(), m_ui->Txt_Times->text().toInt(), mode, rows};
    const Epub_Order epub{path, QFileInfo(Files::Native_Path(path)).completeBaseName(), rows};
    const bool isEpub = Is_Epub();
    Long_Work::Run(this, windowTitle(),
                   [&](Work &work) { result = isEpub ? Export_Epub(epub, work) : Export_Book(book, work); });
    return result;
}

void Frm_DataExport_Node_Exe::Cmd_Export_Click()
{
    if (!Is_Ready())
        return;
    const QString path = m_ui->Txt_ExportPath->text();
    Book_Result result;
    const bool done = Trap(
        QStringLiteral("frm_dataexport_node_exe\\cmd_export"),
        [&] {
            result = Export(path);
            return true;
        },
        [this] { Refuse(Lang.GetString("_FileError") + Error_Text(Err())); });
    if (done)
        Tell(result, path);
}

/// Up to ten lines below a heading, and how many there are.
QString Frm_DataExport_Node_Exe::Listed(const char *key, const QStringList &lines) const
{
    if (lines.isEmpty())
        return {};
    QStringList shown = lines.mid(0, Most_Lines);
    if (*key != '\0')
        shown.prepend(Lang.GetString(key));
    if (lines.size() > Most_Lines)
        shown << Lang.GetString("_And_More").arg(lines.size());
    return shown.join(u'\n');
}

QString Frm_DataExport_Node_Exe::Report_Of(const Book_Result &result) const
{
    QStringList failed;
    for (const Failed_Item &item : result.failed)
        failed << item.name + QStringLiteral(" - ") + item.reason.trimmed();
    QStringList parts{Lang.GetString("_Sum").arg(result.done), Listed("_Failed", failed),
                      Listed("_Changed_Titles", result.changed_titles), Listed("_Lost_Links", result.lost_links)};
    parts.removeAll({});
    return parts.join(QStringLiteral("\n\n"));
}

void Frm_DataExport_Node_Exe::Tell(const Book_Result &result, const QString &path)
{
    if (result.stopped)
        return Prompts::Message(Lang.GetString("_Stopped"), App().App_Title);
    if (result.done == 0)
        return Refuse(Lang.GetString("_FileError") + Lang.GetString("_Nothing") + QStringLiteral("\n\n") +
                      Report_Of(result));
    const QString question = Lang.GetString("_FileOk") + path + Lang.GetString(Is_Epub() ? "_OpenFile" : "_RunFile");
    if (Prompts::Ask(question + QStringLiteral("\n\n") + Report_Of(result), App().App_Title, Prompts::Choice::Yes_No) ==
        Prompts::Answer::Yes)
        Open_Book(path);
}

void Frm_DataExport_Node_Exe::Open_Book(const QString &path)
{
    const QString native = Files::Short_Path(Files::Native_Path(path));
    if (!(Is_Epub() ? Links::Start(QUrl::fromLocalFile(native)) : Desktop::Start_Program(native)))
        Refuse(Lang.GetString("_Run_Failed") + path);
}
