// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/exchange/frm_data_export_node_files.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/links.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"
#include "ui/kit/node_delegate.h"
#include "ui/kit/work_window.h"
#include "ui_frm_data_export_node_files.h"

#include <QFileSystemModel>
#include <QHeaderView>
#include <QStorageInfo>
#include <QUrl>

Frm_DataExport_Node_Files::Frm_DataExport_Node_Files(QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_DataExport_Node_Files>()),
      m_directories(new QFileSystemModel(this))
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->Trv_Export->setModel(&m_tree);
    m_ui->Trv_Export->setItemDelegate(new Node_Delegate(this));
    GetClassInfo_Ex(m_tree, App().Conn_Str, QStringLiteral("Zelqor"));
    m_ui->Trv_Export->expandToDepth(0);
    m_directories->setFilter(QDir::Dirs | QDir::NoDotAndDotDot);
    m_ui->Dir1->setModel(m_directories);
    m_ui->Dir1->setAccessibleName(m_ui->lblDrive->text());
    m_ui->Txt_Desc->setPlainText(Lang.GetString("_Desc"));
    m_ui->Txt_Desc->setAccessibleName(windowTitle());
    for (int column = 1; column < m_directories->columnCount(); ++column)
        m_ui->Dir1->hideColumn(column);
    Fill_Drives();
    connect(m_ui->Trv_Export->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &now) {
                m_node = GetKeyPart(now.data(Tree_Model::Key_Role).toString(), Key_Part::After_Underscore);
                m_ui->Lab_Node->setText(Caption_Name(now.data(Qt::DisplayRole).toString()));
            });
    connect(m_ui->Dir1->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &now) {
        m_path = m_directories->filePath(now);
        m_ui->Lab_Path->setText(m_path);
    });
    connect(m_ui->Drive1, &QComboBox::activated, this,
            [this] { Show_Directory(m_ui->Drive1->currentData().toString()); });
    connect(m_ui->Cmd_Export, &QPushButton::clicked, this, &Frm_DataExport_Node_Files::Cmd_Export_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_DataExport_Node_Files::reject);
}

Frm_DataExport_Node_Files::~Frm_DataExport_Node_Files() = default;

/// The user's own folder first, then what is mounted for people.
void Frm_DataExport_Node_Files::Fill_Drives()
{
    m_ui->Drive1->addItem(QDir::homePath(), QDir::homePath());
    for (const QStorageInfo &drive : QStorageInfo::mountedVolumes()) {
        const QString path = drive.rootPath();
        if (drive.isReady() && !drive.isReadOnly() &&
            (drive.isRoot() || path.startsWith(QLatin1String("/media")) || path.startsWith(QLatin1String("/mnt"))))
            m_ui->Drive1->addItem(path, path);
    }
    Show_Directory(QDir::homePath());
}

void Frm_DataExport_Node_Files::Show_Directory(const QString &path)
{
    m_ui->Dir1->setRootIndex(m_directories->setRootPath(path));
}

Export_Questions Frm_DataExport_Node_Files::Questions()
{
    Export_Questions ask;
    ask.password = [this](const QString &folder) {
        QString typed;
        Long_Work::Ask([&] { typed = Prompts::Input(Lang.GetString("_Locked").arg(folder), windowTitle(), {}, true); });
        return typed;
    };
    ask.replace = [this](const QString &title) {
        constexpr Replacing answers[] = {Replacing::Yes, Replacing::No, Replacing::All, Replacing::None};
        int chosen = -1;
        Long_Work::Ask([&] {
            chosen = Prompts::Choose(title + Lang.GetString("_IsReplace"), App().App_Title,
                                     {Lang.GetString("_Yes", "Buttons"), Lang.GetString("_No", "Buttons"),
                                      Lang.GetString("_Yes_To_All"), Lang.GetString("_No_To_All")});
        });
        return chosen < 0 ? Replacing::Stop : answers[chosen];
    };
    return ask;
}

void Frm_DataExport_Node_Files::Cmd_Export_Click()
{
    if (m_node.isEmpty() || m_path.isEmpty())
        return Prompts::Message(Lang.GetString(m_node.isEmpty() ? "_SelNode" : "_SelDir"), App().App_Title,
                                Prompts::Icon::Exclamation);
    Export_Result result;
    const bool done = Trap(
        QStringLiteral("Frm_DataExport_Node_Files\\Cmd_Export"),
        [&] {
            const Export_Questions ask = Questions();
            Long_Work::Run(this, windowTitle(),
                           [&](Work &work) { result = Export_Directory(m_node, m_path, ask, work); });
            return true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
    if (done)
        Tell(result);
}

void Frm_DataExport_Node_Files::Tell(const Export_Result &result)
{
    if (result.wrong_password)
        Prompts::Message(Lang.GetString("_ErrPwd"), App().App_Title, Prompts::Icon::Exclamation);
    if (result.disk_full)
        Prompts::Message(Pack_Text("Error_Texts", "_Disk_Full"), App().App_Title, Prompts::Icon::Exclamation);
    const QString sum = Lang.GetString(result.stopped ? "_ExpEnded" : "_ExpDone") + QLatin1Char('\n') + result.sum;
    m_ui->Lab_Processing->setText(result.sum);
    Prompts::Message(sum, App().App_Title);
    if (Prompts::Ask(Lang.GetString("_ReadReport") + QStringLiteral("\r\n") + result.report, App().App_Title,
                     Prompts::Choice::Yes_No) == Prompts::Answer::Yes)
        Links::Start(QUrl::fromLocalFile(Files::Native_Path(result.report)));
}
