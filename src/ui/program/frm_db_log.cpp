// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_db_log.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/log_view.h"
#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_db_log.h"

#include <QHeaderView>

namespace
{
struct Log_Column {
    const char *key;
    const char16_t *caption; ///< design-time word
    int width;               ///< in average characters
};

constexpr Log_Column Log_Columns[] = {
    {"Lsv_Log|Index|Item1", u"序号", 8},      {"Lsv_Log|Index|Item2", u"区分", 13},
    {"Lsv_Log|Index|Item3", u"内容", 38},     {"Lsv_Log|Index|Item4", u"用户", 13},
    {"Lsv_Log|Index|Item5", u"日期", 26},     {"Lsv_Log|Index|Item6", u"Mac地址", 22},
    {"Lsv_Log|Index|Item7", u"计算机名", 16},
};

/// "" where no date is typed.
QString Day(const Date_Field &field)
{
    const QDateTime typed = Database_Engine::Date_From_Text(field.text());
    return typed.isValid() ? Database_Engine::Short_Date(typed.date().startOfDay()) : QString();
}
} // namespace

Frm_DbLog::Frm_DbLog(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Frm_DbLog>())
{
    m_ui->setupUi(this);
    m_ui->Lsv_Log->setModel(&m_lines);
    Load_Lang();
    Show_Columns();
    Offer_Users_And_Dates();
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_DbLog::Cmd_Apply_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_DbLog::reject);
}

Frm_DbLog::~Frm_DbLog() = default;

void Frm_DbLog::Load_Lang()
{
    Lang.LoadControlsCaption();
    m_ui->Lsv_Log->setAccessibleName(windowTitle());
}

void Frm_DbLog::Show_Columns()
{
    const bool hasPack = Language().Is_Loaded();
    std::vector<List_Column> columns;
    for (const Log_Column &column : Log_Columns)
        columns.push_back(
            {QLatin1String(column.key), hasPack ? Lang.GetString(column.key) : QString::fromUtf16(column.caption)});
    m_lines.Set_Columns(std::move(columns));
    const int character = fontMetrics().averageCharWidth();
    for (int i = 0; i < static_cast<int>(std::size(Log_Columns)); ++i)
        m_ui->Lsv_Log->setColumnWidth(i, Log_Columns[i].width * character);
}

void Frm_DbLog::Offer_Users_And_Dates()
{
    Trap(QStringLiteral("Frm_DbLog\\Form_Load"), [&] { m_ui->Cob_User->addItems(Log_Users()); });
    m_ui->Cob_User->setCurrentIndex(-1);
    m_ui->Cob_User->clearEditText();
    for (Date_Field *field : {m_ui->Txt_Start, m_ui->Txt_End})
        field->setText(Database_Engine::Short_Date(Machine::Now().date().startOfDay()));
}

void Frm_DbLog::Cmd_Apply_Click()
{
    for (Date_Field *field : {m_ui->Txt_Start, m_ui->Txt_End}) {
        if (!Day(*field).isEmpty())
            continue;
        Prompts::Message(Lang.GetString("_No_Date"), App().App_Title, Prompts::Icon::Exclamation);
        field->setFocus();
        field->selectAll();
        return;
    }
    Trap(
        QStringLiteral("Frm_DbLog\\Cmd_Apply_Click"), [&] { Fill_List(); },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Critical); });
}

void Frm_DbLog::Fill_List()
{
    std::vector<List_Row> rows;
    for (const Log_Line &line : Log_Lines(m_ui->Cob_User->currentText(), Day(*m_ui->Txt_Start), Day(*m_ui->Txt_End))) {
        List_Row row;
        row.texts = {QString::number(rows.size() + 1),
                     line.type,
                     line.text,
                     line.user,
                     line.date,
                     line.network_address,
                     line.computer};
        row.tool_tip = line.text;
        rows.push_back(row);
    }
    m_lines.Replace(std::move(rows));
    m_ui->lblCount->setText(Lang.GetString("_Count").arg(m_lines.Row_Count()));
}
