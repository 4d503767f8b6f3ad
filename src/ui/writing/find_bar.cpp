// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/writing/find_bar.h"

#include "editor/text_editor.h"
#include "ui/kit/icons.h"
#include "ui_find_bar.h"

#include <QKeyEvent>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace
{
constexpr int Most_Marks = 1000;
constexpr int Pause = 150; // milliseconds without typing before all matches are looked for
const QColor Mark_Color(0xFF, 0xE0, 0x66);
} // namespace

Find_Bar::Find_Bar(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::Find_Bar>()), m_lang(*this, QStringLiteral("Find_Bar"))
{
    m_ui->setupUi(this);
    Load_Lang();
    m_ui->Cmd_Previous->setIcon(Line_Icon(QStringLiteral("up")));
    m_ui->Cmd_Next->setIcon(Line_Icon(QStringLiteral("down")));
    m_ui->Cmd_Close->setIcon(Line_Icon(QStringLiteral("close")));
    m_later.setSingleShot(true);
    m_later.setInterval(Pause);
    connect(&m_later, &QTimer::timeout, this, [this] {
        Search();
        if (std::exchange(m_seeks, false))
            Seek();
    });
    const auto soon = [this] {
        m_later.start();
    };
    connect(m_ui->Inp_Find, &QLineEdit::textChanged, this, soon);
    connect(m_ui->Inp_Find, &QLineEdit::textEdited, this, [this] { m_seeks = true; });
    for (const QCheckBox *choice : {m_ui->Chk_Case, m_ui->Chk_Whole, m_ui->Chk_Pattern})
        connect(choice, &QCheckBox::toggled, this, soon);
    connect(m_ui->Cmd_Next, &QToolButton::clicked, this, [this] { Go(true); });
    connect(m_ui->Cmd_Previous, &QToolButton::clicked, this, [this] { Go(false); });
    connect(m_ui->Cmd_Close, &QToolButton::clicked, this, &Find_Bar::Close);
    connect(m_ui->Cmd_Replace_One, &QPushButton::clicked, this, &Find_Bar::Replace_One);
    connect(m_ui->Cmd_Replace_All, &QPushButton::clicked, this, &Find_Bar::Replace_All);
    m_ui->Inp_Find->installEventFilter(this);
    m_ui->Inp_Replace->installEventFilter(this);
    hide();
}

Find_Bar::~Find_Bar() = default;

void Find_Bar::Load_Lang()
{
    m_lang.LoadControlsCaption();
    for (QWidget *control : std::initializer_list<QWidget *>{m_ui->Cmd_Previous, m_ui->Cmd_Next, m_ui->Cmd_Close})
        control->setAccessibleName(control->toolTip());
}

void Find_Bar::Serve(Editor_Commands &commands)
{
    m_commands = &commands;
    for (Text_Editor *editor : commands.Editors()) {
        connect(editor->document(), &QTextDocument::contentsChanged, this, [this] {
            if (isVisible())
                m_later.start();
        });
        editor->installEventFilter(this);
    }
    connect(&commands, &Editor_Commands::State_Changed, this, [this] {
        if (isVisible() && m_commands->Target() != m_marked)
            m_later.start();
    });
}

void Find_Bar::Answer(Command_Request request)
{
    if (m_commands == nullptr || m_commands->Target() == nullptr)
        return;
    const bool step = request == Command_Request::Find_Next || request == Command_Request::Find_Previous;
    if (step && !m_ui->Inp_Find->text().isEmpty())
        Go(request == Command_Request::Find_Next);
    else
        Open(request == Command_Request::Replace);
}

void Find_Bar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        Close();
    else
        QWidget::keyPressEvent(event);
}

void Find_Bar::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous() && m_marked != nullptr && isHidden())
        m_marked->setExtraSelections({});
    QWidget::hideEvent(event);
}

bool Find_Bar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (watched != m_ui->Inp_Find && watched != m_ui->Inp_Replace) { // a pane
        const bool closes = isVisible() && key->key() == Qt::Key_Escape;
        if (closes)
            Close();
        return closes;
    }
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return false;
    if (watched == m_ui->Inp_Replace)
        Replace_One();
    else
        Go((key->modifiers() & Qt::ShiftModifier) == 0);
    return true;
}

void Find_Bar::Open(bool replacing)
{
    const bool writable = !m_commands->Target()->isReadOnly();
    for (QWidget *control : std::initializer_list<QWidget *>{m_ui->lblReplace, m_ui->Inp_Replace, m_ui->Cmd_Replace_One,
                                                             m_ui->Cmd_Replace_All})
        control->setVisible(replacing && writable);
    const QString selected = m_commands->Target()->textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
        m_ui->Inp_Find->setText(selected);
    show();
    m_ui->Inp_Find->setFocus();
    m_ui->Inp_Find->selectAll();
    Search();
}

void Find_Bar::Close()
{
    m_later.stop();
    hide();
    if (m_commands != nullptr && m_commands->Target() != nullptr)
        m_commands->Target()->setFocus();
}

void Find_Bar::Search()
{
    Text_Editor *editor = m_commands == nullptr ? nullptr : m_commands->Target();
    if (editor == nullptr)
        return;
    if (m_marked != nullptr && m_marked != editor)
        m_marked->setExtraSelections({});
    m_marked = editor;
    m_matches = Searcher().All(*editor->document());
    Mark_Matches(*editor);
    Show_Count();
}

/// Selects the match behind or before the cursor, going on from the other end of the text.
void Find_Bar::Go(bool forward)
{
    m_later.stop();
    m_seeks = false;
    Search();
    if (m_matches.isEmpty())
        return;
    const QTextCursor cursor = m_marked->textCursor();
    const int from = cursor.selectionStart(), to = cursor.selectionEnd();
    auto match = m_matches.cend();
    if (forward) {
        match = std::find_if(m_matches.cbegin(), m_matches.cend(), [&](const Text_Search::Match &one) {
            return one.position >= to || (from == to && one.position >= from);
        });
        if (match == m_matches.cend())
            match = m_matches.cbegin();
    } else {
        while (match != m_matches.cbegin() && std::prev(match)->position >= from)
            --match;
        match = match == m_matches.cbegin() ? std::prev(m_matches.cend()) : std::prev(match);
    }
    Select(*match);
}

/// Goes to the first match from where the selection begins: what is typed on stays at its place while it matches.
void Find_Bar::Seek()
{
    if (m_matches.isEmpty())
        return;
    const int from = m_marked->textCursor().selectionStart();
    const auto match = std::find_if(m_matches.cbegin(), m_matches.cend(),
                                    [&](const Text_Search::Match &one) { return one.position >= from; });
    Select(match == m_matches.cend() ? m_matches.first() : *match);
}

void Find_Bar::Select(const Text_Search::Match &match)
{
    QTextCursor cursor = m_marked->textCursor();
    cursor.setPosition(match.position);
    cursor.setPosition(match.position + match.length, QTextCursor::KeepAnchor);
    m_marked->setTextCursor(cursor);
    m_marked->ensureCursorVisible();
    Show_Count();
}

void Find_Bar::Replace_One()
{
    if (m_commands->Target() == nullptr || m_commands->Target()->isReadOnly())
        return;
    QTextCursor cursor = m_commands->Target()->textCursor();
    if (Searcher().Replace_Selected(cursor, m_ui->Inp_Replace->text()))
        m_commands->Target()->setTextCursor(cursor);
    Go(true);
}

void Find_Bar::Replace_All()
{
    if (m_commands->Target() == nullptr || m_commands->Target()->isReadOnly())
        return;
    const int count = Searcher().Replace_All(*m_commands->Target()->document(), m_ui->Inp_Replace->text());
    Search();
    m_later.stop();
    if (count > 0) // else it tells already why nothing was found
        m_ui->Lab_Count->setText(m_lang.GetString("_Replaced").arg(count));
}

void Find_Bar::Mark_Matches(Text_Editor &editor) const
{
    QList<QTextEdit::ExtraSelection> marks;
    if (isVisible()) {
        for (const Text_Search::Match &match : m_matches.first(std::min<qsizetype>(Most_Marks, m_matches.size()))) {
            QTextEdit::ExtraSelection mark;
            mark.format.setBackground(Mark_Color);
            mark.format.setForeground(QColor(Qt::black));
            mark.cursor = QTextCursor(editor.document());
            mark.cursor.setPosition(match.position);
            mark.cursor.setPosition(match.position + match.length, QTextCursor::KeepAnchor);
            marks << mark;
        }
    }
    editor.setExtraSelections(marks);
}

void Find_Bar::Show_Count()
{
    const Text_Search search = Searcher();
    if (!search.Is_Valid()) {
        m_ui->Lab_Count->setText(m_ui->Inp_Find->text().isEmpty() ? QString() : m_lang.GetString("_Bad_Pattern"));
        return;
    }
    const QTextCursor cursor = m_marked->textCursor();
    const Text_Search::Match selected{cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
    const qsizetype at = m_matches.indexOf(selected);
    const QString count = at >= 0 ? m_lang.GetString("_Count_At").arg(at + 1).arg(m_matches.size())
                                  : m_lang.GetString("_Count").arg(m_matches.size());
    m_ui->Lab_Count->setText(m_matches.isEmpty() ? m_lang.GetString("_None") : count);
}

Text_Search Find_Bar::Searcher() const
{
    return Text_Search({m_ui->Inp_Find->text(), m_ui->Chk_Case->isChecked(), m_ui->Chk_Whole->isChecked(),
                        m_ui->Chk_Pattern->isChecked()});
}
