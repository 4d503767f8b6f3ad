// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/frm_doc_standard.h"

#include "core/process_state.h"
#include "core/settings.h"
#include "documents/document_reading.h"
#include "editor/composition.h"
#include "platform/database/database.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "tree/tree_loading.h"
#include "ui/shell.h"
#include "ui_frm_doc_standard.h"

namespace
{
const QString Rtf = QStringLiteral("RTF");

/// "☆☆☆☆☆", "★☆☆☆☆" ... "★★★★★"
QStringList Star_Texts()
{
    constexpr int Most = 5;
    QStringList texts;
    for (int stars = 0; stars <= Most; ++stars)
        texts << QString(stars, QChar(u'★')) + QString(Most - stars, QChar(u'☆'));
    return texts;
}

void Choose(QComboBox &combo, const QString &text)
{
    combo.setCurrentIndex(std::max(0, combo.findText(text)));
}
} // namespace

Frm_Doc_Standard::Frm_Doc_Standard(Shell &shell, QWidget *parent)
    : QWidget(parent), m_shell(shell), m_ui(std::make_unique<Ui::Frm_Doc_Standard>()),
      m_lang(*this, QStringLiteral("Frm_Doc_Standard"))
{
    m_ui->setupUi(this);
    Load_Lang();
    m_form.content = m_ui->Txt_Content->document();
    m_form.memo = m_ui->Txt_Memo->document();
    m_form.sum = m_ui->Txt_Sum->document();
    Set_Up_Choices();
    m_ui->Bar_Editor->Serve({m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum}, m_ui->Bar_Find);
    Adjuest_Memo();
    setFocusProxy(m_ui->Txt_Content);
    m_ui->Pic_Panes->setStretchFactor(0, 1);

    for (QTextEdit *pane : {m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum})
        connect(pane->document(), &QTextDocument::contentsChanged, this, &Frm_Doc_Standard::Show_Modify);
    for (QLineEdit *field : findChildren<QLineEdit *>()) {
        if (field->objectName().startsWith(QLatin1String("Txt_")))
            connect(field, &QLineEdit::textEdited, this, &Frm_Doc_Standard::Show_Modify);
    }
    connect(m_ui->Txt_Title, &QLineEdit::textEdited, this, &Frm_Doc_Standard::Mark_Changed);
    for (QComboBox *choice : {m_ui->Comb_Cate, m_ui->Comb_Star, m_ui->Comb_Done})
        connect(choice, &QComboBox::activated, this, &Frm_Doc_Standard::Show_Modify);
}

Frm_Doc_Standard::~Frm_Doc_Standard() = default;

void Frm_Doc_Standard::Load_Lang()
{
    m_lang.LoadControlsCaption();
}

void Frm_Doc_Standard::AddCode_Office(const QString &kind, const QString &folderId)
{
    m_form.code_id.clear();
    m_form.title.clear();
    m_form.star = m_form.done = Star_Texts().first();
    m_form.folder = folderId;
    m_form.create_date = m_form.update_date = Database_Engine::Short_Date(Machine::Now().date().startOfDay());
    const bool rich = Config().Op_Editor == QLatin1String("0") || Config().Op_Editor == QLatin1String("1");
    m_form.type = kind == QLatin1String("ADDCODE") && rich ? Rtf : QString();
    m_stored = false;
    Show_Form();
    Use_Setting_Font();
    m_ui->Fra_Code_Content->setText(m_lang.GetString("_NewDoc"));
    m_ui->Txt_Title->setFocus();
}

bool Frm_Doc_Standard::GetCode_ViaID(const QString &code_id)
{
    m_showing = true;
    const bool whole = GetCodeContent_Ex(code_id, m_form);
    m_showing = false;
    if (!whole && m_form.content->isEmpty())
        return false;
    if (!whole)
        m_form.type.clear();
    m_stored = true;
    Show_Form();
    Lock_Boolean(!whole);
    return true;
}

bool Frm_Doc_Standard::Data_Update()
{
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
    QString status;
    if (!Store_Form(m_form, m_stored, status))
        return false;
    m_stored = true;
    m_ui->Txt_Title->setText(m_form.title);
    Clear_Changed();
    m_shell.Set_Status(status);
    m_shell.Document_Changed(m_form.code_id);
    m_shell.Folder_Changed(m_form.folder);
    return true;
}

bool Frm_Doc_Standard::Is_Changed() const
{
    return m_changed;
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

void Frm_Doc_Standard::Use_View_Mode(int mode)
{
    if (mode == m_viewMode)
        return;
    m_viewMode = mode;
    m_ui->Txt_Content->Set_Page_Look(static_cast<Page_Look>(mode));
    Adjuest_Memo();
}

void Frm_Doc_Standard::Adjuest_Memo()
{
    const bool all = static_cast<Page_Look>(m_viewMode) != Page_Look::Writing;
    m_ui->Pic_Memo->setVisible(all && Is_Shown(Config().ViewMemo));
    m_ui->Pic_Sum->setVisible(all && Is_Shown(Config().ViewSum));
    m_ui->TabS_Header->setVisible(all && Is_Shown(Config().M_FILE));
}

void Frm_Doc_Standard::Set_Up_Choices()
{
    m_ui->Comb_Star->addItems(Star_Texts());
    m_ui->Comb_Done->addItems(Star_Texts());
    Fill_Folders();
}

/// A new document is written in the font of the settings, whatever the skin's is.
void Frm_Doc_Standard::Use_Setting_Font()
{
    m_showing = true;
    m_ui->Txt_Content->Start_In_Font(Config().FontName_Cont, Config().FontSize_Cont.toInt());
    m_showing = false;
    Clear_Changed();
}

void Frm_Doc_Standard::Fill_Folders()
{
    Folder_Combo combo{QStringLiteral("Comb_Cate"), {}};
    Reload_Cate(combo);
    m_ui->Comb_Cate->clear();
    for (qsizetype i = 0; i < combo.items.size(); ++i)
        m_ui->Comb_Cate->addItem(combo.items[i], Cate_ID_List().value(i));
}

void Frm_Doc_Standard::Show_Form()
{
    m_showing = true;
    m_ui->Txt_Title->setText(m_form.title);
    m_ui->Comb_Cate->setCurrentIndex(m_ui->Comb_Cate->findData(m_form.folder));
    Choose(*m_ui->Comb_Star, m_form.star);
    Choose(*m_ui->Comb_Done, m_form.done);
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
}

void Frm_Doc_Standard::Read_Form()
{
    m_form.title = m_ui->Txt_Title->text();
    m_form.folder = m_ui->Comb_Cate->currentData().toString();
    m_form.star = m_ui->Comb_Star->currentText();
    m_form.done = m_ui->Comb_Done->currentText();
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
    m_changed = false;
    m_form.content->setModified(false);
    m_ui->Fra_Code_Content->setText(QString());
    emit Mark_Changed();
}

void Frm_Doc_Standard::Show_Modify()
{
    if (m_showing || m_changed)
        return;
    m_changed = true;
    m_ui->Fra_Code_Content->setText(m_lang.GetString("_NeedSave") + QLatin1Char('*'));
    emit Mark_Changed();
}

void Frm_Doc_Standard::Refuse(Save_Refusal refusal)
{
    Prompts::Message(m_lang.GetString(Refusal_Key(refusal)), App().App_Title, Prompts::Icon::Exclamation);
    const auto focus = [this](QWidget *page, QWidget *field) {
        if (page != nullptr) {
            m_ui->TabS_Header->show();
            m_ui->TabS_Header->setCurrentWidget(page);
        }
        field->setFocus();
    };
    switch (refusal) {
    case Save_Refusal::No_Folder:
        return focus(nullptr, m_ui->Comb_Cate);
    case Save_Refusal::Create_Date:
        return focus(m_ui->Pag_Addon, m_ui->Txt_Create);
    case Save_Refusal::Update_Date:
        return focus(m_ui->Pag_Addon, m_ui->Txt_Update);
    case Save_Refusal::Title_Too_Long:
        return focus(nullptr, m_ui->Txt_Title);
    case Save_Refusal::Password:
        return focus(m_ui->Pag_Password, m_ui->Txt_Password);
    case Save_Refusal::None:
    case Save_Refusal::Nothing_To_Save:
        return;
    }
}

void Frm_Doc_Standard::Lock_Boolean(bool locked)
{
    for (QTextEdit *pane : {m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum})
        pane->setReadOnly(locked);
}
