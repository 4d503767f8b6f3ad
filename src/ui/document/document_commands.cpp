// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "documents/blank_files.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "platform/richtext/rich_text.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/command_keys.h"
#include "ui/kit/ctrl_language.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QTextDocument>
#include <QTextEdit>
#include <QUrl>

/// One command of the documents: an entry of a menu, and a key.
struct Document_Tabs::Command {
    const char *name;
    const char *caption; ///< key in the section of the main window
    const char *icon;
    QKeySequence key;
    bool forDocument; ///< needs a document on screen
    bool isSwitch;
    void (*run)(Document_Tabs &tabs);
};

const std::vector<Document_Tabs::Command> &Document_Tabs::Commands()
{
    static const std::vector<Command> commands = {
        {"AddCode_Clip", "_AddCode_Clip", "copy", Qt::CTRL | Qt::SHIFT | Qt::Key_N, false, false,
         [](Document_Tabs &tabs) {
             tabs.New_From_Clipboard();
         }},
        {"AddCode_Word",
         "_AddCode_Word",
         "",
         {},
         false,
         false,
         [](Document_Tabs &tabs) {
             tabs.New_Outside(QStringLiteral("DOCX"));
         }},
        {"AddCode_Excel",
         "_AddCode_Excel",
         "",
         {},
         false,
         false,
         [](Document_Tabs &tabs) {
             tabs.New_Outside(QStringLiteral("XLSX"));
         }},
        {"AddCode_PPT",
         "_AddCode_PPT",
         "",
         {},
         false,
         false,
         [](Document_Tabs &tabs) {
             tabs.New_Outside(QStringLiteral("PPTX"));
         }},
        {"AddCode_Htm",
         "_AddCode_Htm",
         "",
         {},
         false,
         false,
         [](Document_Tabs &tabs) {
             tabs.New_From_Page();
         }},
        {"Mnu_Open_Outside", "_Mnu_Open_Outside", "open", Qt::CTRL | Qt::SHIFT | Qt::Key_O, true, false,
         [](Document_Tabs &tabs) {
             tabs.Current_Document()->Open_Outside();
         }},
        {"Email",
         "_Cmd_Email",
         "mail",
         {},
         true,
         false,
         [](Document_Tabs &tabs) {
             tabs.Email();
         }},
        {"Mnu_Mode_Edit", "_Mnu_Mode_Edit", "edit", Qt::CTRL | Qt::SHIFT | Qt::Key_E, true, true,
         [](Document_Tabs &tabs) {
             tabs.Switch_Mode();
         }},
        {"Mnu_Next_Tab", "_Mnu_Next_Tab", "", Qt::CTRL | Qt::Key_Tab, false, false,
         [](Document_Tabs &tabs) {
             tabs.Turn(1);
         }},
        {"Mnu_Previous_Tab", "_Mnu_Previous_Tab", "", Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, false, false,
         [](Document_Tabs &tabs) {
             tabs.Turn(-1);
         }},
    };
    return commands;
}

void Document_Tabs::Add_Commands()
{
    for (const Command &command : Commands()) {
        auto *action = new QAction(this);
        Set_Caption(*action, Pack_Text("Frm_Main", command.caption));
        action->setObjectName(QLatin1String(command.name));
        if (*command.icon != '\0')
            action->setIcon(Line_Icon(QLatin1String(command.icon)));
        action->setShortcut(command.key);
        action->setCheckable(command.isSwitch);
        connect(action, &QAction::triggered, this, [this, run = command.run] { run(*this); });
        m_actions.push_back(action);
        Command_Keys::Of_Program().Give(*action);
    }
    Show_State();
}

QAction *Document_Tabs::Action(const QString &name) const
{
    const auto found =
        std::find_if(m_actions.begin(), m_actions.end(), [&](QAction *one) { return one->objectName() == name; });
    return found == m_actions.end() ? nullptr : *found;
}

void Document_Tabs::Show_State()
{
    const Frm_Doc_Standard *document = Current_Document();
    const bool editing = document != nullptr && document->Is_Editing();
    for (size_t i = 0; i < m_actions.size(); ++i)
        m_actions[i]->setEnabled(document != nullptr || !Commands()[i].forDocument);
    Action(QStringLiteral("Mnu_Mode_Edit"))->setChecked(editing);
    const bool foreign = document != nullptr && document->Is_Foreign();
    Action(QStringLiteral("Mnu_Open_Outside"))->setEnabled(document != nullptr && document->Keeps_File());
    emit Editing(editing || (document != nullptr && document->Is_Changed())); // what is unsaved can be saved
    emit Deletable(document == nullptr || editing || foreign);                // a foreign one is never edited here
}

void Document_Tabs::Delete_Current()
{
    Frm_Doc_Standard *document = Current_Document();
    if (document == nullptr)
        return;
    if (document->Code_Id().isEmpty())
        Close(currentIndex());
    else
        m_shell.Delete_Documents({document->Code_Id()}, Asked_In::List);
}

void Document_Tabs::Switch_Mode()
{
    if (Frm_Doc_Standard *document = Current_Document())
        document->Set_Edit_Mode(!document->Is_Editing());
    Show_State();
}

void Document_Tabs::Email()
{
    Frm_Doc_Standard *document = Current_Document();
    if (document == nullptr)
        return;
    constexpr qsizetype Longest_Body = 1800; // addresses are passed on command lines
    const Document_Form &form = document->Form();
    const QString body = form.content->toPlainText().left(Longest_Body);
    const QByteArray address =
        "mailto:?subject=" + QUrl::toPercentEncoding(form.title) + "&body=" + QUrl::toPercentEncoding(body);
    if (!QDesktopServices::openUrl(QUrl::fromEncoded(address)))
        Prompts::Message(Pack_Text("Frm_Main", "_No_Mail"), App().App_Title, Prompts::Icon::Exclamation);
}

void Document_Tabs::New_From_Clipboard()
{
    Open_New(QStringLiteral("ADDCODE"), m_shell.Selected_Folder());
    if (auto *content = Current_Document()->findChild<QTextEdit *>(QStringLiteral("Txt_Content"))) {
        content->paste();
        content->setFocus();
    }
}

/// A document that another program writes is stored empty, shown and given to that program.
void Document_Tabs::New_Outside(const QString &type)
{
    const QString folder = m_shell.Selected_Folder();
    if (folder.isEmpty()) {
        Prompts::Message(Pack_Text("Frm_Doc_Standard", "_SelectDir"), App().App_Title, Prompts::Icon::Exclamation);
        return;
    }
    const QString title = Pack_Text("Frm_Doc_Standard", "_NewDoc") + QLatin1Char(' ') + type;
    const QString id = Store_Blank_File(type, folder, title);
    if (id.isEmpty())
        return;
    m_shell.Folder_Changed(folder);
    Open(id);
    if (Frm_Doc_Standard *document = Current_Document(); document != nullptr && document->Code_Id() == id)
        document->Open_Outside();
}

/// The text and the pictures of a page on this machine become a document.
void Document_Tabs::New_From_Page()
{
    const QString path =
        Prompts::Open_File(Pack_Text("Frm_Main", "_Choose_Page"), {},
                           Pack_Text("Frm_Main", "_Htm") + QStringLiteral("(*.htm *.html)|*.htm *.html"));
    if (path.isEmpty())
        return;
    const QByteArray bytes = Trap(
        QStringLiteral("Frm_Main\\AddCode_Htm_Click"), [&] { return Files::Read_Bytes(path); },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
    if (bytes.isEmpty())
        return;
    Open_New(QStringLiteral("ADDCODE_HTM"), m_shell.Selected_Folder());
    Current_Document()->Take_Page(Rich_Text::Decode_Plain(bytes), QFileInfo(path).absolutePath());
}
