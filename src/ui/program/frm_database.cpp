// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_database.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "platform/prompts/prompts.h"
#include "storage/database_choice.h"
#include "storage/database_lifecycle.h"
#include "ui/program/frm_server.h"
#include "ui_frm_database.h"

#include <QDesktopServices>
#include <QEvent>
#include <QFileInfo>
#include <QUrl>

Frm_Database::Frm_Database(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Database>())
{
    m_ui->setupUi(this);
    m_ui->Txt_NowDataBase->setMinimumWidth(fontMetrics().averageCharWidth() * 72);
    m_ui->Txt_ODBC->setFixedHeight(fontMetrics().lineSpacing() * 7);
    Load_Lang();
    Show_Choice(Present_Database_Choice());
    connect(m_ui->Opt_DB_Type_0, &QRadioButton::toggled, this, &Frm_Database::Show_Kind);
    connect(m_ui->Chk_Path, &QCheckBox::clicked, this, &Frm_Database::Chk_Path_Click);
    connect(m_ui->Cmd_BrowseDateBase, &QPushButton::clicked, this, &Frm_Database::Cmd_BrowseDateBase_Click);
    connect(m_ui->Cmd_Server, &QPushButton::clicked, this, &Frm_Database::Cmd_Server_Click);
    connect(m_ui->Cmd_ODBC, &QPushButton::clicked, this, &Frm_Database::Cmd_ODBC_Click);
    connect(m_ui->Cmd_Default, &QPushButton::clicked, this, &Frm_Database::Cmd_Default_Click);
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_Database::Cmd_Apply_Click);
    connect(m_ui->Cmd_Cancel, &QPushButton::clicked, this, &Frm_Database::reject);
}

Frm_Database::~Frm_Database() = default;

void Frm_Database::Load_Lang()
{
    Lang.LoadControlsCaption();
}

void Frm_Database::Show_Choice(const Database_Choice &choice)
{
    (choice.data_source ? m_ui->Opt_DB_Type_1 : m_ui->Opt_DB_Type_0)->setChecked(true);
    (choice.server_dialect ? m_ui->Opt_DB_SQL_1 : m_ui->Opt_DB_SQL_0)->setChecked(true);
    m_ui->Chk_Path->setChecked(choice.relative);
    m_ui->Txt_NowDataBase->setText(choice.path);
    Show_Source_File();
    Show_Kind();
}

Database_Choice Frm_Database::Typed_Choice() const
{
    return {m_ui->Opt_DB_Type_1->isChecked(), m_ui->Opt_DB_SQL_1->isChecked(), m_ui->Txt_NowDataBase->text().trimmed(),
            m_ui->Chk_Path->isChecked()};
}

void Frm_Database::Show_Kind()
{
    const bool isFile = m_ui->Opt_DB_Type_0->isChecked();
    m_ui->Frame_DB_2->setEnabled(isFile);
    m_ui->Frame_DB_3->setEnabled(!isFile);
}

void Frm_Database::Show_Source_File()
{
    m_ui->Txt_ODBC->setPlainText(Source_File_Text());
}

/// The data source file is edited in another program: its text is read again when the user comes back.
bool Frm_Database::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        Show_Source_File();
    return QDialog::event(event);
}

void Frm_Database::Chk_Path_Click()
{
    m_ui->Txt_NowDataBase->setText(Spelled_Path(m_ui->Txt_NowDataBase->text().trimmed(), m_ui->Chk_Path->isChecked()));
}

void Frm_Database::Cmd_BrowseDateBase_Click()
{
    const QString directory = QFileInfo(Spelled_Path(m_ui->Txt_NowDataBase->text(), false)).path();
    const QString picked = Prompts::Open_File(Lang.GetString("_SelDb"), directory, Lang.GetString("_DbFilter"));
    if (!picked.isEmpty())
        m_ui->Txt_NowDataBase->setText(Spelled_Path(picked, m_ui->Chk_Path->isChecked()));
}

/// The link that the dialog writes is spoken to in the words of a server.
void Frm_Database::Cmd_Server_Click()
{
    Frm_Server dialog(this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_ui->Opt_DB_SQL_1->setChecked(true);
    Show_Source_File();
}

void Frm_Database::Cmd_ODBC_Click()
{
    const QString path = Source_File_Path();
    if (!Exists(path))
        Prompts::Message(Lang.GetString("_NoUdl"), App().App_Title, Prompts::Icon::Exclamation);
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        Prompts::Message(Lang.GetString("_NoEditor") + QLatin1Char('\n') + path, App().App_Title,
                         Prompts::Icon::Exclamation);
}

void Frm_Database::Cmd_Default_Click()
{
    m_ui->Txt_NowDataBase->setText(Default_Database_Choice(m_ui->Chk_Path->isChecked()));
}

void Frm_Database::Cmd_Apply_Click()
{
    const Database_Choice choice = Typed_Choice();
    const bool usable = Is_Usable(choice);
    if (usable && May_Change && !May_Change())
        return;
    if (!usable || !Apply_Database_Choice(choice)) {
        Prompts::Message(Lang.GetString("_ErrDb") + QLatin1Char('\n') + Error_Text(App().Conn_Trouble), App().App_Title,
                         choice.data_source ? Prompts::Icon::Exclamation : Prompts::Icon::Information);
        return;
    }
    m_changed = true;
    emit Database_Changed();
    Prompts::Message(Lang.GetString("_SaveOK"), App().App_Title, Prompts::Icon::Information);
    if (parentWidget() == nullptr)
        accept();
}

void Frm_Database::done(int result)
{
    QDialog::done(m_changed ? QDialog::Accepted : result);
}
