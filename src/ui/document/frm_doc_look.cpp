// SPDX-License-Identifier: GPL-3.0-or-later
//
// What stands around the text: the head, its quiet line, and what is told of the document.

#include "core/language_pack.h"
#include "core/settings_table.h"
#include "editor/word_count.h"
#include "platform/files/paths.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/icons.h"
#include "ui_frm_doc_standard.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QShortcut>
#include <QTabBar>

namespace
{
constexpr int Folder_Width = 180;
constexpr int Keys_Width = 80;
} // namespace

void Frm_Doc_Standard::Set_Up_Look()
{
    setAttribute(Qt::WA_StyledBackground);
    m_ui->Comb_Cate->setMinimumWidth(Folder_Width);
    m_ui->Txt_Keys->setMinimumWidth(Keys_Width);
    const QFontMetrics metrics(m_ui->Txt_Update->font());
    constexpr int Date_Room = 52; // the field's own button and air
    m_ui->Txt_Update->setFixedWidth(metrics.horizontalAdvance(QStringLiteral("2000-00-00")) + Date_Room);
    // Tabs with less air: all of them fit into the column.
    m_ui->TabS_Header->tabBar()->setStyleSheet(QStringLiteral("QTabBar::tab { padding: 6px 5px; }"));
    m_titleKey = new QShortcut(this);
    connect(m_titleKey, &QShortcut::activated, m_ui->Txt_Title, [this] {
        m_ui->Txt_Title->setFocus(Qt::ShortcutFocusReason);
        m_ui->Txt_Title->selectAll();
    });
    connect(m_ui->Txt_Title, &QLineEdit::returnPressed, m_ui->Txt_Content, [this] { m_ui->Txt_Content->setFocus(); });
    auto *usual = new QShortcut(Qt::CTRL | Qt::Key_0, this);
    connect(usual, &QShortcut::activated, this, [this] { Zoom(0); });

    auto *menu = new QMenu(m_ui->Cmd_Look);
    m_ui->Cmd_Look->setMenu(menu);
    m_ui->Cmd_Look->setPopupMode(QToolButton::InstantPopup);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        menu->addAction(Line_Icon(QStringLiteral("zoom_in")), Pack_Text("Frm_Doc_Standard", "_Larger"), this,
                        [this] { Zoom(1); });
        menu->addAction(Line_Icon(QStringLiteral("zoom_out")), Pack_Text("Frm_Doc_Standard", "_Smaller"), this,
                        [this] { Zoom(-1); });
        menu->addAction(Pack_Text("Frm_Doc_Standard", "_Usual_Size"), this, [this] { Zoom(0); });
        menu->addSeparator();
        QAction *below = menu->addAction(Pack_Text("Frm_Doc_Standard", "_Panes_Below"));
        below->setCheckable(true);
        below->setChecked(Is_Shown(Config().Panes_Below));
        connect(below, &QAction::toggled, this, [this](bool on) { Toggle_Pane("Panes_Below", on); });
    });
}

void Frm_Doc_Standard::Set_Up_Facts()
{
    constexpr int Soon = 250; // milliseconds
    m_factsTimer.setSingleShot(true);
    m_factsTimer.setInterval(Soon);
    connect(&m_factsTimer, &QTimer::timeout, this, &Frm_Doc_Standard::Count_Words_Now);
    connect(m_ui->Txt_Content, &QTextEdit::cursorPositionChanged, this, &Frm_Doc_Standard::Tell_Facts);
    connect(m_ui->Txt_Content, &QTextEdit::selectionChanged, &m_factsTimer, qOverload<>(&QTimer::start));
    // The mark has its room at all times: nothing moves when it comes.
    const QFontMetrics metrics(m_ui->Fra_Code_Content->font());
    int room = 0;
    for (const char *key : {"_NeedSave", "_NewDoc"})
        room = std::max(room, metrics.horizontalAdvance(Pack_Text("Frm_Doc_Standard", key) + QStringLiteral("*  ")));
    m_ui->Fra_Code_Content->setMinimumWidth(room);
    m_ui->Fra_Code_Content->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void Frm_Doc_Standard::Tell_Facts()
{
    if (isVisible())
        emit Facts_Changed(Facts());
}

void Frm_Doc_Standard::Count_Words_Now()
{
    constexpr int Most_Characters = 4'000'000;
    if (!isVisible())
        return;
    const QTextCursor cursor = m_ui->Txt_Content->textCursor();
    m_ofSelection = cursor.hasSelection();
    const QTextDocument &whole = *m_ui->Txt_Content->document();
    const int length = m_ofSelection ? cursor.selectionEnd() - cursor.selectionStart() : whole.characterCount();
    m_words =
        length > Most_Characters ? -1 : Count_Words(m_ofSelection ? cursor.selectedText() : whole.toRawText()).words;
    Tell_Facts();
}

Document_Facts Frm_Doc_Standard::Facts() const
{
    Document_Facts facts;
    facts.shown = true;
    facts.unsaved = m_changed;
    facts.saved = QDateTime::fromString(m_session->Stored_When().left(19), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    facts.words = m_words;
    facts.of_selection = m_ofSelection;
    facts.line = m_ui->Txt_Content->Line_Number();
    facts.lines = m_ui->Txt_Content->Line_Count();
    facts.zoom = m_ui->Txt_Content->Zoom();
    facts.mode = Is_Foreign() ? Document_Facts::Mode::Foreign
                 : m_editing  ? Document_Facts::Mode::Editing
                              : Document_Facts::Mode::Reading;
    return facts;
}

void Frm_Doc_Standard::Show_Card()
{
    const bool keeps = Keeps_File();
    m_ui->Pic_Card->setVisible(keeps);
    if (!keeps)
        return;
    const Document_Form &form = m_session->Form();
    const QString path = m_session->Kept_Path();
    if (path.isEmpty()) {
        const QString name = form.title + QLatin1Char('.') + form.type.toLower();
        return m_ui->Pic_Card->Show_File({name, form.type, m_session->Kept_Size(), {}});
    }
    const QFileInfo file(Files::Native_Path(path));
    m_ui->Pic_Card->Show_File({file.fileName(), Is_Foreign() ? form.type : file.suffix().toUpper(), file.size(), path});
}

void Frm_Doc_Standard::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Fit_Quiet_Line();
}

/// Where the room ends the fields of the quiet line stand without their names.
void Frm_Doc_Standard::Fit_Quiet_Line()
{
    const QLayout &line = *m_ui->Lay_Quiet;
    const QMargins margins = line.contentsMargins();
    int needed = margins.left() + margins.right();
    for (int i = 0; i < line.count(); ++i) {
        const QWidget *item = line.itemAt(i)->widget();
        const bool isName = qobject_cast<const QLabel *>(item) != nullptr;
        needed += std::max(isName ? item->sizeHint().width() : item->minimumSizeHint().width(), item->minimumWidth());
        needed += line.spacing();
    }
    for (QLabel *name : {m_ui->Lab_Cate, m_ui->Lab_Star, m_ui->Lab_Done, m_ui->Lab_Keys, m_ui->Lab_Update})
        name->setVisible(needed <= width());
    m_ui->Txt_Keys->setPlaceholderText(needed <= width() ? QString() : m_ui->Txt_Keys->toolTip());
}

/// Whatever was entered beside the text is left to it.
void Frm_Doc_Standard::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !m_ui->Txt_Content->hasFocus())
        return m_ui->Txt_Content->setFocus();
    QWidget::keyPressEvent(event);
}
