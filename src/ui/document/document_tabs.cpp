// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/document_tabs.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/system_log.h"
#include "documents/outside_file.h"
#include "platform/models/plain_tip.h"
#include "platform/prompts/prompts.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/document/kept_setting.h"
#include "ui/document/opened_attachments.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTabBar>

namespace
{
constexpr qsizetype Longest_Caption = 24;

QString Caption(const Frm_Doc_Standard &document)
{
    QString title = document.Title().simplified(); // a line end or a tab would spoil the bar
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
    setMovable(true);
    tabBar()->setElideMode(Qt::ElideNone);
    connect(this, &QTabWidget::tabCloseRequested, this, [this](int index) { Close(index); });
    connect(this, &QTabWidget::currentChanged, this,
            [this] { emit Document_On_Screen(Current_Document() != nullptr); });
    connect(this, &QTabWidget::currentChanged, this, &Document_Tabs::Show_State);
    connect(this, &QTabWidget::currentChanged, this, &Document_Tabs::Wake_Page);
    connect(tabBar(), &QTabBar::tabMoved, this, &Document_Tabs::Keep_List_First);
    tabBar()->installEventFilter(this);
    connect(this, &QTabWidget::currentChanged, this, &Document_Tabs::Tell_Facts);
    Add_Commands();
    Fold_Facts_At_First_Start();
    constexpr int Minute = 60'000;
    m_autoSave.setInterval(Minute);
    connect(&m_autoSave, &QTimer::timeout, this, &Document_Tabs::Auto_Save_Tick);
    m_autoSave.start();
}

/// A first start shows the text alone. Whoever opens the facts finds them open from then on.
void Document_Tabs::Fold_Facts_At_First_Start()
{
    if (Is_Shown(Config().Facts_Begun))
        return;
    Keep_Switch("M_FILE", false);
    Keep_Switch("Facts_Begun", true);
}

void Document_Tabs::Tell_Facts()
{
    const Frm_Doc_Standard *document = Current_Document();
    emit Facts_Changed(document == nullptr ? Document_Facts() : document->Facts());
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

void Document_Tabs::Bring_Back_Unsaved()
{
    for (const Stored_Copy &copy : Outside_File::Take_Back_Left()) {
        const QString status = Pack_Text("Frm_Doc_Standard", "_ModifySucc") + copy.title;
        Add_Log(Log_Type::Changed, status);
        m_shell.Set_Status(status);
        m_shell.Document_Changed(copy.id);
    }
    for (const QString &code_id : Opened_Attachments::Offer_Left(this))
        m_shell.Document_Changed(code_id);
    Offer_Drafts();
}

void Document_Tabs::Offer_Drafts()
{
    const QList<Left_Draft> drafts = Left_Drafts();
    if (drafts.isEmpty())
        return;
    constexpr qsizetype Most_Named = 8;
    QStringList names;
    for (const Left_Draft &draft : drafts.first(std::min(drafts.size(), Most_Named))) {
        const QString title = draft.title.isEmpty() ? Pack_Text("Frm_Doc_Standard", "_NewDoc") : draft.title;
        names << QStringLiteral("    ") +
                     (draft.sealed ? Pack_Text("Frm_Doc_Standard", "_Draft_Sealed") : title.simplified());
    }
    const QString question = Pack_Text("Frm_Doc_Standard", "_Draft_Found").arg(drafts.size()) + QLatin1Char('\n') +
                             names.join(QLatin1Char('\n')) + QLatin1Char('\n') +
                             Pack_Text("Frm_Doc_Standard", "_Draft_Ask");
    const Prompts::Answer answer = Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No_Cancel);
    if (answer == Prompts::Answer::Yes)
        Restore(drafts);
    for (const Left_Draft &draft : answer == Prompts::Answer::No ? drafts : QList<Left_Draft>())
        Drop_Draft(draft);
}

void Document_Tabs::Restore(const QList<Left_Draft> &drafts)
{
    for (const Left_Draft &draft : drafts) {
        const QString password =
            draft.sealed ? Prompts::Input(Pack_Text("Mod_DataBase", "_AskPass"), App().App_Title, {}, true) : QString();
        auto *document = new Frm_Doc_Standard(m_shell, this);
        const Draft_Answer answer = document->Take_Draft(draft, password);
        if (answer == Draft_Answer::Restored) {
            setCurrentIndex(Add(document));
            continue;
        }
        delete document;
        const bool wrong = answer == Draft_Answer::Wrong_Password;
        Prompts::Message(wrong ? Pack_Text("Mod_DataBase", "_WrongPass")
                               : Pack_Text("Frm_Doc_Standard", "_Draft_Damaged").arg(draft.path),
                         App().App_Title, Prompts::Icon::Exclamation);
    }
}

bool Document_Tabs::Close(int index)
{
    Frm_Doc_Standard *document = Document_At(index);
    if (document == nullptr)
        return false;
    document->Commit_Composition();
    if (document->Is_Changed()) {
        setCurrentIndex(index);
        const QString question = document->Title() + Pack_Text("Frm_Doc_Standard", "_Modify_Comfirm");
        const Prompts::Answer answer = Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No_Cancel);
        if (answer == Prompts::Answer::Cancel || (answer == Prompts::Answer::Yes && !document->Data_Update()))
            return false;
    }
    if (!document->Leave_Outside())
        return false;
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

bool Document_Tabs::Close_All()
{
    while (count() > 1) {
        if (!Close(count() - 1))
            return false;
    }
    return true;
}

bool Document_Tabs::Save_All()
{
    bool all = true;
    QStringList kept;
    for (int i = 1; i < count(); ++i) {
        Document_At(i)->Commit_Composition();
        all = Document_At(i)->Leave_Outside() && all;
        if (!Document_At(i)->Is_Changed())
            continue;
        setCurrentIndex(i);
        if (Document_At(i)->Save_Quietly())
            continue;
        if (Document_At(i)->Needs_Consent() && Document_At(i)->Leave_Draft())
            kept << Document_At(i)->Title();
        else
            all = false;
    }
    if (!kept.isEmpty())
        Prompts::Message(kept.join(QLatin1Char('\n')) + Pack_Text("Frm_Doc_Standard", "_Draft_Kept"), App().App_Title,
                         Prompts::Icon::Exclamation);
    return all;
}

void Document_Tabs::Keep_Drafts()
{
    for (int i = 1; i < count(); ++i)
        Document_At(i)->Keep_Draft();
}

QStringList Document_Tabs::Left_Outside() const
{
    QStringList names;
    for (int i = 1; i < count(); ++i)
        names << Document_At(i)->Left_Outside();
    return names;
}

void Document_Tabs::Show_Style(const QString &code_id)
{
    if (const int index = Find(code_id); index >= 0)
        Document_At(index)->Show_Style();
}

Frm_Doc_Standard *Document_Tabs::Current_Document() const
{
    return Document_At(currentIndex());
}

void Document_Tabs::Turn(int step)
{
    setCurrentIndex((currentIndex() + step + count()) % count());
    if (currentWidget() != nullptr)
        currentWidget()->setFocus();
}

void Document_Tabs::Auto_Save_Tick()
{
    Frm_Doc_Standard *document = Current_Document();
    // A box on screen may be asking about this very document.
    if (document == nullptr || !document->DataChanged() || QApplication::activeModalWidget() != nullptr)
        return;
    const int period = Is_On(&Settings_Record::CH_Auto_Save) ? Config().COB_Auto_Save.toInt() : 0;
    const int counted = document->unsaved_ticks + 1;
    const bool due = period > 0 && counted % period == 0;
    document->unsaved_ticks = period <= 0 || due ? 0 : counted;
    if (due)
        document->Save_Quietly();
}

bool Document_Tabs::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == tabBar() && event->type() == QEvent::MouseButtonRelease) {
        const auto &click = static_cast<const QMouseEvent &>(*event);
        if (click.button() == Qt::MiddleButton) {
            const int index = tabBar()->tabAt(click.position().toPoint());
            QTimer::singleShot(0, this, [this, document = Document_At(index)] { Close(indexOf(document)); });
            return true;
        }
    }
    return QTabWidget::eventFilter(watched, event);
}

void Document_Tabs::Keep_List_First()
{
    for (int i = 1; i < count(); ++i) {
        if (Document_At(i) == nullptr) {
            tabBar()->moveTab(i, 0);
            return;
        }
    }
}

void Document_Tabs::Adjust_Panes()
{
    for (int i = 1; i < count(); ++i) {
        if (Frm_Doc_Standard *document = Document_At(i))
            document->Adjuest_Memo();
    }
}

Frm_Doc_Standard *Document_Tabs::Document_At(int index) const
{
    return qobject_cast<Frm_Doc_Standard *>(widget(index));
}

int Document_Tabs::Find(const QString &code_id) const
{
    for (int i = 1; i < count(); ++i) {
        if (const Frm_Doc_Standard *document = Document_At(i); document != nullptr && document->Code_Id() == code_id)
            return i;
    }
    return -1;
}

void Document_Tabs::Remove(Frm_Doc_Standard *document)
{
    removeTab(indexOf(document));
    document->deleteLater();
}

/// Only the page on screen has updates: turning to another one goes through all widgets that have.
void Document_Tabs::Wake_Page()
{
    if (m_awake == currentWidget())
        return;
    if (m_awake != nullptr)
        m_awake->setUpdatesEnabled(false);
    m_awake = currentWidget();
    if (m_awake != nullptr)
        m_awake->setUpdatesEnabled(true);
}

int Document_Tabs::Add(Frm_Doc_Standard *document)
{
    document->setUpdatesEnabled(false);
    const int index = addTab(document, Line_Icon(QStringLiteral("note")), Caption(*document));
    connect(document, &Frm_Doc_Standard::Mark_Changed, this, [this, document] { Show_Mark(document); });
    connect(document, &Frm_Doc_Standard::Scored, this, &Document_Tabs::Scored);
    connect(document, &Frm_Doc_Standard::Facts_Changed, this, [this, document](const Document_Facts &facts) {
        if (document == Current_Document())
            emit Facts_Changed(facts);
    });
    connect(
        document, &Frm_Doc_Standard::Emptied, this,
        [this, document] {
            Remove(document);
            Show_List();
        },
        Qt::QueuedConnection);
    return index;
}

void Document_Tabs::Show_Mark(Frm_Doc_Standard *document)
{
    const int index = indexOf(document);
    setTabText(index, Caption(*document));
    setTabToolTip(index, Plain_Tip(document->Title()));
    if (document == Current_Document())
        Show_State();
}
