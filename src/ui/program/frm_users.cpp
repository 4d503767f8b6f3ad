// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_users.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "core/system_log.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_users.h"
#include "users/user_list.h"

#include <algorithm>

namespace
{
/// What is told of a refusal.
constexpr struct Refusal_Text {
    const char *key;
    User_Refusal refusal;
    bool named = false; ///< the user's name stands behind it
} Refusal_Texts[] = {
    {"_SpecChar", User_Refusal::Special_Character}, {"_InputUser", User_Refusal::No_Name},
    {"_PassChk", User_Refusal::Passwords_Differ},   {"_UserExist", User_Refusal::Exists, true},
    {"_UserMax", User_Refusal::Too_Many},           {"_NoUser", User_Refusal::Unknown, true},
    {"_DeleError", User_Refusal::Only_One},
};
} // namespace

Frm_Users::Frm_Users(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Users>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->Lsv_User->setAccessibleName(windowTitle());
    m_fields = {
        {m_ui->Txt_User, &User::name},     {m_ui->Txt_Pass, &User::password}, {m_ui->Txt_Pass2, &User::repeated},
        {m_ui->Txt_Start, &User::start},   {m_ui->Txt_End, &User::end},       {m_ui->Txt_Title, &User::title},
        {m_ui->Txt_Name1, &User::name1},   {m_ui->Txt_Name2, &User::name2},   {m_ui->Txt_Addr, &User::address},
        {m_ui->Txt_Tel, &User::telephone}, {m_ui->Txt_Fax, &User::fax},       {m_ui->Txt_Email, &User::email}};
    for (Date_Field *day : {m_ui->Txt_Start, m_ui->Txt_End})
        connect(day, &QLineEdit::editingFinished, day, [day] { day->setText(Day_Text(day->text())); });
    connect(m_ui->Lsv_User, &QListWidget::itemSelectionChanged, this, &Frm_Users::Show_Chosen);
    connect(m_ui->Lsv_User, &QListWidget::itemClicked, this, &Frm_Users::Show_Chosen);
    connect(m_ui->Cmd_New, &QPushButton::clicked, this, &Frm_Users::Cmd_New_Click);
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_Users::Cmd_Apply_Click);
    connect(m_ui->Cmd_Delete, &QPushButton::clicked, this, &Frm_Users::Cmd_Delete_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_Users::reject);
    Run("Form_Load", [this] { Load_List(); });
    m_ui->Lsv_User->setCurrentRow(0);
}

Frm_Users::~Frm_Users() = default;

void Frm_Users::Load_List()
{
    const QStringList names = User_Names();
    m_ui->Lsv_User->clear();
    m_ui->Lsv_User->addItems(names);
}

void Frm_Users::Show_Chosen()
{
    const QList<QListWidgetItem *> chosen = m_ui->Lsv_User->selectedItems();
    if (chosen.isEmpty())
        return;
    Run("Lsv_User_Click", [&] {
        Show_User(Read_User(chosen.first()->text()));
        Enter(Mode::Viewing);
    });
}

void Frm_Users::Cmd_New_Click()
{
    if (m_mode == Mode::Adding)
        return Run("Cmd_New_Click", [this] { Save_New(); });
    m_ui->Lsv_User->clearSelection();
    Show_User(Blank_User());
    Enter(Mode::Adding);
    m_ui->Txt_User->setFocus();
}

void Frm_Users::Save_New()
{
    const User user = Typed();
    const QString name = user.name.trimmed();
    if (Refuse(Add_User(user), name))
        return;
    Tell_And_Log(Lang.GetString("_AddOk") + name);
    Show_User(Blank_User());
    Enter(Mode::Viewing);
    Load_List();
}

void Frm_Users::Cmd_Apply_Click()
{
    Run("Cmd_Apply_Click", [this] {
        const User user = Typed();
        const QString name = user.name.trimmed();
        if (!Refuse(Change_User(user), name))
            Prompts::Message(Lang.GetString("_ModOk") + name, App().App_Title);
    });
}

void Frm_Users::Cmd_Delete_Click()
{
    Run("Cmd_Delete_Click", [this] {
        const QString name = m_ui->Txt_User->text().trimmed();
        if (Refuse(May_Delete_User(), name) || name.isEmpty())
            return;
        if (Prompts::Ask(Lang.GetString("_DeleChk") + name, App().App_Title, Prompts::Choice::Yes_No,
                         Prompts::Answer::No) != Prompts::Answer::Yes)
            return;
        Delete_User(name);
        m_ui->Cmd_Apply->setEnabled(false);
        m_ui->Cmd_Delete->setEnabled(false);
        Tell_And_Log(Lang.GetString("_DeleOk") + name);
        Show_User(Blank_User());
        Load_List();
    });
}

void Frm_Users::Enter(Mode mode)
{
    m_mode = mode;
    const bool viewing = mode == Mode::Viewing;
    m_ui->Cmd_New->setText(Lang.GetString(viewing ? "_New" : "_Save"));
    m_ui->Cmd_Apply->setEnabled(viewing);
    m_ui->Cmd_Delete->setEnabled(viewing);
}

void Frm_Users::Show_User(const User &user)
{
    for (const Field &field : m_fields)
        field.box->setText(user.*field.text);
    m_ui->Chk_Lock->setChecked(user.locked);
}

User Frm_Users::Typed() const
{
    User user;
    for (const Field &field : m_fields)
        user.*field.text = field.box->text();
    user.locked = m_ui->Chk_Lock->isChecked();
    return user;
}

void Frm_Users::Run(const char *source, const std::function<void()> &body)
{
    Trap(QStringLiteral("Frm_Users\\") + QLatin1String(source), body,
         [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Critical); });
}

/// @returns whether there was anything to refuse
bool Frm_Users::Refuse(User_Refusal refusal, const QString &name)
{
    const auto *text = std::find_if(std::begin(Refusal_Texts), std::end(Refusal_Texts),
                                    [&](const Refusal_Text &row) { return row.refusal == refusal; });
    if (text == std::end(Refusal_Texts))
        return false;
    Prompts::Message(Lang.GetString(text->key) + (text->named ? name : QString()), App().App_Title,
                     Prompts::Icon::Exclamation);
    return true;
}

void Frm_Users::Tell_And_Log(const QString &text)
{
    Prompts::Message(text, App().App_Title);
    Add_Log(Log_Type::Changed, text);
}
