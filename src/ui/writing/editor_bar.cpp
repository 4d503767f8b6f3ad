// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/writing/editor_bar.h"

#include "editor/character_commands.h"
#include "editor/insert_commands.h"
#include "editor/paragraph_commands.h"
#include "editor/text_editor.h"
#include "platform/models/plain_tip.h"
#include "ui/kit/command_keys.h"
#include "ui/kit/icons.h"
#include "ui/writing/find_bar.h"
#include "ui/writing/frm_goto.h"
#include "ui/writing/frm_insert_table.h"
#include "ui/writing/frm_picture_size.h"
#include "ui/writing/frm_spec_char.h"

#include <QFontComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QToolButton>

namespace
{
constexpr int Swatch = 32;

QIcon Icon_Of(const char *name)
{
    if (*name != '#')
        return *name == '\0' ? QIcon() : Line_Icon(QLatin1String(name));
    QPixmap pixmap(Swatch, Swatch);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor(QLatin1String(name)));
    painter.setPen(QPen(QColor(Qt::gray), 2));
    painter.drawRoundedRect(QRect(QPoint(0, 0), pixmap.size()).adjusted(3, 3, -3, -3), 4, 4);
    return pixmap;
}

QFrame *Line(QWidget *parent)
{
    constexpr int Height = 20;
    auto *line = new QFrame(parent);
    line->setFrameShape(QFrame::VLine);
    line->setFixedHeight(Height);
    line->setForegroundRole(QPalette::Mid);
    line->setFrameShadow(QFrame::Plain);
    return line;
}

QToolButton *Button(QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}
} // namespace

Editor_Bar::Editor_Bar(QWidget *parent)
    : QWidget(parent), m_commands(new Editor_Commands(this)), m_lang(*this, QStringLiteral("Editor_Bar"))
{
    constexpr int Gap = 2, Side = 12, Air = 2;
    m_row = new QHBoxLayout(this);
    m_row->setContentsMargins(Side, Air, Side, Air);
    m_row->setSpacing(Gap);
    Set_Icons();
    Add_Fonts();
    Add_Buttons();
    m_row->addStretch();
    Load_Lang();
    for (const Command_Row &row : Command_Table())
        Command_Keys::Of_Program().Give(*m_commands->Action(QLatin1String(row.name)), Command_Keys::Place::Text);
    connect(&Command_Keys::Of_Program(), &Command_Keys::Changed, this, [this] {
        m_commands->Hear_Keys();
        Set_Tool_Tips();
    });
    connect(m_commands, &Editor_Commands::State_Changed, this, &Editor_Bar::Show_State);
    connect(m_commands, &Editor_Commands::Requested, this, &Editor_Bar::Answer);
}

void Editor_Bar::Load_Lang()
{
    m_lang.LoadControlsCaption();
    Set_Tool_Tips();
}

void Editor_Bar::Serve(const QList<Text_Editor *> &editors, Find_Bar *findBar)
{
    m_find = findBar;
    m_commands->Serve(editors, *parentWidget());
    if (m_find != nullptr)
        m_find->Serve(*m_commands);
}

void Editor_Bar::Add_Fonts()
{
    constexpr int Family_Width = 150, Style_Width = 92;
    m_styles = new QComboBox(this);
    m_styles->setObjectName(QStringLiteral("Comb_Style"));
    m_styles->setProperty("lang_ok", true);
    m_styles->addItem(QStringLiteral("正文"));
    for (int level = 1; level <= Paragraph_Commands::Highest_Heading; ++level)
        m_styles->addItem(QStringLiteral("标题 %1").arg(level));
    m_styles->setFixedWidth(Style_Width);
    m_families = new QFontComboBox(this);
    m_families->setObjectName(QStringLiteral("Comb_FontName"));
    m_families->setFixedWidth(Family_Width);
    m_sizes = new QComboBox(this);
    m_sizes->setObjectName(QStringLiteral("Comb_FontSize"));
    m_sizes->setEditable(true);
    m_sizes->setInsertPolicy(QComboBox::NoInsert);
    for (const int size : {8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36, 48, 72})
        m_sizes->addItem(QString::number(size));
    const auto use = [this](auto &&change) {
        return [this, change](const auto &choice) {
            Text_Editor *editor = m_commands->Target();
            if (editor == nullptr)
                return;
            change(*editor, choice);
            editor->setFocus();
            m_commands->Show_State();
        };
    };
    connect(m_styles, &QComboBox::activated, this, use(&Paragraph_Commands::Set_Heading));
    connect(m_families, &QComboBox::textActivated, this, use(&Character_Commands::Set_Family));
    connect(m_sizes, &QComboBox::textActivated, this, use(&Character_Commands::Set_Size));
    for (QComboBox *combo : {m_styles, static_cast<QComboBox *>(m_families), m_sizes})
        Add(combo);
}

void Editor_Bar::Add(QWidget *item)
{
    m_row->addWidget(item);
    m_items << item;
}

/// What is used most stands first: the others are the first that find no room.
void Editor_Bar::Add_Buttons()
{
    for (const Command_Menu menu :
         {Command_Menu::Edit, Command_Menu::Format, Command_Menu::Insert, Command_Menu::Align}) {
        Add(Line(this));
        for (const Command_Row &row : Command_Table()) {
            if ((row.traits & On_Bar) == 0 || row.menu != menu)
                continue;
            QToolButton *button = Button(this);
            button->setDefaultAction(m_commands->Action(QLatin1String(row.name)));
            Add(button);
        }
        for (const Command_Menu_Row &row : Command_Menus()) {
            if (!row.onBar || row.inside != menu)
                continue;
            QToolButton *button = Button(this);
            button->setMenu(m_commands->Menu(row.menu));
            button->setIcon(Line_Icon(QLatin1String(row.icon)));
            button->setPopupMode(QToolButton::InstantPopup);
            button->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }"));
            Add(button);
        }
    }
    m_more = Button(this);
    m_more->setObjectName(QStringLiteral("Cmd_More"));
    m_more->setText(QStringLiteral("»"));
    m_more->setPopupMode(QToolButton::InstantPopup);
    m_more->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }"));
    m_more->setMenu(new QMenu(m_more));
    connect(m_more->menu(), &QMenu::aboutToShow, this, &Editor_Bar::Fill_More);
    m_row->addWidget(m_more);
}

QSize Editor_Bar::minimumSizeHint() const
{
    const QMargins margins = m_row->contentsMargins();
    int width = m_more->sizeHint().width() + m_row->spacing();
    for (const QComboBox *combo : {m_styles, static_cast<QComboBox *>(m_families), m_sizes})
        width += combo->sizeHint().width() + m_row->spacing();
    return {width + margins.left() + margins.right(), m_sizes->sizeHint().height() + margins.top() + margins.bottom()};
}

void Editor_Bar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Fit();
}

void Editor_Bar::Fit()
{
    const auto width_of = [this](const QWidget &item) {
        return std::clamp(item.sizeHint().width(), item.minimumWidth(), item.maximumWidth()) + m_row->spacing();
    };
    const int room = m_row->contentsRect().width();
    int whole = 0;
    for (const QWidget *item : m_items)
        whole += width_of(*item);
    const bool all = whole <= room;
    int left = room - (all ? 0 : width_of(*m_more));
    for (QWidget *item : m_items) {
        left -= width_of(*item);
        item->setVisible(left >= 0);
    }
    m_more->setVisible(!all);
}

/// What the row has no room for, in its order.
void Editor_Bar::Fill_More()
{
    QMenu &menu = *m_more->menu();
    menu.clear();
    for (const QWidget *item : m_items) {
        const auto *button = qobject_cast<const QToolButton *>(item);
        if (!item->isHidden())
            continue;
        if (button == nullptr)
            menu.addSeparator();
        else if (button->menu() != nullptr)
            menu.addMenu(button->menu());
        else
            menu.addAction(button->defaultAction());
    }
}

void Editor_Bar::Set_Icons()
{
    for (const Command_Row &row : Command_Table())
        m_commands->Action(QLatin1String(row.name))->setIcon(Icon_Of(row.icon));
    for (const Command_Menu_Row &row : Command_Menus())
        m_commands->Menu(row.menu)->setIcon(Icon_Of(row.icon));
}

/// A button says what it does and which keys do the same.
void Editor_Bar::Set_Tool_Tips()
{
    static const QRegularExpression mnemonic(QStringLiteral("\\(&.\\)|&|\\.\\.\\.$"));
    for (const Command_Row &row : Command_Table()) {
        QAction *action = m_commands->Action(QLatin1String(row.name));
        const QString words = action->text().remove(mnemonic).trimmed();
        const QString keys = action->shortcut().toString(QKeySequence::NativeText);
        action->setToolTip(Plain_Tip(keys.isEmpty() ? words : words + QStringLiteral(" (") + keys + QLatin1Char(')')));
    }
    for (QToolButton *button : findChildren<QToolButton *>()) {
        if (button->menu() != nullptr && button != m_more)
            button->setToolTip(Plain_Tip(button->menu()->title().remove(mnemonic).trimmed()));
        button->setAccessibleName(button->toolTip());
    }
    for (QComboBox *combo : {m_styles, static_cast<QComboBox *>(m_families), m_sizes})
        combo->setAccessibleName(combo->toolTip());
}

void Editor_Bar::Show_State()
{
    const Text_Editor *editor = m_commands->Target();
    const bool writable = editor != nullptr && !editor->isReadOnly();
    for (QComboBox *combo : {m_styles, static_cast<QComboBox *>(m_families), m_sizes})
        combo->setEnabled(writable);
    for (QToolButton *button : findChildren<QToolButton *>()) {
        if (button->menu() != nullptr)
            button->setEnabled(writable);
    }
    if (editor == nullptr)
        return;
    const QFont font = editor->currentCharFormat().font().resolve(editor->document()->defaultFont());
    if (m_families->currentText() != font.family())
        m_families->setCurrentFont(font);
    m_sizes->setEditText(QString::number(font.pointSizeF()));
    m_styles->setCurrentIndex(Paragraph_Commands::Heading_Level(*editor));
}

void Editor_Bar::Answer(Command_Request request)
{
    Text_Editor *editor = m_commands->Target();
    if (editor == nullptr)
        return;
    switch (request) {
    case Command_Request::Go_To:
        frm_GoTo(*editor, window()).exec();
        return;
    case Command_Request::New_Table:
        Frm_Insert_Table(*editor, window()).exec();
        return;
    case Command_Request::Picture_Size:
        Frm_Picture_Size(*editor, window()).exec();
        return;
    case Command_Request::Special_Character:
        Frm_SpecChar(*editor, window()).exec();
        return;
    case Command_Request::None:
        return;
    default:
        if (m_find != nullptr)
            m_find->Answer(request);
    }
}
