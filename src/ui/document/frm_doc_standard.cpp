// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/frm_doc_standard.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/document_reading.h"
#include "documents/outside_file.h"
#include "editor/composition.h"
#include "editor/paragraph_commands.h"
#include "editor/web_page.h"
#include "platform/database/database.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "tree/tree_loading.h"
#include "ui/document/document_page.h"
#include "ui/document/stored_version.h"
#include "ui/kit/located_key.h"
#include "ui/kit/readable_color.h"
#include "ui/kit/shell.h"
#include "ui_frm_doc_standard.h"
#include "views/line_colors.h"
#include "views/list_style.h"

#include <QScopedValueRollback>
#include <QToolButton>
#include <QUrl>

namespace
{
const QString Rtf = QStringLiteral("RTF");
/// Milliseconds from a keystroke to its draft; what is typed meanwhile goes with it.
constexpr int Draft_After = 1500;
const QString No_Stars = QStringLiteral("☆☆☆☆☆");
/// How much of the row's colour the title's background takes.
constexpr float Tint = 0.12F;

QString Title_Sheet(const Line_Style &style, const QColor &base)
{
    const auto mixed = [&](float own, float tint) {
        return style.item_color.isValid() ? own + (tint - own) * Tint : own;
    };
    const QColor back =
        QColor::fromRgbF(mixed(base.redF(), style.item_color.redF()), mixed(base.greenF(), style.item_color.greenF()),
                         mixed(base.blueF(), style.item_color.blueF()));
    QString sheet = QStringLiteral("QLineEdit { background: %1;").arg(back.name());
    if (style.sub_color.isValid())
        sheet += QStringLiteral(" color: %1;").arg(Readable(style.sub_color, back).name());
    if (style.bold)
        sheet += QStringLiteral(" font-weight: bold;");
    if (style.italic)
        sheet += QStringLiteral(" font-style: italic;");
    return sheet + QStringLiteral(" }");
}
} // namespace

Frm_Doc_Standard::Frm_Doc_Standard(Shell &shell, QWidget *parent)
    : QWidget(parent), m_shell(shell), m_ui(std::make_unique<Ui::Frm_Doc_Standard>()),
      m_lang(*this, QStringLiteral("Frm_Doc_Standard"))
{
    m_ui->setupUi(this);
    Set_Up_Pages();
    Load_Lang();
    m_form.content = m_ui->Txt_Content->document();
    m_form.memo = m_ui->Txt_Memo->document();
    m_form.sum = m_ui->Txt_Sum->document();
    m_ui->Bar_Editor->Serve({m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum}, m_ui->Bar_Find);
    setFocusProxy(m_ui->Txt_Content);
    Set_Up_Fields();
    Set_Up_Panes();
    Set_Up_Tools();
    Adjuest_Memo();
    m_draftTimer.setSingleShot(true);
    m_draftTimer.setInterval(Draft_After);
    connect(&m_draftTimer, &QTimer::timeout, this, &Frm_Doc_Standard::Write_Draft);
    constexpr int Look_After = 1000; // milliseconds from one look at the other program's file to the next
    m_outsideTimer.setInterval(Look_After);
    connect(&m_outsideTimer, &QTimer::timeout, this, &Frm_Doc_Standard::Follow_Outside);
}

/// A form goes when its text is saved or given up; a process that dies leaves the draft.
Frm_Doc_Standard::~Frm_Doc_Standard()
{
    if (!m_draftStays)
        m_draft.Remove();
}

void Frm_Doc_Standard::Load_Lang()
{
    m_lang.LoadControlsCaption();
    for (Document_Page *page : m_pages)
        page->Load_Lang();
    for (QToolButton *button : findChildren<QToolButton *>()) {
        if (button->text().isEmpty())
            button->setAccessibleName(button->toolTip());
    }
}

void Frm_Doc_Standard::AddCode_Office(const QString &kind, const QString &folderId)
{
    static const QStringList kinds{QStringLiteral("ADDCODE"), QStringLiteral("ADDCODE_HTM"),
                                   QStringLiteral("ADDCODE_WORD"), QStringLiteral("ADDCODE_EXCEL"),
                                   QStringLiteral("ADDCODE_PPT")};
    const qsizetype kindNumber = kinds.indexOf(kind.toUpper());
    if (kindNumber < 0)
        return;
    m_form.code_id.clear();
    m_form.title.clear();
    m_form.star = m_form.done = No_Stars;
    m_form.folder = folderId;
    m_form.create_date = m_form.update_date = Machine::Now().toString(QStringLiteral("yyyy-MM-dd"));
    if (kindNumber == 0 && QStringList{QStringLiteral("0"), QStringLiteral("1")}.contains(Config().Op_Editor))
        m_form.type = Rtf;
    m_form.stored_type.clear();
    m_form.stored_state.clear();
    m_stored = false;
    m_partial = false;
    Show_Form();
    if (m_ui->Comb_Cate->currentIndex() < 0 && m_ui->Comb_Cate->count() > 0)
        m_ui->Comb_Cate->setCurrentIndex(0);
    Set_Edit_Mode(true);
    Use_Setting_Font();
    m_ui->Fra_Code_Content->setText(m_lang.GetString("_NewDoc"));
    m_ui->Fra_Code_Content->show();
    m_ui->Txt_Title->setFocus();
}

void Frm_Doc_Standard::Take_Page(const QString &page, const QString &folder)
{
    m_form.type = Rtf;
    Web_Page::Show(page, *m_form.content, QUrl::fromLocalFile(folder + QLatin1Char('/')));
    m_ui->Txt_Title->setText(m_form.content->metaInformation(QTextDocument::DocumentTitle).simplified());
    m_form.content->setModified(true);
    Show_Modify();
    emit Mark_Changed();
}

bool Frm_Doc_Standard::GetCode_ViaID(const QString &code_id)
{
    m_showing = true;
    const bool whole = GetCodeContent_Ex(code_id, m_form);
    // What is read and edited of a page is what it shows, not its source.
    const bool page = m_form.stored_type == QLatin1String("HTM");
    if (whole && page)
        Web_Page::Show(m_form.page.isEmpty() ? m_form.content->toPlainText() : m_form.page, *m_form.content);
    m_showing = false;
    if (!whole && m_form.code_id != code_id)
        return false;
    m_partial = !whole;
    if (m_partial)
        m_form.type.clear();
    m_stored = true;
    m_consents = {};
    Show_Form();
    Show_Style();
    m_outside.reset();
    if (m_form.lock_is_open)
        m_shell.Set_Status(m_lang.GetString("_Lock_Open"));
    Set_Edit_Mode(!page && Config().CH_Lock != QLatin1String("1"));
    if (const QString loss = Not_Kept(*m_form.content); !loss.isEmpty())
        m_shell.Set_Status(loss);
    return true;
}

Draft_Answer Frm_Doc_Standard::Take_Draft(const Left_Draft &draft, const QString &password)
{
    m_showing = true;
    const Draft_Answer answer = Restore_Draft(draft, password, m_form, m_stored);
    m_showing = false;
    if (answer != Draft_Answer::Restored)
        return answer;
    if (m_stored && m_shell.Is_Open(m_form.code_id)) { // a later draft of the same document has it
        m_stored = false;
        m_form.code_id.clear();
    }
    Show_Form();
    m_storedPassword = password;
    Set_Edit_Mode(true);
    m_form.content->setModified(true);
    Show_Modify();
    if (Write_Draft())
        Drop_Draft(draft);
    return answer;
}

void Frm_Doc_Standard::Step(int step)
{
    Commit_Composition();
    const QString next = m_shell.Neighbour(m_form.code_id, step);
    if (next.isEmpty() || next == m_form.code_id)
        return;
    if (m_shell.Is_Open(next)) { // a document is edited in one place
        m_shell.Select_In_List(next);
        return m_shell.Open_Document(next);
    }
    if (m_changed) {
        const QString question = Title() + m_lang.GetString("_Modify_Comfirm");
        const Prompts::Answer answer = Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No_Cancel);
        if (answer == Prompts::Answer::Cancel || (answer == Prompts::Answer::Yes && !Data_Update()))
            return;
    }
    if (!Leave_Outside())
        return;
    const QString before = m_form.code_id;
    m_shell.Select_In_List(next);
    if (!GetCode_ViaID(next)) {
        if (m_form.code_id == before)
            return m_shell.Select_In_List(before);
        m_form.type.clear();
        m_form.code_id.clear();
        Clear_Changed();
        emit Emptied();
        return;
    }
    m_shell.Document_Changed(next);
    m_ui->Txt_Content->setFocus();
}

bool Frm_Doc_Standard::Save(Asking asking)
{
    if (m_saving)
        return false;
    const QScopedValueRollback saving(m_saving, true);
    Commit_Composition();
    Read_Form();
    const Save_Refusal nothing = m_form.type.isEmpty() ? Save_Refusal::Nothing_To_Save : Save_Refusal::None;
    if (nothing != Save_Refusal::None) {
        Refuse(nothing);
        return false;
    }
    if (Config().CH_Save == QLatin1String("1") &&
        Prompts::Ask(m_lang.GetString("_IsSave"), App().App_Title, Prompts::Choice::Yes_No) != Prompts::Answer::Yes)
        return false;
    const Save_Refusal refusal = Check_Before_Save(m_form, m_ui->Txt_Password2->text());
    if (refusal != Save_Refusal::None) {
        Refuse(refusal);
        return false;
    }
    return Store(asking);
}

bool Frm_Doc_Standard::Store(Asking asking)
{
    const std::array<int, 3> written = Revisions();
    const QString left = m_stored && m_storedFolder != m_form.folder ? m_storedFolder : QString();
    QString status;
    if (!Store_Consented(asking, status))
        return false;
    m_stored = true;
    Tell_Pages_Saved();
    m_ui->Txt_Title->setText(m_form.title);
    Show_Style();
    Clear_Changed();
    if (Revisions() != written) { // what came in while it was stored, as from an input method, is not stored yet
        m_form.content->setModified(true);
        Show_Modify();
    }
    m_shell.Set_Status(status);
    if (left.isEmpty())
        m_shell.Document_Changed(m_form.code_id);
    else
        m_shell.Documents_Moved({m_form.code_id}, m_form.folder);
    for (const QString &folder : {left, m_form.folder}) {
        if (!folder.isEmpty())
            m_shell.Folder_Changed(folder);
    }
    Set_Editor(); // the list has the document now, with its neighbours
    return true;
}

bool Frm_Doc_Standard::Store_Consented(Asking asking, QString &status)
{
    // Of a document that is shown and not written here, and of a page that is only read, the facts are stored.
    const bool untouched = m_form.stored_type == QLatin1String("HTM") && !m_form.content->isModified() &&
                           m_form.password == m_storedPassword;
    m_form.keeps_content = Is_Foreign() || (m_stored && untouched);
    Save_Outcome outcome = Save_Outcome::Failed;
    do
        outcome = Store_Form(m_form, m_stored, status, m_consents);
    while (outcome != Save_Outcome::Stored && Settle(outcome, asking));
    m_needsConsent = outcome == Save_Outcome::Changed_Elsewhere || outcome == Save_Outcome::Lock_Stays_Open;
    m_consents.replace = false;
    return outcome == Save_Outcome::Stored;
}

bool Frm_Doc_Standard::Settle(Save_Outcome outcome, Asking asking)
{
    if (outcome == Save_Outcome::Failed) {
        Show_Too_Long();
        return false;
    }
    if (asking == Asking::Never) {
        Store_Draft();
        m_shell.Set_Status(Title() + m_lang.GetString("_Draft_Kept"));
        return false;
    }
    if (outcome == Save_Outcome::Changed_Elsewhere)
        return Settle_Conflict();
    m_consents.open_lock = Prompts::Ask(Title() + m_lang.GetString("_Lock_Open_Ask"), App().App_Title,
                                        Prompts::Choice::Yes_No, Prompts::Answer::No) == Prompts::Answer::Yes;
    return m_consents.open_lock;
}

/// Facts alone make no second document.
bool Frm_Doc_Standard::Settle_Conflict()
{
    enum Way { Look, Replace, Keep_Both };
    QStringList ways{m_lang.GetString("_Look"), m_lang.GetString("_Replace")};
    if (!m_form.keeps_content)
        ways << m_lang.GetString("_Keep_Both");
    int way = Look;
    while ((way = Prompts::Choose(Title() + m_lang.GetString("_Changed_Elsewhere"), App().App_Title, ways)) == Look)
        Show_Stored_Version(m_form.code_id, this);
    m_consents.replace = way == Replace;
    if (way == Keep_Both) {
        m_form.code_id.clear();
        m_stored = false;
    }
    return way >= 0;
}

std::array<int, 3> Frm_Doc_Standard::Revisions() const
{
    return {m_form.content->revision(), m_form.memo->revision(), m_form.sum->revision()};
}

void Frm_Doc_Standard::Show_Style()
{
    const std::optional<Line_Style> style = Trap(QStringLiteral("Frm_Doc_Standard\\Show_Style"),
                                                 [this] { return Style_From_Text(Line_Color_Of(m_form.code_id)); });
    m_ui->Txt_Title->setStyleSheet(style ? Title_Sheet(*style, palette().color(QPalette::Base)) : QString());
}

bool Frm_Doc_Standard::Is_Changed() const
{
    return m_changed;
}

bool Frm_Doc_Standard::DataChanged() const
{
    return m_changed && m_form.content->isModified();
}

const Document_Form &Frm_Doc_Standard::Form()
{
    Read_Form();
    return m_form;
}

QString Frm_Doc_Standard::Title() const
{
    return m_ui->Txt_Title->text();
}

Editor_Commands &Frm_Doc_Standard::Commands() const
{
    return m_ui->Bar_Editor->Commands();
}

void Frm_Doc_Standard::Commit_Composition()
{
    Composition::Commit();
}

void Frm_Doc_Standard::Mark_Key(const QString &key, qint64 place)
{
    ::Mark_Key(*m_ui->Txt_Content, key, place);
}

void Frm_Doc_Standard::Use_View_Mode(int mode)
{
    if (mode == m_viewMode)
        return;
    m_viewMode = mode;
    m_ui->Txt_Content->Set_Page_Look(static_cast<Page_Look>(mode));
    Adjuest_Memo();
}

void Frm_Doc_Standard::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_ui->Comb_Cate->count() != Cate_ID_List().size() - 1)
        Fill_Folders();
    Set_Editor();
}

void Frm_Doc_Standard::Set_Up_Fields()
{
    Fill_Folders();
    for (QTextEdit *pane : {m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum}) {
        connect(pane->document(), &QTextDocument::contentsChanged, this, &Frm_Doc_Standard::Show_Modify);
        connect(pane->document(), &QTextDocument::modificationChanged, this, &Frm_Doc_Standard::Show_Modify);
    }
    for (QLineEdit *field : findChildren<QLineEdit *>()) {
        if (field->objectName().startsWith(QLatin1String("Txt_")))
            connect(field, &QLineEdit::textEdited, this, &Frm_Doc_Standard::Show_Modify);
    }
    connect(m_ui->Txt_Title, &QLineEdit::textEdited, this, &Frm_Doc_Standard::Mark_Changed);
    connect(m_ui->Comb_Cate, &QComboBox::activated, this, &Frm_Doc_Standard::Show_Modify);
    for (Star_Field *stars : {m_ui->Comb_Star, m_ui->Comb_Done})
        connect(stars, &Star_Field::Edited, this, &Frm_Doc_Standard::Show_Modify);
}

/// A new document is written in the font and the line space of the settings, whatever the skin's are.
void Frm_Doc_Standard::Use_Setting_Font()
{
    constexpr int Last = static_cast<int>(std::size(Paragraph_Commands::Line_Spacings)) - 1;
    const int spacing = std::clamp(Config().Cob_LineSpace.toInt(), 0, Last);
    m_showing = true;
    m_ui->Txt_Content->Start_In(Config().FontName_Cont, Config().FontSize_Cont.toInt(),
                                Paragraph_Commands::Line_Spacings[spacing]);
    m_showing = false;
    Clear_Changed();
}

void Frm_Doc_Standard::Fill_Folders()
{
    const QVariant chosen = m_ui->Comb_Cate->currentData();
    Folder_Combo combo{QStringLiteral("Comb_Cate"), {}};
    Reload_Cate(combo);
    m_ui->Comb_Cate->clear();
    for (qsizetype i = 0; i < combo.items.size(); ++i)
        m_ui->Comb_Cate->addItem(combo.items[i], Cate_ID_List().value(i));
    m_ui->Comb_Cate->setCurrentIndex(chosen.isValid() ? m_ui->Comb_Cate->findData(chosen) : 0);
}

void Frm_Doc_Standard::Show_Form()
{
    m_showing = true;
    Limit_Fields();
    m_ui->Txt_Title->setText(m_form.title);
    m_ui->Txt_Title->setCursorPosition(0);
    m_ui->Comb_Cate->setCurrentIndex(m_ui->Comb_Cate->findData(m_form.folder));
    m_ui->Comb_Star->Set_Text(m_form.star);
    m_ui->Comb_Done->Set_Text(m_form.done);
    m_ui->Txt_Keys->setText(m_form.keys);
    m_ui->Txt_Explain->setText(m_form.explain);
    m_ui->Txt_Create->setText(m_form.create_date);
    m_ui->Txt_Update->setText(m_form.update_date);
    m_ui->Txt_File->setText(m_form.file);
    m_ui->Txt_Promulgator->setText(m_form.promulgator);
    m_ui->Txt_Provenance->setText(m_form.provenance);
    m_ui->Txt_Author->setText(m_form.author);
    m_ui->Txt_Password->setText(m_form.password);
    m_ui->Txt_Password2->setText(m_form.password);
    m_ui->Txt_Content->moveCursor(QTextCursor::Start);
    m_showing = false;
    Clear_Changed();
    Show_Pages();
}

void Frm_Doc_Standard::Read_Form()
{
    m_form.title = m_ui->Txt_Title->text();
    m_form.folder = m_ui->Comb_Cate->currentData().toString();
    m_form.star = m_ui->Comb_Star->Text();
    m_form.done = m_ui->Comb_Done->Text();
    m_form.keys = m_ui->Txt_Keys->text();
    m_form.explain = m_ui->Txt_Explain->text();
    m_form.create_date = m_ui->Txt_Create->text();
    m_form.update_date = m_ui->Txt_Update->text();
    m_form.file = m_ui->Txt_File->text();
    m_form.promulgator = m_ui->Txt_Promulgator->text();
    m_form.provenance = m_ui->Txt_Provenance->text();
    m_form.author = m_ui->Txt_Author->text();
    m_form.password = m_ui->Txt_Password->text();
}

void Frm_Doc_Standard::Clear_Changed()
{
    m_changed = m_draftStays = false;
    m_storedPassword = m_form.password;
    m_storedFolder = m_form.folder;
    m_cleanFolder = m_ui->Comb_Cate->currentData().toString();
    m_cleanTexts = Field_Texts();
    m_draftTimer.stop();
    m_draft.Remove();
    const QScopedValueRollback showing(m_showing, true);
    for (QTextDocument *pane : {m_form.content, m_form.memo, m_form.sum})
        pane->setModified(false);
    Show_Mark();
    Set_Editor();
}

QStringList Frm_Doc_Standard::Field_Texts() const
{
    QStringList texts{m_ui->Comb_Star->Text(), m_ui->Comb_Done->Text()};
    for (const QLineEdit *field : findChildren<QLineEdit *>()) {
        if (field->objectName().startsWith(QLatin1String("Txt_")))
            texts << field->text();
    }
    return texts;
}

bool Frm_Doc_Standard::Differs() const
{
    return m_form.content->isModified() || m_form.memo->isModified() || m_form.sum->isModified() ||
           m_ui->Comb_Cate->currentData().toString() != m_cleanFolder || Field_Texts() != m_cleanTexts;
}

/// What was changed and changed back is not unsaved.
void Frm_Doc_Standard::Show_Modify()
{
    if (m_showing)
        return;
    const bool changed = Differs();
    // Never started anew by a keystroke: who types without a pause has a draft too.
    if (changed && !m_draftTimer.isActive())
        m_draftTimer.start();
    if (changed == m_changed)
        return;
    m_changed = changed;
    if (!changed) {
        m_draftTimer.stop();
        m_draft.Remove();
    }
    Show_Mark();
}

void Frm_Doc_Standard::Show_Mark()
{
    m_ui->Fra_Code_Content->setText(m_changed ? m_lang.GetString("_NeedSave") + QLatin1Char('*') : QString());
    m_ui->Fra_Code_Content->setVisible(m_changed);
    emit Mark_Changed();
}

QString Frm_Doc_Standard::Draft_Password() const
{
    const QString typed = m_ui->Txt_Password->text();
    return typed.isEmpty() || typed != m_ui->Txt_Password2->text() ? m_storedPassword : typed;
}

bool Frm_Doc_Standard::Write_Draft()
{
    if (m_saving)
        m_draftTimer.start();
    return !m_saving && m_changed && !m_partial && Store_Draft();
}

bool Frm_Doc_Standard::Store_Draft()
{
    const bool written = Trap(QStringLiteral("Frm_Doc_Standard\\Write_Draft"), [&] {
        Read_Form();
        m_draft.Write(m_form, m_stored, Draft_Password());
        return true;
    });
    if (!written)
        m_shell.Set_Status(m_lang.GetString("_Draft_Failed"));
    return written;
}

void Frm_Doc_Standard::Keep_Draft()
{
    Commit_Composition();
    Write_Draft();
}

bool Frm_Doc_Standard::Leave_Draft()
{
    m_draftStays = m_changed && !m_partial && Store_Draft();
    return m_draftStays;
}

void Frm_Doc_Standard::Focus(QWidget *page, QWidget *field)
{
    if (page != nullptr) {
        m_ui->TabS_Header->show();
        m_ui->TabS_Header->setCurrentWidget(page);
    }
    field->setFocus();
}

void Frm_Doc_Standard::Refuse(Save_Refusal refusal)
{
    Prompts::Message(m_lang.GetString(Refusal_Key(refusal)), App().App_Title, Prompts::Icon::Exclamation);
    switch (refusal) {
    case Save_Refusal::No_Folder:
        Fill_Folders();
        return Focus(nullptr, m_ui->Comb_Cate);
    case Save_Refusal::Create_Date:
        return Focus(m_ui->Pag_Addon, m_ui->Txt_Create);
    case Save_Refusal::Update_Date:
        return Focus(m_ui->Pag_Addon, m_ui->Txt_Update);
    case Save_Refusal::Title_Too_Long:
        return Focus(nullptr, m_ui->Txt_Title);
    case Save_Refusal::Password:
    case Save_Refusal::Password_Characters:
        return Focus(m_ui->Pag_Password, m_ui->Txt_Password);
    case Save_Refusal::None:
    case Save_Refusal::Nothing_To_Save:
        return;
    }
}
