// SPDX-License-Identifier: GPL-3.0-or-later
//
// The panes, their places and sizes, and the buttons of the form.

#include "core/language_pack.h"
#include "core/settings_table.h"
#include "editor/character_commands.h"
#include "ui/document/document_page.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/document/kept_setting.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"
#include "ui_frm_doc_standard.h"

#include <QSignalBlocker>
#include <QTextDocumentFragment>

namespace
{
constexpr int Narrowest_Pane = 60;
/// What stands beside or below the text takes at most this part of the room.
constexpr double Most_Beside = 0.42;

int Stored_Size(const QString &setting)
{
    return std::max(setting.toInt(), Narrowest_Pane);
}
} // namespace

void Frm_Doc_Standard::Set_Up_Panes()
{
    auto *fold = new QToolButton(m_ui->TabS_Header);
    fold->setObjectName(QStringLiteral("U_UpDown"));
    fold->setAutoRaise(true);
    fold->setIcon(Line_Icon(QStringLiteral("next")));
    fold->setToolTip(m_ui->Chk_Addon_Title->toolTip());
    fold->setAccessibleName(fold->toolTip());
    m_ui->TabS_Header->setCornerWidget(fold);
    connect(fold, &QToolButton::clicked, m_ui->Chk_Addon_Title, &QToolButton::toggle);
    m_ui->Txt_Content->Use_Column(true);
    for (Text_Editor *pane : {m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum})
        connect(pane, &Text_Editor::Zoom_Wanted, this, &Frm_Doc_Standard::Zoom);

    for (QSplitter *splitter : {m_ui->Pic_Panes, m_ui->Pic_Body}) {
        splitter->setStretchFactor(0, 1);
        splitter->setStretchFactor(1, 0);
    }
    m_widthTimer.setSingleShot(true);
    m_widthTimer.setInterval(500);
    connect(&m_widthTimer, &QTimer::timeout, this, &Frm_Doc_Standard::Keep_Widths);
    for (QSplitter *splitter : {m_ui->Pic_Panes, m_ui->Pic_Body, m_ui->Pic_Below})
        connect(splitter, &QSplitter::splitterMoved, &m_widthTimer, qOverload<>(&QTimer::start));

    connect(m_ui->Chk_Memo_Title, &QToolButton::toggled, this, [this](bool on) { Toggle_Pane("ViewMemo", on); });
    connect(m_ui->Chk_Sum_Title, &QToolButton::toggled, this, [this](bool on) { Toggle_Pane("ViewSum", on); });
    connect(m_ui->Chk_Addon_Title, &QToolButton::toggled, this, [this](bool on) { Toggle_Pane("M_FILE", on); });
}

void Frm_Doc_Standard::Set_Up_Tools()
{
    struct Tool {
        QToolButton *button;
        const char *icon;
    };
    const Tool tools[] = {
        {m_ui->Lbl_Previous, "previous"},    {m_ui->Lbl_Next, "next"},
        {m_ui->Chk_Read_Title, "edit"},      {m_ui->Chk_Addon_Title, "pane-facts"},
        {m_ui->Chk_Memo_Title, "pane-memo"}, {m_ui->Chk_Sum_Title, "pane-sum"},
        {m_ui->Img_Tool_Action_0, "take"},   {m_ui->Img_Tool_Action_1, "take"},
        {m_ui->Img_Tool_Action_3, "take"},   {m_ui->Cmd_Del, "delete"},
        {m_ui->Cmd_Look, "text_size"},
    };
    for (const Tool &tool : tools)
        tool.button->setIcon(Line_Icon(QLatin1String(tool.icon)));
    m_ui->Lbl_Previous->setShortcut(Qt::ALT | Qt::Key_PageUp);
    m_ui->Lbl_Next->setShortcut(Qt::ALT | Qt::Key_PageDown);
    connect(m_ui->Lbl_Previous, &QToolButton::clicked, this, [this] { Step(-1); });
    connect(m_ui->Lbl_Next, &QToolButton::clicked, this, [this] { Step(1); });
    connect(m_ui->Cmd_Del, &QToolButton::clicked, this,
            [this] { m_shell.Delete_Documents({Code_Id()}, Asked_In::Form); });
    connect(&m_ui->Pic_Card->Opener(), &QToolButton::clicked, this, &Frm_Doc_Standard::Open_Outside);
    connect(m_ui->Chk_Read_Title, &QToolButton::clicked, this, &Frm_Doc_Standard::Set_Edit_Mode);
    connect(m_ui->Img_Tool_Action_0, &QToolButton::clicked, this, [this] { Take_Selection(m_ui->Txt_Title); });
    connect(m_ui->Img_Tool_Action_1, &QToolButton::clicked, this, [this] { Take_Selection(m_ui->Txt_Keys); });
    connect(m_ui->Img_Tool_Action_3, &QToolButton::clicked, this, [this] { Take_Selection(m_ui->Txt_Explain); });
}

void Frm_Doc_Standard::Adjuest_Memo()
{
    constexpr uint Plain = 0xFFFFFF; // white stands for the skin's own
    const uint ground = Config().Col_Cont.isValid() ? Config().Col_Cont.toUInt() : Plain;
    m_ui->Txt_Content->Set_Ground(ground == Plain ? QColor() : Character_Commands::Stored_Color(ground));
    const bool all = static_cast<Page_Look>(m_viewMode) != Page_Look::Writing;
    const bool facts = Is_On(&Settings_Record::M_FILE), memo = Is_On(&Settings_Record::ViewMemo),
               sum = Is_On(&Settings_Record::ViewSum);
    const struct {
        QWidget *pane;
        QToolButton *button;
        bool shown;
    } panes[] = {
        {m_ui->TabS_Header, m_ui->Chk_Addon_Title, facts},
        {m_ui->Pic_Memo, m_ui->Chk_Memo_Title, memo},
        {m_ui->Pic_Sum, m_ui->Chk_Sum_Title, sum},
    };
    const bool low = Is_On(&Settings_Record::Panes_Below);
    Place_Panes(low);
    for (const auto &one : panes) {
        const QSignalBlocker blocker(one.button);
        one.pane->setVisible(all && one.shown);
        one.button->setChecked(one.shown);
    }
    const bool beside = all && (facts || (!low && (memo || sum)));
    const bool below = all && low && (memo || sum);
    m_ui->Pic_Beside->setVisible(beside);
    m_ui->Pic_Below->setVisible(below);
    Size_Panes(beside, below);
    for (Text_Editor *pane : {m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum})
        pane->Set_Zoom(Config().Text_Zoom.toInt());
    m_factsTimer.start();
}

/// Memo and summary stand below the text, or under the facts.
void Frm_Doc_Standard::Place_Panes(bool below)
{
    QSplitter *place = below ? m_ui->Pic_Below : m_ui->Pic_Beside;
    for (QWidget *pane : {m_ui->Pic_Memo, m_ui->Pic_Sum}) {
        if (pane->parentWidget() != place)
            place->addWidget(pane);
    }
}

/// The column is as wide as the widest of what stands in it wants.
void Frm_Doc_Standard::Size_Panes(bool beside, bool below)
{
    const int memo = Stored_Size(Config().Txt_Memo_Width), sum = Stored_Size(Config().Txt_Sum_Width);
    const auto wanted = [](const QWidget *pane, int width) {
        return pane->isHidden() ? 0 : width;
    };
    int width = wanted(m_ui->TabS_Header, Stored_Size(Config().Facts_Width));
    if (!below)
        width = std::max({width, wanted(m_ui->Pic_Memo, memo), wanted(m_ui->Pic_Sum, sum)});
    const int whole = m_ui->Pic_Panes->width(), high = m_ui->Pic_Body->height();
    width = beside ? std::min(width, static_cast<int>(whole * Most_Beside)) : 0;
    const int height = below ? std::min(Stored_Size(Config().Below_Height), static_cast<int>(high * Most_Beside)) : 0;
    m_ui->Pic_Panes->setSizes({whole - width, width});
    m_ui->Pic_Body->setSizes({high - height, height});
    m_ui->Pic_Below->setSizes({memo, sum});
}

void Frm_Doc_Standard::Toggle_Pane(const char *setting, bool on)
{
    Keep_Switch(setting, on);
    m_shell.Panes_Changed();
    Adjuest_Memo();
}

void Frm_Doc_Standard::Keep_Widths()
{
    const int column = m_ui->Pic_Panes->sizes().value(1);
    const QList<int> lower = m_ui->Pic_Below->sizes();
    const bool below = m_ui->Pic_Below->isVisible();
    const struct {
        const char *key;
        const QWidget *pane;
        int size;
    } sizes[] = {
        {"Facts_Width", m_ui->TabS_Header, column},
        {"Txt_Memo_Width", m_ui->Pic_Memo, below ? lower.value(0) : column},
        {"Txt_Sum_Width", m_ui->Pic_Sum, below ? lower.value(1) : column},
        {"Below_Height", m_ui->Pic_Below, m_ui->Pic_Body->sizes().value(1)},
    };
    for (const auto &row : sizes) {
        if (row.pane->isVisible() && row.size > 0)
            Keep_Setting(row.key, QString::number(row.size));
    }
}

void Frm_Doc_Standard::Zoom(int step)
{
    constexpr int Steps[] = {50, 67, 80, 90, 100, 110, 120, 135, 150, 175, 200, 250, 300, 400};
    const int now = Config().Text_Zoom.toInt();
    const auto chosen = [&] {
        if (step == 0)
            return Initial_Value(Setting_Named(QStringLiteral("Text_Zoom"))).toInt();
        return step > 0 ? *std::find_if(std::begin(Steps), std::end(Steps) - 1, [&](int one) { return one > now; })
                        : *std::find_if(std::rbegin(Steps), std::rend(Steps) - 1, [&](int one) { return one < now; });
    };
    const int next = chosen();
    if (next == now)
        return;
    Keep_Setting("Text_Zoom", QString::number(next));
    Adjuest_Memo();
    m_shell.Panes_Changed();
    m_shell.Set_Status(Pack_Text("Frm_Doc_Standard", "_Zoom").arg(next));
}

void Frm_Doc_Standard::Set_Edit_Mode(bool on)
{
    m_editing = on && !m_session->Is_Partial() && !Is_Foreign();
    const QSignalBlocker blocker(m_ui->Chk_Read_Title);
    m_ui->Chk_Read_Title->setChecked(m_editing);
    Lock_Boolean(!m_editing);
    for (Document_Page *page : m_pages)
        page->Set_Changeable(!m_session->Is_Partial() && (m_editing || Is_Foreign()));
    m_factsTimer.start();
    emit Mark_Changed();
}

void Frm_Doc_Standard::Lock_Boolean(bool locked)
{
    for (Text_Editor *pane : {m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum}) {
        pane->setReadOnly(locked);
        pane->setTabChangesFocus(locked);
        // Text that is read is still walked through and copied by keyboard.
        if (locked)
            pane->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    m_ui->Bar_Editor->setEnabled(!locked);
    m_ui->Bar_Editor->setVisible(!locked);
    m_ui->Pag_Password->setEnabled(!Is_Foreign()); // its content is never written here
}

void Frm_Doc_Standard::Set_Editor()
{
    m_ui->Lbl_Previous->setEnabled(!m_shell.Neighbour(Code_Id(), -1).isEmpty());
    m_ui->Lbl_Next->setEnabled(!m_shell.Neighbour(Code_Id(), 1).isEmpty());
    m_ui->Cmd_Del->setEnabled(!Code_Id().isEmpty());
    m_ui->Chk_Read_Title->setEnabled(!m_session->Is_Partial() && !Is_Foreign());
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
