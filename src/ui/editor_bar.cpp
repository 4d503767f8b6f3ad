// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/editor_bar.h"

#include "editor/character_commands.h"
#include "editor/text_editor.h"
#include "ui/icons.h"

#include <QFontComboBox>
#include <QHBoxLayout>
#include <QToolButton>

Editor_Bar::Editor_Bar(QWidget *parent)
    : QWidget(parent), m_commands(new Editor_Commands(this)), m_lang(*this, QStringLiteral("Editor_Bar"))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    Add_Fonts();
    for (const Command_Row &command : Command_Table()) {
        if (*command.icon != '\0')
            Add_Button(command.name);
    }
    Load_Lang();
    connect(m_commands, &Editor_Commands::State_Changed, this, &Editor_Bar::Show_State);
}

void Editor_Bar::Load_Lang()
{
    m_lang.LoadControlsCaption();
}

void Editor_Bar::Commit_Composition() const
{
    for (Text_Editor *editor : m_commands->Editors())
        editor->Commit_Composition();
}

void Editor_Bar::Add_Fonts()
{
    constexpr int Family_Width = 190;
    m_families = new QFontComboBox(this);
    m_families->setObjectName(QStringLiteral("Comb_FontName"));
    m_families->setMaximumWidth(Family_Width);
    m_families->setAccessibleName(QStringLiteral("字体"));
    m_sizes = new QComboBox(this);
    m_sizes->setObjectName(QStringLiteral("Comb_FontSize"));
    m_sizes->setEditable(true);
    m_sizes->setAccessibleName(QStringLiteral("字号"));
    for (const int size : {8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 36, 48})
        m_sizes->addItem(QString::number(size));
    layout()->addWidget(m_families);
    layout()->addWidget(m_sizes);
    connect(m_families, &QComboBox::textActivated, this, [this](const QString &family) {
        Character_Commands::Set_Family(*m_commands->Target(), family);
        m_commands->Target()->setFocus();
    });
    connect(m_sizes, &QComboBox::textActivated, this, [this](const QString &size) {
        Character_Commands::Set_Size(*m_commands->Target(), size);
        m_commands->Target()->setFocus();
    });
}

void Editor_Bar::Add_Button(const char *name)
{
    QAction *action = m_commands->Action(QLatin1String(name));
    const auto row = std::find_if(Command_Table().begin(), Command_Table().end(),
                                  [name](const Command_Row &one) { return qstrcmp(one.name, name) == 0; });
    action->setIcon(Line_Icon(QLatin1String(row->icon)));
    auto *button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setDefaultAction(action);
    layout()->addWidget(button);
}

void Editor_Bar::Show_State()
{
    const Text_Editor *editor = m_commands->Target();
    setEnabled(editor != nullptr);
    if (editor == nullptr)
        return;
    const QFont font = editor->currentCharFormat().font().resolve(editor->document()->defaultFont());
    m_families->setCurrentFont(font);
    m_sizes->setEditText(QString::number(font.pointSizeF()));
}
