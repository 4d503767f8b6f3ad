// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/bookmark_menu.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/editor_commands.h"
#include "editor/text_editor.h"
#include "platform/prompts/prompts.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_bookmark_admin.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/ctrl_language.h"

#include <QMenu>

namespace
{
/// Entries that stand in the edit menu itself.
constexpr qsizetype Most_Beside = 12;
/// Characters of an entry.
constexpr qsizetype Longest_Caption = 60;

QAction *New_Command(QObject *owner, const char *name, const QString &caption)
{
    auto *action = new QAction(owner);
    action->setObjectName(QLatin1String(name));
    Set_Caption(*action, caption);
    return action;
}

QString Caption_Of(const QString &name)
{
    QString caption = name.simplified();
    if (caption.size() > Longest_Caption)
        caption = caption.left(Longest_Caption) + QChar(0x2026);
    return caption.replace(QLatin1Char('&'), QLatin1String("&&"));
}

Text_Editor &Body_Of(const Frm_Doc_Standard &document)
{
    return *document.Commands().Editors().first();
}

void Say(const char *key)
{
    Prompts::Message(Pack_Text("Frm_Main", key), App().App_Title, Prompts::Icon::Exclamation);
}
} // namespace

Bookmark_Menu::Bookmark_Menu(QMenu &menu, Document_Tabs &tabs, QWidget &window)
    : QObject(&window), m_menu(menu), m_tabs(tabs), m_window(window),
      mnuTag_Add(New_Command(this, "mnuTag_Add", Pack_Text("Frm_Main", "mnuTag_Add|Index|Caption"))),
      mnuTag_Admin(New_Command(this, "mnuTag_Admin", Pack_Text("Frm_Main", "mnuTag_Admin|Index|Caption"))),
      m_more(new QMenu(Pack_Text("Frm_Main", "mnuTag_More|Index|Caption"), &window))
{
    m_more->setObjectName(QStringLiteral("mnuTag_More"));
    m_more->setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }")); // in columns it would cover the screen
    connect(mnuTag_Add, &QAction::triggered, this, &Bookmark_Menu::mnuTag_Add_Call);
    connect(mnuTag_Admin, &QAction::triggered, this, &Bookmark_Menu::mnuTag_Admin_Call);
    // A tab may show another document, or one that has been stored, without being changed itself.
    connect(&menu, &QMenu::aboutToShow, this, [this] { Update_mnuTagGoto(Current_Id()); });
}

void Bookmark_Menu::Add_To_Menu()
{
    const bool hasDocument = m_tabs.Current_Document() != nullptr;
    mnuTag_Add->setEnabled(hasDocument);
    mnuTag_Admin->setEnabled(hasDocument);
    m_menu.addSeparator();
    m_menu.addActions({mnuTag_Add, mnuTag_Admin});
    m_menu.addSeparator();
    Update_mnuTagGoto(Current_Id());
}

void Bookmark_Menu::Update_mnuTagGoto(const QString &code_id)
{
    qDeleteAll(mnuTagGoto);
    mnuTagGoto.clear();
    m_menu.removeAction(m_more->menuAction());
    m_bookmarks = {};
    if (!code_id.isEmpty())
        m_bookmarks.Load(code_id);
    for (const Bookmark &bookmark : m_bookmarks.Rows()) {
        const auto index = static_cast<int>(mnuTagGoto.size());
        QAction *entry = New_Command(this, "mnuTagGoto", Caption_Of(bookmark.name));
        entry->setData(bookmark.line);
        connect(entry, &QAction::triggered, this, [this, index] { MnuTagGoto_Call(index); });
        (index < Most_Beside ? &m_menu : m_more)->addAction(entry);
        mnuTagGoto << entry;
    }
    if (mnuTagGoto.size() > Most_Beside)
        m_menu.addMenu(m_more);
}

void Bookmark_Menu::mnuTag_Add_Call()
{
    const Frm_Doc_Standard *document = Stored_Document();
    if (document == nullptr)
        return;
    const Text_Editor &body = Body_Of(*document);
    QString selected = body.textCursor().selectedText();
    selected.remove(QChar::ObjectReplacementCharacter);
    Open_Dialog(*document, {{}, QString::number(body.Line_Number()), selected.simplified(), document->Title()});
}

void Bookmark_Menu::mnuTag_Admin_Call()
{
    if (const Frm_Doc_Standard *document = Stored_Document())
        Open_Dialog(*document, {});
}

void Bookmark_Menu::MnuTagGoto_Call(int index)
{
    const Frm_Doc_Standard *document = m_tabs.Current_Document();
    if (document == nullptr || index < 0 || index >= mnuTagGoto.size())
        return;
    Text_Editor &body = Body_Of(*document);
    const std::optional<int> line = Line_Of_Text(mnuTagGoto[index]->data().toString(), body.Line_Count());
    if (line)
        body.Go_To_Line(*line);
    else
        Say("_LineNo");
}

Frm_Doc_Standard *Bookmark_Menu::Stored_Document() const
{
    Frm_Doc_Standard *document = m_tabs.Current_Document();
    if (document == nullptr)
        return nullptr;
    document->Commit_Composition();
    if (!document->Code_Id().isEmpty())
        return document;
    Say("_Bookmark");
    return nullptr;
}

void Bookmark_Menu::Open_Dialog(const Frm_Doc_Standard &document, const Bookmark &preset)
{
    const QString id = document.Code_Id();
    Frm_BookMark_Admin dialog(preset, &m_window);
    if (dialog.Load(id))
        dialog.exec();
    Update_mnuTagGoto(Current_Id());
}

QString Bookmark_Menu::Current_Id() const
{
    const Frm_Doc_Standard *document = m_tabs.Current_Document();
    return document == nullptr ? QString() : document->Code_Id();
}
