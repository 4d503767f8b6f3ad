// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/settings.h"
#include "editor/character_commands.h"
#include "ui/document/document_page.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"
#include "ui_frm_doc_standard.h"

#include <QSignalBlocker>
#include <QTextDocumentFragment>

namespace
{
constexpr int Narrowest_Pane = 60;

int Stored_Width(const QString &setting)
{
    return std::max(setting.toInt(), Narrowest_Pane);
}
} // namespace

void Frm_Doc_Standard::Set_Up_Panes()
{
    auto *fold = new QToolButton(m_ui->TabS_Header);
    fold->setObjectName(QStringLiteral("U_UpDown"));
    fold->setAutoRaise(true);
    fold->setIcon(Line_Icon(QStringLiteral("up")));
    fold->setToolTip(m_ui->Chk_Addon_Title->toolTip());
    fold->setAccessibleName(fold->toolTip());
    m_ui->TabS_Header->setCornerWidget(fold);
    constexpr uint Plain = 0xFFFFFF; // white stands for the skin's own
    if (const uint ground = Config().Col_Cont.toUInt(); Config().Col_Cont.isValid() && ground != Plain)
        m_ui->Txt_Content->Set_Ground(Character_Commands::Stored_Color(ground));
    connect(fold, &QToolButton::clicked, m_ui->Chk_Addon_Title, &QToolButton::toggle);

    for (int i = 0; i < m_ui->Pic_Panes->count(); ++i)
        m_ui->Pic_Panes->setStretchFactor(i, i == 0 ? 1 : 0);
    m_widthTimer.setSingleShot(true);
    m_widthTimer.setInterval(500);
    connect(&m_widthTimer, &QTimer::timeout, this, &Frm_Doc_Standard::Keep_Widths);
    connect(m_ui->Pic_Panes, &QSplitter::splitterMoved, &m_widthTimer, qOverload<>(&QTimer::start));

    connect(m_ui->Chk_Memo_Title, &QToolButton::toggled, this,
            [this](bool on) { Toggle_Pane(Config().ViewMemo, "Col", "ViewMemo", on, false); });
    connect(m_ui->Chk_Sum_Title, &QToolButton::toggled, this,
            [this](bool on) { Toggle_Pane(Config().ViewSum, "Col", "ViewSum", on, false); });
    connect(m_ui->Chk_Addon_Title, &QToolButton::toggled, this,
            [this](bool on) { Toggle_Pane(Config().M_FILE, "Page", "M_FILE", on, true); });
}

void Frm_Doc_Standard::Set_Up_Tools()
{
    struct Tool {
        QToolButton *button;
        const char *icon;
    };
    const Tool tools[] = {
        {m_ui->Cmd_Outside, "open"},
        {m_ui->Lbl_Previous, "previous"},
        {m_ui->Lbl_Next, "next"},
        {m_ui->Chk_Read_Title, "edit"},
        {m_ui->Chk_Addon_Title, "pane-facts"},
        {m_ui->Chk_Memo_Title, "pane-memo"},
        {m_ui->Chk_Sum_Title, "pane-sum"},
        {m_ui->Img_Tool_Action_0, "take"},
        {m_ui->Img_Tool_Action_1, "take"},
        {m_ui->Img_Tool_Action_3, "take"},
        {m_ui->Cmd_Del, "delete"},
    };
    for (const Tool &tool : tools)
        tool.button->setIcon(Line_Icon(QLatin1String(tool.icon)));
    m_ui->Lbl_Previous->setShortcut(Qt::ALT | Qt::Key_PageUp);
    m_ui->Lbl_Next->setShortcut(Qt::ALT | Qt::Key_PageDown);
    connect(m_ui->Lbl_Previous, &QToolButton::clicked, this, [this] { Step(-1); });
    connect(m_ui->Lbl_Next, &QToolButton::clicked, this, [this] { Step(1); });
    connect(m_ui->Cmd_Del, &QToolButton::clicked, this,
            [this] { m_shell.Delete_Documents({m_form.code_id}, Asked_In::Form); });
    connect(m_ui->Cmd_Outside, &QToolButton::clicked, this, &Frm_Doc_Standard::Open_Outside);
    connect(m_ui->Chk_Read_Title, &QToolButton::clicked, this, &Frm_Doc_Standard::Set_Edit_Mode);
    connect(m_ui->Img_Tool_Action_0, &QToolButton::clicked, this, [this] { Take_Selection(m_ui->Txt_Title); });
    connect(m_ui->Img_Tool_Action_1, &QToolButton::clicked, this, [this] { Take_Selection(m_ui->Txt_Keys); });
    connect(m_ui->Img_Tool_Action_3, &QToolButton::clicked, this, [this] { Take_Selection(m_ui->Txt_Explain); });
}

void Frm_Doc_Standard::Adjuest_Memo()
{
    const bool all = static_cast<Page_Look>(m_viewMode) != Page_Look::Writing;
    const struct {
        QWidget *pane;
        QToolButton *button;
        bool shown;
    } panes[] = {
        {m_ui->Pic_Memo, m_ui->Chk_Memo_Title, Is_Shown(Config().ViewMemo)},
        {m_ui->Pic_Sum, m_ui->Chk_Sum_Title, Is_Shown(Config().ViewSum)},
        {m_ui->TabS_Header, m_ui->Chk_Addon_Title, Is_Shown(Config().M_FILE)},
    };
    for (const auto &one : panes) {
        const QSignalBlocker blocker(one.button);
        one.pane->setVisible(all && one.shown);
        one.button->setChecked(one.shown);
    }
    const int memo = Stored_Width(Config().Txt_Memo_Width);
    const int sum = Stored_Width(Config().Txt_Sum_Width);
    const int shown = (Is_Shown(Config().ViewMemo) ? memo : 0) + (Is_Shown(Config().ViewSum) ? sum : 0);
    const int body = std::max(m_ui->Pic_Panes->width() - shown, Narrowest_Pane);
    m_ui->Pic_Panes->setSizes({body, memo, sum});
}

void Frm_Doc_Standard::Toggle_Pane(QString &setting, const char *section, const char *key, bool on, bool capitals)
{
    setting = on ? QStringLiteral("True") : QStringLiteral("False");
    if (capitals)
        setting = setting.toUpper();
    WriteIni(QLatin1String(section), QLatin1String(key), setting);
    m_shell.Panes_Changed();
    Adjuest_Memo();
}

void Frm_Doc_Standard::Keep_Widths()
{
    const QList<int> sizes = m_ui->Pic_Panes->sizes();
    const auto keep = [](QString &setting, const char *key, int width) {
        if (width <= 0)
            return;
        setting = QString::number(width);
        WriteIni(QStringLiteral("Col"), QLatin1String(key), setting);
    };
    keep(Config().Txt_Memo_Width, "Txt_Memo_Width", m_ui->Pic_Memo->isVisible() ? sizes.value(1) : 0);
    keep(Config().Txt_Sum_Width, "Txt_Sum_Width", m_ui->Pic_Sum->isVisible() ? sizes.value(2) : 0);
}

void Frm_Doc_Standard::Set_Edit_Mode(bool on)
{
    m_editing = on && !m_partial && !Is_Foreign();
    const QSignalBlocker blocker(m_ui->Chk_Read_Title);
    m_ui->Chk_Read_Title->setChecked(m_editing);
    Lock_Boolean(!m_editing);
    for (Document_Page *page : m_pages)
        page->Set_Changeable(!m_partial && (m_editing || Is_Foreign()));
    emit Mark_Changed();
}

void Frm_Doc_Standard::Lock_Boolean(bool locked)
{
    for (QTextEdit *pane : {m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum}) {
        pane->setReadOnly(locked);
        // Text that is read is still walked through and copied by keyboard.
        if (locked)
            pane->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    m_ui->Bar_Editor->setEnabled(!locked);
    m_ui->Bar_Editor->setVisible(!Is_Foreign());
    m_ui->Cmd_Outside->setVisible(Is_Foreign());
    m_ui->Pag_Password->setEnabled(!Is_Foreign()); // its content is never written here
}

void Frm_Doc_Standard::Set_Editor()
{
    m_ui->Lbl_Previous->setEnabled(!m_shell.Neighbour(m_form.code_id, -1).isEmpty());
    m_ui->Lbl_Next->setEnabled(!m_shell.Neighbour(m_form.code_id, 1).isEmpty());
    m_ui->Cmd_Del->setEnabled(!m_form.code_id.isEmpty());
    m_ui->Chk_Read_Title->setEnabled(!m_partial && !Is_Foreign());
}

QString Frm_Doc_Standard::Selected_Text() const
{
    return m_ui->Txt_Content->textCursor().selection().toPlainText().simplified();
}

void Frm_Doc_Standard::Take_Selection(QLineEdit *field)
{
    const QString text = Selected_Text();
    if (text.isEmpty()) {
        m_shell.Set_Status(Pack_Text("Frm_Doc_Standard", "_Select_First"));
        return;
    }
    field->setText(text); // takes what there is room for
    if (field->text().size() < text.size())
        m_shell.Set_Status(Pack_Text("Frm_Doc_Standard", "_Cut_To_Fit").arg(field->text().size()));
    Show_Modify();
    emit Mark_Changed();
}
