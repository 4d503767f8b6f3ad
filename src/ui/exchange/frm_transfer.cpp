// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/exchange/frm_transfer.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/yield.h"
#include "exchange/import_source.h"
#include "exchange/transfer_by_name.h"
#include "exchange/transfer_comparison.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "storage/database_lifecycle.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"
#include "ui/exchange/frm_transfer_conflicts.h"
#include "ui/kit/forms.h"
#include "ui/kit/node_delegate.h"
#include "ui/kit/work_window.h"
#include "ui_frm_transfer.h"

#include <QFileInfo>

using namespace Mod_DataBaseExport;

namespace
{
constexpr int Known_Column = 4;

Selection_Lists::Columns Columns(bool withKnown)
{
    Selection_Lists::Columns columns{{"_Col_Id", 14}, {"_Col_Title", 40}, {"_Col_Folder", 18}, {"_Col_Keys", 16}};
    if (withKnown)
        columns.push_back({"_Col_Known", 18});
    return columns;
}

void Show_Error(const QString &before = {})
{
    Prompts::Message(before + Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation);
}
} // namespace

Frm_Transfer::Frm_Transfer(Direction direction, const QString &section, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Transfer>()), Lang(*this, section), m_direction(direction)
{
    m_ui->setupUi(this);
    if (direction == Direction::Import) {
        m_ui->Cmd_Export->setText(QStringLiteral("&3 导入"));
        m_ui->Lab_out_num->setText(QStringLiteral("已导入："));
    }
    Lang.LoadControlsCaption();
    constexpr int Tree_Width = 240;
    m_ui->Pic_Sides->setSizes({Tree_Width, 3 * Tree_Width});
    m_ui->Trv_Export->setModel(&m_tree);
    m_ui->Trv_Export->setItemDelegate(new Node_Delegate(this));
    m_ui->Trv_Export->setAccessibleName(windowTitle());
    m_lists = std::make_unique<Selection_Lists>(*this, "Frm_DataExport_Ex",
                                                Selection_Lists::Controls{*m_ui->Lsv_Code_Info, *m_ui->Lsv_Done,
                                                                          *m_ui->Chk_Code_Info, *m_ui->Chk_Done,
                                                                          *m_ui->Cmd_ListViewToLsv},
                                                Columns(false), Columns(true));
    connect(m_lists.get(), &Selection_Lists::Moved, this, &Frm_Transfer::Look_For_Known);
    connect(m_ui->Trv_Export->selectionModel(), &QItemSelectionModel::currentChanged, this, &Frm_Transfer::List_Folder);
    connect(m_ui->Cmd_Browse, &QPushButton::clicked, this, &Frm_Transfer::Cmd_Browse_Click);
    connect(m_ui->Cmd_Export, &QPushButton::clicked, this, &Frm_Transfer::Cmd_Export_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_Transfer::reject);
}

Frm_Transfer::~Frm_Transfer() = default;

void Frm_Transfer::Browse(const QString &connection)
{
    m_browsed = connection;
    m_lists->Found.Clear();
    GetClassInfo_Ex(m_tree, connection, QStringLiteral("Zelqor"));
    m_ui->Trv_Export->expandToDepth(0);
}

QString Frm_Transfer::Own_Text(const char *key) const
{
    return Lang.GetString(key);
}

void Frm_Transfer::Say(const char *key, const QString &before)
{
    Prompts::Message(before + Own_Text(key), App().App_Title);
}

void Frm_Transfer::List_Folder()
{
    m_lists->Forget_Ticks();
    const QString id =
        GetKeyPart(m_ui->Trv_Export->currentIndex().data(Tree_Model::Key_Role).toString(), Key_Part::After_Underscore);
    const auto ask = [] {
        return Prompts::Input(Pack_Text("Frm_Main", "_Screct_Word"), Pack_Text("Frm_Main", "_Screct_Title"), {}, true);
    };
    if (Fill_Candidates(id, m_lists->Found, m_browsed, m_direction, ask) == Candidates::Wrong_Password)
        Prompts::Message(Pack_Text("Frm_DataExport_Ex", "_ErrPwd"), App().App_Title, Prompts::Icon::Exclamation);
    m_ui->Lab_Found->setText(locale().toString(m_lists->Found.Row_Count()));
}

void Frm_Transfer::Look_For_Known()
{
    if (m_direction == Direction::Import || QFileInfo(Files::Native_Path(m_ui->Txt_ExportPath->text())).isFile())
        Show_Known();
}

/// Says in the lower list what the other side has of each document.
void Frm_Transfer::Show_Known()
{
    QStringList ids;
    for (int i = 0; i < m_lists->Chosen.Row_Count(); ++i) {
        if (m_lists->Chosen.Row(i).texts.size() <= Known_Column)
            ids << m_lists->Chosen.Row(i).tag;
    }
    const QString other =
        m_direction == Direction::Import ? App().Conn_Str : File_Conn_Str(m_ui->Txt_ExportPath->text());
    QHash<QString, Known> known;
    const auto compare = [&](Work &work) {
        known = Compare_Documents(other, m_browsed, ids, work);
    };
    Long_Work::Run(this, Pack_Text("Frm_DataExport_Ex", "_Comparing"), compare);
    for (int i = 0; i < m_lists->Chosen.Row_Count(); ++i) {
        List_Row row = m_lists->Chosen.Row(i);
        if (known.contains(row.tag)) {
            row.texts.append(Known_Text(known.value(row.tag)));
            m_lists->Chosen.Set_Row(i, row);
        }
    }
}

QList<Transfer_Row> Frm_Transfer::Chosen() const
{
    QList<Transfer_Row> rows;
    for (const List_Row &row : m_lists->Ticked())
        rows.append({row.tag, row.texts.value(1)});
    return rows;
}

/// Shows what would come under a foreign name. @returns whether the run goes on
bool Frm_Transfer::Agrees(const QString &target, const QString &source, const QStringList &ids)
{
    QList<Conflict> conflicts;
    Long_Work::Run(this, Pack_Text("Frm_DataExport_Ex", "_Comparing"),
                   [&](Work &work) { conflicts = Find_Conflicts(target, source, ids, work); });
    if (conflicts.isEmpty())
        return true;
    QStringList lines;
    for (const Conflict &conflict : std::as_const(conflicts))
        lines << Conflict_Text(conflict);
    return Frm_Transfer_Conflicts(lines, this).exec() == QDialog::Accepted;
}

void Frm_Transfer::Cmd_Export_Click()
{
    const QString other = Other_File();
    if (other.isEmpty())
        return;
    const bool importing = m_direction == Direction::Import;
    const QString target = importing ? App().Conn_Str : other;
    const QString source = importing ? other : App().Conn_Str;
    const QList<Transfer_Row> rows = Chosen();
    QStringList ids;
    for (const Transfer_Row &row : rows)
        ids << row.code_id;
    if (!Agrees(target, source, ids))
        return;
    Transfer_Result result;
    Long_Work::Run(this, windowTitle(), [&](Work &work) { result = Transfer_Documents(target, source, rows, work); });
    m_ui->Lbl_ExportNum->setText(QString::number(result.done));
    Tell(result);
}

Frm_DataExport_Ex::Frm_DataExport_Ex(QWidget *parent)
    : Frm_Transfer(Direction::Export, QStringLiteral("Frm_DataExport_Ex"), parent)
{
    setObjectName(QStringLiteral("Frm_DataExport_Ex"));
    m_ui->Chk_ByName->hide();
    m_ui->Txt_ExportPath->setText(Config().EXPORT_NAME.mid(1, 1) == QLatin1String(":") ||
                                          Files::Is_Absolute(Config().EXPORT_NAME)
                                      ? Config().EXPORT_NAME
                                      : App().App_Path.chopped(1) + Config().EXPORT_NAME);
    Browse(App().Conn_Str);
}

void Frm_DataExport_Ex::Cmd_Browse_Click()
{
    const QString path = Prompts::Save_File(Own_Text("_SelDB"), Files::Native_Path(m_ui->Txt_ExportPath->text()),
                                            Pack_Text("Frm_Database", "_DbFilter"));
    if (!path.isEmpty())
        m_ui->Txt_ExportPath->setText(path);
}

QString Frm_DataExport_Ex::Other_File()
{
    const QString path = m_ui->Txt_ExportPath->text();
    if (path.isEmpty()) {
        Say("_ExportPath");
        m_ui->Txt_ExportPath->setFocus();
        return {};
    }
    if (!Exists(path)) {
        if (!path.contains(QLatin1Char('.'))) {
            Say("_ErrFile", path);
            return {};
        }
        const QString present = App().Conn_Str;
        CreateDataBase(path);
        App().Conn_Str = present;
    }
    if (!Test_Db_Path(path) || Is_Same_File(path, Database_Path())) {
        Say("_ErrDb");
        m_ui->Txt_ExportPath->setFocus();
        return {};
    }
    return File_Conn_Str(path);
}

void Frm_DataExport_Ex::Tell(const Transfer_Result &result)
{
    Prompts::Message(Own_Text("_ExportOk") + QStringLiteral("\n\n") + Report_Of(result), App().App_Title);
}

Frm_DataInport_Ex::Frm_DataInport_Ex(QWidget *parent)
    : Frm_Transfer(Direction::Import, QStringLiteral("Frm_DataInport_Ex"), parent)
{
    setObjectName(QStringLiteral("Frm_DataInport_Ex"));
    m_ui->Txt_ExportPath->setReadOnly(true);
    m_ui->Cmd_Export->setEnabled(false);
}

Frm_DataInport_Ex::~Frm_DataInport_Ex() = default;

void Frm_DataInport_Ex::Cmd_Browse_Click()
{
    const QString path =
        Prompts::Open_File(Own_Text("_SelDB"), QFileInfo(Files::Native_Path(m_ui->Txt_ExportPath->text())).path(),
                           Pack_Text("Frm_Database", "_DbFilter"));
    if (path.isEmpty())
        return;
    const auto upgrade = [this](const QString &connection) {
        Forms::Show_Modal(QStringLiteral("Frm_Update_235"), {.parent = this, .connection = connection});
        return App().Update_235_Done;
    };
    Trap(
        QStringLiteral("Frm_DataInport_Ex\\Cmd_Browse"),
        [&] {
            m_source = std::make_unique<Import_Source>(path, Ladder_Callbacks{upgrade, Yield});
            m_ui->Txt_ExportPath->setText(path);
            m_ui->Cmd_Export->setEnabled(true);
            Browse(m_source->Conn_Str());
            return true;
        },
        [] { Show_Error(); });
}

QString Frm_DataInport_Ex::Other_File()
{
    if (Exists(m_ui->Txt_ExportPath->text()) && !Test_Db_Conn(m_source->Conn_Str())) {
        Say("_ErrDb");
        return {};
    }
    return m_source->Conn_Str();
}

void Frm_DataInport_Ex::Tell(const Transfer_Result &result)
{
    emit Imported();
    Prompts::Message(Own_Text("_ImportOk") + QStringLiteral("\n\n") + Report_Of(result), App().App_Title);
}
