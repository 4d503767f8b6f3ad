// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_config.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/prompts/prompts.h"
#include "ui/program/config_mark.h"
#include "ui/program/config_words.h"
#include "ui/program/program_config_pages.h"
#include "ui_frm_config.h"

#include <QKeyEvent>
#include <QScrollArea>
#include <QShortcut>
#include <algorithm>

namespace
{
constexpr int Least_Left = 180, Entry_Padding = 14;
constexpr QMargins Caption_Margins(16, 8, 16, 8);
const QString Changed_Mark = QStringLiteral(" •");
} // namespace

Frm_Config::Frm_Config(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Config>())
{
    m_ui->setupUi(this);
    m_mark = new Config_Mark(this);
    Add_Pages();
    m_lang.LoadControlsCaption();
    Name_Pages();
    for (const Page &page : m_pages)
        page.page->Show_Settings();
    Connect_Controls();
    m_ui->Lst_Pages->setCurrentRow(0);
    m_ui->Txt_Search->setFocus();
}

Frm_Config::~Frm_Config() = default;

void Frm_Config::Add_Pages()
{
    for (const Program_Pages::Row &row : Program_Pages::All()) {
        Config_Page *page = row.make != nullptr ? row.make(nullptr) : new Rows_Page(row.rows, nullptr);
        Add_Page(page, row.name, QString::fromUtf8(row.words));
    }
    for (const Config_Pages::Row &row : Config_Pages::All())
        Add_Page(row.make(nullptr), "", {});
}

/// @param name  of the caption in the section of this form; "" for a page that knows its own
void Frm_Config::Add_Page(Config_Page *page, const char *name, const QString &words)
{
    constexpr double Larger = 1.3;
    auto *around = new QWidget;
    auto *layout = new QVBoxLayout(around);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *caption = new QLabel(words, around);
    caption->setObjectName(QLatin1String(name));
    caption->setContentsMargins(Caption_Margins);
    QFont font = caption->font();
    font.setPointSizeF(font.pointSizeF() * Larger);
    caption->setFont(font);
    layout->addWidget(caption);
    layout->addWidget(page, 1);
    auto *area = new QScrollArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(around);
    m_ui->Stk_Pages->addWidget(area);
    m_pages.push_back({new QListWidgetItem(m_ui->Lst_Pages), area, page, caption});
    connect(page, &Config_Page::Edited, this, &Frm_Config::Show_State);
}

/// What the language control cannot know: captions that stand in two places, and names for a screen reader.
void Frm_Config::Name_Pages()
{
    for (Page &page : m_pages) {
        if (page.caption->objectName().isEmpty())
            page.caption->setText(page.page->windowTitle());
        page.entry->setText(page.caption->text());
        page.entry->setSizeHint({0, fontMetrics().height() + Entry_Padding});
        page.area->setAccessibleName(page.caption->text());
    }
    m_ui->Txt_Search->setPlaceholderText(m_lang.GetString("_Search"));
    m_ui->Txt_Search->setAccessibleName(m_lang.GetString("_Search"));
    m_ui->Lst_Pages->setAccessibleName(m_lang.GetString("_Pages"));
    const int width = m_ui->Lst_Pages->sizeHintForColumn(0) + 24 + fontMetrics().horizontalAdvance(Changed_Mark);
    m_ui->Lst_Pages->setFixedWidth(std::max(width, Least_Left));
    m_ui->Txt_Search->setFixedWidth(m_ui->Lst_Pages->width());
    m_ui->Lab_Found->hide();
    m_ui->Lab_Found->setFixedWidth(m_ui->Lst_Pages->width());
    for (QWidget *control : findChildren<QWidget *>()) {
        if (control->accessibleName().isEmpty() && control->property("Setting").isValid())
            control->setAccessibleName(control->toolTip());
    }
}

void Frm_Config::Connect_Controls()
{
    connect(m_ui->Lst_Pages, &QListWidget::currentRowChanged, this, &Frm_Config::Open_Page);
    connect(m_ui->Txt_Search, &QLineEdit::textChanged, this, &Frm_Config::Search);
    m_ui->Txt_Search->installEventFilter(this);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_ui->Txt_Search,
            qOverload<>(&QWidget::setFocus));
    connect(m_ui->Cmd_Default, &QPushButton::clicked, this, [this] { Current().page->Show_Defaults(); });
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_Config::Apply);
    connect(m_ui->Cmd_OK, &QPushButton::clicked, this, &Frm_Config::Take_All);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &QDialog::reject);
}

Frm_Config::Page &Frm_Config::Current()
{
    return m_pages[static_cast<size_t>(std::max(0, m_ui->Stk_Pages->currentIndex()))];
}

void Frm_Config::Open_Page(int index)
{
    m_ui->Stk_Pages->setCurrentIndex(index);
    Show_State();
}

/// A page that holds what is not stored yet says so in the list.
void Frm_Config::Show_State()
{
    for (const Page &page : m_pages)
        page.entry->setText(page.caption->text() + (page.page->Is_Changed() ? Changed_Mark : QString()));
    m_ui->Cmd_Default->setEnabled(Current().page->Has_Defaults());
    m_ui->Cmd_Apply->setEnabled(Current().page->Is_Changed() && Current().page->Refused() == nullptr);
    m_ui->Lab_Note->clear();
}

void Frm_Config::Search(const QString &text)
{
    if (m_words == nullptr)
        m_words = std::make_unique<Config_Words>();
    m_hits.clear();
    for (size_t i = 0; i < m_pages.size(); ++i) {
        const QList<Config_Hit> hits =
            text.trimmed().isEmpty() ? QList<Config_Hit>() : m_pages[i].page->Find(*m_words, text.trimmed());
        for (const Config_Hit &hit : hits)
            m_hits.push_back({i, hit});
        m_pages[i].entry->setHidden(hits.isEmpty() && !text.trimmed().isEmpty());
    }
    if (m_hits.empty() && !text.trimmed().isEmpty()) { // a search without a result takes nothing away
        for (const Page &page : m_pages)
            page.entry->setHidden(false);
    }
    Show_Hit(m_hits.empty() ? -1 : 0);
}

void Frm_Config::Show_Hit(int index)
{
    m_hit = index;
    const QString none = m_ui->Txt_Search->text().trimmed().isEmpty() ? QString() : m_lang.GetString("_Not_Found");
    m_ui->Lab_Found->setHidden(m_ui->Txt_Search->text().trimmed().isEmpty());
    m_ui->Lab_Found->setText(
        index < 0 ? none
                  : Filled(m_lang.GetString("_Found"), {QString::number(index + 1), QString::number(m_hits.size())}));
    if (index < 0)
        return m_mark->Put_Around(nullptr);
    const Hit &hit = m_hits[static_cast<size_t>(index)];
    m_ui->Lst_Pages->setCurrentItem(m_pages[hit.page].entry);
    if (hit.hit.show)
        hit.hit.show();
    m_pages[hit.page].area->ensureWidgetVisible(hit.hit.control);
    m_mark->Put_Around(hit.hit.control);
}

/// From the box of the search, Down and Up go through what was found, and Enter goes to the control.
bool Frm_Config::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_ui->Txt_Search || event->type() != QEvent::KeyPress || m_hits.empty())
        return QDialog::eventFilter(watched, event);
    const int count = static_cast<int>(m_hits.size());
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Down:
        Show_Hit((m_hit + 1) % count);
        return true;
    case Qt::Key_Up:
        Show_Hit((m_hit + count - 1) % count);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_hits[static_cast<size_t>(m_hit)].hit.control->setFocus(Qt::ShortcutFocusReason);
        return true;
    default:
        return QDialog::eventFilter(watched, event);
    }
}

/// @returns false when something is refused; the user is at it then
bool Frm_Config::Store(Page &page)
{
    if (QWidget *refused = page.page->Refused()) {
        m_ui->Lst_Pages->setCurrentItem(page.entry);
        page.area->ensureWidgetVisible(refused);
        refused->setFocus();
        return false;
    }
    return Trap(
        QStringLiteral("Frm_Config\\Cmd_Apply_Click"),
        [&] {
            page.page->Save();
            return true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
}

void Frm_Config::Apply()
{
    if (!Store(Current()))
        return;
    emit Settings_Changed();
    Show_State();
    m_ui->Lab_Note->setText(m_lang.GetString("_SetOK"));
}

void Frm_Config::Take_All()
{
    bool changed = false;
    bool stored = true;
    for (Page &page : m_pages) {
        if (!page.page->Is_Changed())
            continue;
        stored = Store(page);
        if (!stored)
            break;
        changed = true;
    }
    if (changed)
        emit Settings_Changed();
    if (stored)
        return accept();
    Show_State();
}
