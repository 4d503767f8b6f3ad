// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/frm_doc_standard.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/document_reading.h"
#include "editor/composition.h"
#include "editor/paragraph_commands.h"
#include "editor/web_page.h"
#include "platform/prompts/prompts.h"
#include "tree/tree_loading.h"
#include "ui/document/document_page.h"
#include "ui/kit/located_key.h"
#include "ui/kit/readable_color.h"
#include "ui/kit/shell.h"
#include "ui_frm_doc_standard.h"
#include "views/line_colors.h"
#include "views/list_style.h"

#include <QScopedValueRollback>
#include <QShortcut>
#include <QToolButton>
#include <QUrl>

namespace
{
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
    m_session = std::make_unique<Document_Session>(*m_ui->Txt_Content->document(), *m_ui->Txt_Memo->document(),
                                                   *m_ui->Txt_Sum->document());
    Set_Up_Pages();
    Set_Up_Look();
    Load_Lang();
    m_ui->Bar_Editor->Serve({m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum}, m_ui->Bar_Find);
    setFocusProxy(m_ui->Txt_Content);
    Set_Up_Fields();
    Set_Up_Panes();
    Set_Up_Tools();
    Set_Up_Facts();
    Adjuest_Memo();
    m_draftTimer.setSingleShot(true);
    connect(&m_draftTimer, &QTimer::timeout, this, &Frm_Doc_Standard::Draft_Is_Due);
    constexpr int Look_After = 1000; // milliseconds from one look at the other program's file to the next
    m_outsideTimer.setInterval(Look_After);
    connect(&m_outsideTimer, &QTimer::timeout, this, &Frm_Doc_Standard::Follow_Outside);
}

Frm_Doc_Standard::~Frm_Doc_Standard() = default;

void Frm_Doc_Standard::Load_Lang()
{
    m_lang.LoadControlsCaption();
    for (Document_Page *page : m_pages)
        page->Load_Lang();
    for (QToolButton *button : findChildren<QToolButton *>()) {
        if (button->text().isEmpty())
            button->setAccessibleName(button->toolTip());
    }
    for (const QLabel *label : m_ui->Pic_Quiet->findChildren<QLabel *>()) // seen where there is room for it
        label->buddy()->setAccessibleName(label->buddy()->toolTip());
    // A label that is not seen has no key of its own.
    m_titleKey->setKey(QKeySequence::mnemonic(m_ui->Lab_Title->text()));
}

void Frm_Doc_Standard::AddCode_Office(const QString &kind, const QString &folderId)
{
    if (!m_session->Begin(kind, folderId))
        return;
    Show_Form();
    if (m_ui->Comb_Cate->currentIndex() < 0 && m_ui->Comb_Cate->count() > 0)
        m_ui->Comb_Cate->setCurrentIndex(0);
    Set_Edit_Mode(true);
    Use_Setting_Font();
    m_ui->Fra_Code_Content->setText(m_lang.GetString("_NewDoc"));
    m_ui->Txt_Title->setFocus();
}

void Frm_Doc_Standard::Take_Page(const QString &page, const QString &folder)
{
    Document_Form &form = m_session->Form();
    form.type = QStringLiteral("RTF");
    Web_Page::Show(page, *form.content, QUrl::fromLocalFile(folder + QLatin1Char('/')));
    m_ui->Txt_Title->setText(form.content->metaInformation(QTextDocument::DocumentTitle).simplified());
    form.content->setModified(true);
    Show_Modify();
    emit Mark_Changed();
}

bool Frm_Doc_Standard::GetCode_ViaID(const QString &code_id)
{
    m_showing = true;
    const bool shown = m_session->Open(code_id);
    const Document_Form &form = m_session->Form();
    // What is read and edited of a page is what it shows, not its source.
    if (shown && m_session->Is_Page() && !m_session->Is_Partial())
        Web_Page::Show(form.page.isEmpty() ? form.content->toPlainText() : form.page, *form.content);
    m_showing = false;
    if (!shown)
        return false;
    Show_Form();
    Show_Style();
    if (form.lock_is_open)
        m_shell.Set_Status(m_lang.GetString("_Lock_Open"));
    Set_Edit_Mode(!m_session->Is_Page() && !Is_On(&Settings_Record::CH_Lock));
    if (const QString loss = Not_Kept(*form.content); !loss.isEmpty())
        m_shell.Set_Status(loss);
    return true;
}

Draft_Answer Frm_Doc_Standard::Take_Draft(const Left_Draft &draft, const QString &password)
{
    m_showing = true;
    const Draft_Answer answer = m_session->Take_Draft(draft, password);
    m_showing = false;
    if (answer != Draft_Answer::Restored)
        return answer;
    if (m_session->Is_Stored() && m_shell.Is_Open(Code_Id())) // a later draft of the same document has it
        m_session->Become_New();
    Show_Form();
    m_session->Seal_With(password);
    Set_Edit_Mode(true);
    m_session->Form().content->setModified(true);
    Show_Modify();
    if (Write_Draft())
        Drop_Draft(draft);
    return answer;
}

void Frm_Doc_Standard::Step(int step)
{
    Commit_Composition();
    const QString next = m_shell.Neighbour(Code_Id(), step);
    if (next.isEmpty() || next == Code_Id())
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
    const QString before = Code_Id();
    m_shell.Select_In_List(next);
    if (!GetCode_ViaID(next)) {
        if (Code_Id() == before)
            return m_shell.Select_In_List(before);
        m_session->Let_Go();
        Clear_Changed();
        emit Emptied();
        return;
    }
    m_shell.Document_Changed(next);
    m_ui->Txt_Content->setFocus();
}

void Frm_Doc_Standard::Show_Style()
{
    const std::optional<Line_Style> style = Trap(QStringLiteral("Frm_Doc_Standard\\Show_Style"),
                                                 [this] { return Style_From_Text(Line_Color_Of(Code_Id())); });
    m_ui->Txt_Title->setStyleSheet(style ? Title_Sheet(*style, palette().color(QPalette::Base)) : QString());
}

bool Frm_Doc_Standard::DataChanged() const
{
    return m_changed && m_session->Form().content->isModified();
}

const Document_Form &Frm_Doc_Standard::Form()
{
    Read_Form();
    return m_session->Form();
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
        m_ui->Comb_Cate->Fill();
    Set_Editor();
    layout()->activate(); // the panes get their shares of a room that is known
    Adjuest_Memo();
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
