// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document_tabs.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/prompts/prompts.h"
#include "ui/frm_doc_standard.h"
#include "ui/icons.h"
#include "ui/shell.h"

#include <QTabBar>

namespace
{
constexpr qsizetype Longest_Caption = 24;

QString Caption(const Frm_Doc_Standard &document)
{
    QString title = document.Title().trimmed();
    if (title.isEmpty())
        title = Pack_Text("Frm_Doc_Standard", "_NewDoc");
    if (title.size() > Longest_Caption)
        title = title.left(Longest_Caption) + QChar(u'…');
    title.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return document.Is_Changed() ? title + QLatin1Char('*') : title;
}
} // namespace

Document_Tabs::Document_Tabs(Shell &shell, QWidget *parent) : QTabWidget(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("Tab_Right"));
    setDocumentMode(true);
    setTabsClosable(true);
    setMovable(false);
    tabBar()->setElideMode(Qt::ElideNone);
    connect(this, &QTabWidget::tabCloseRequested, this, [this](int index) { Close(index); });
    connect(this, &QTabWidget::currentChanged, this,
            [this] { emit Document_On_Screen(Current_Document() != nullptr); });
}

void Document_Tabs::Add_List(QWidget *list, const QString &caption)
{
    insertTab(0, list, Line_Icon(QStringLiteral("log")), caption);
    tabBar()->setTabButton(0, QTabBar::RightSide, nullptr);
    tabBar()->setTabButton(0, QTabBar::LeftSide, nullptr);
}

void Document_Tabs::Show_List()
{
    setCurrentIndex(0);
}

void Document_Tabs::Open(const QString &code_id)
{
    const int open = Find(code_id);
    if (open >= 0) {
        setCurrentIndex(open);
        return;
    }
    auto *document = new Frm_Doc_Standard(m_shell, this);
    if (!document->GetCode_ViaID(code_id)) {
        delete document;
        return;
    }
    setCurrentIndex(Add(document));
    document->setFocus();
    m_shell.Document_Changed(code_id);
}

void Document_Tabs::Open_New(const QString &kind, const QString &folderId)
{
    auto *document = new Frm_Doc_Standard(m_shell, this);
    const int index = Add(document);
    setCurrentIndex(index);
    document->AddCode_Office(kind, folderId);
}

bool Document_Tabs::Save_Current()
{
    Frm_Doc_Standard *document = Current_Document();
    return document != nullptr && document->Data_Update();
}

bool Document_Tabs::Close(int index)
{
    Frm_Doc_Standard *document = Document_At(index);
    if (document == nullptr)
        return false;
    if (document->Is_Changed()) {
        setCurrentIndex(index);
        const QString question = document->Title() + Pack_Text("Frm_Doc_Standard", "_Modify_Comfirm");
        const Prompts::Answer answer = Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No_Cancel);
        if (answer == Prompts::Answer::Cancel || (answer == Prompts::Answer::Yes && !document->Data_Update()))
            return false;
    }
    Remove(document);
    return true;
}

Deletion Document_Tabs::Delete(const QStringList &ids, Asked_In place)
{
    const auto mayGo = [this](const QString &id, bool forGood) {
        const int index = Find(id);
        return index < 0 || forGood || Close(index);
    };
    Deletion deletion = Ask_And_Delete(ids, place, mayGo);
    for (const QString &id : deletion.gone) {
        if (const int index = Find(id); index >= 0)
            Remove(Document_At(index));
    }
    return deletion;
}

bool Document_Tabs::Save_All()
{
    bool all = true;
    for (int i = 1; i < count(); ++i) {
        if (!tabText(i).endsWith(QLatin1Char('*')))
            continue;
        setCurrentIndex(i);
        all = Document_At(i)->Data_Update() && all;
    }
    return all;
}

Frm_Doc_Standard *Document_Tabs::Current_Document() const
{
    return Document_At(currentIndex());
}

void Document_Tabs::Adjust_Panes()
{
    for (int i = 1; i < count(); ++i)
        Document_At(i)->Adjuest_Memo();
}

Frm_Doc_Standard *Document_Tabs::Document_At(int index) const
{
    return qobject_cast<Frm_Doc_Standard *>(widget(index));
}

int Document_Tabs::Find(const QString &code_id) const
{
    for (int i = 1; i < count(); ++i) {
        if (Document_At(i)->Code_Id() == code_id)
            return i;
    }
    return -1;
}

void Document_Tabs::Remove(Frm_Doc_Standard *document)
{
    removeTab(indexOf(document));
    document->deleteLater();
}

int Document_Tabs::Add(Frm_Doc_Standard *document)
{
    const int index = addTab(document, Line_Icon(QStringLiteral("note")), Caption(*document));
    connect(document, &Frm_Doc_Standard::Mark_Changed, this, [this, document] { Show_Mark(document); });
    return index;
}

void Document_Tabs::Show_Mark(Frm_Doc_Standard *document)
{
    const int index = indexOf(document);
    setTabText(index, Caption(*document));
    setTabToolTip(index, document->Title());
}
