// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/config_keys.h"

#include "core/language_pack.h"
#include "ui/kit/view_look.h"
#include "ui/program/config_words.h"
#include "ui/program/program_config_pages.h"
#include "ui_config_keys.h"

#include <algorithm>

namespace
{
enum Column { Caption, Place, Key_Text };

QString Text(const char *key)
{
    return Pack_Text("Frm_Config", key);
}

QString Place_Text(Command_Keys::Place place)
{
    static const char *const keys[] = {"_Place_Window", "_Place_Tree", "_Place_List",
                                       "_Place_Text",   "_Place_Tags", "_Place_Attachments"};
    return Text(keys[static_cast<size_t>(place)]);
}

QString Shown(const Command_Keys::Keys &keys)
{
    return QKeySequence::listToString(keys, QKeySequence::NativeText);
}
} // namespace

Config_Page *Program_Pages::Make_Keys(QWidget *parent)
{
    return new Config_Keys(parent);
}

Config_Keys::Config_Keys(QWidget *parent) : Config_Page(parent), m_ui(std::make_unique<Ui::Config_Keys>())
{
    m_ui->setupUi(this);
    for (QPushButton *button : findChildren<QPushButton *>())
        button->setAutoDefault(false);
    connect(m_ui->Lsv_Keys, &QTreeWidget::currentItemChanged, this, &Config_Keys::Show_Command);
    connect(m_ui->Txt_Key_Find, &QLineEdit::textChanged, this, &Config_Keys::Filter);
    connect(m_ui->Txt_Key_Press, &Key_Field::Pressed, this, &Config_Keys::Filter);
    connect(m_ui->Cmd_Key_All, &QPushButton::clicked, this, [this] {
        m_ui->Txt_Key_Press->Set_Key({});
        m_ui->Txt_Key_Find->clear();
        Filter();
    });
    connect(m_ui->Txt_Key, &Key_Field::Pressed, this, [this](const QKeySequence &key) { Want({key}); });
    connect(m_ui->Cmd_Key_None, &QPushButton::clicked, this, [this] { Want({}); });
    connect(m_ui->Cmd_Key_Default, &QPushButton::clicked, this, [this] {
        if (const Command_Keys::Command *command = Chosen())
            Want(command->prescribed);
    });
    connect(m_ui->Cmd_Key_Take, &QPushButton::clicked, this, &Config_Keys::Take);
}

Config_Keys::~Config_Keys() = default;

void Config_Keys::Show_Settings()
{
    m_ui->Txt_Key_Find->setPlaceholderText(Text("_Key_Find"));
    m_ui->Txt_Key_Find->setAccessibleName(Text("_Key_Find"));
    m_ui->Txt_Key_Press->setPlaceholderText(Text("_Key_Press"));
    m_ui->Txt_Key_Press->setAccessibleName(Text("_Key_Press"));
    m_ui->Txt_Key->setPlaceholderText(Text("_Key_Here"));
    m_ui->Lsv_Keys->setAccessibleName(Text("_Commands"));
    m_commands = Command_Keys::Of_Program().Commands();
    m_changes.clear();
    Fill();
}

void Config_Keys::Fill()
{
    m_ui->Lsv_Keys->clear();
    for (const Command_Keys::Command &command : m_commands)
        new QTreeWidgetItem(m_ui->Lsv_Keys, {command.caption, Place_Text(command.place), Shown(Of(command.name))});
    for (const int column : {Caption, Place})
        Fit_Column(*m_ui->Lsv_Keys, column);
    m_ui->Lsv_Keys->setCurrentItem(m_ui->Lsv_Keys->topLevelItem(0));
    Show_Command();
}

Config_Keys::Keys Config_Keys::Of(const QString &name) const
{
    const auto changed = m_changes.constFind(name);
    return changed != m_changes.constEnd() ? *changed : Command_Keys::Of_Program().Of(name);
}

const Command_Keys::Command *Config_Keys::Chosen() const
{
    const int row = m_ui->Lsv_Keys->indexOfTopLevelItem(m_ui->Lsv_Keys->currentItem());
    return row < 0 ? nullptr : &m_commands[row];
}

void Config_Keys::Show_Command()
{
    const Command_Keys::Command *command = Chosen();
    for (QWidget *control : {static_cast<QWidget *>(m_ui->Txt_Key), static_cast<QWidget *>(m_ui->Cmd_Key_None),
                             static_cast<QWidget *>(m_ui->Cmd_Key_Default)})
        control->setEnabled(command != nullptr);
    m_ui->Txt_Key->Set_Key(command == nullptr ? QKeySequence() : Of(command->name).value(0));
    Show_Conflict({}, false);
}

void Config_Keys::Filter()
{
    const QString text = m_ui->Txt_Key_Find->text().trimmed();
    const QKeySequence key = m_ui->Txt_Key_Press->Key();
    QTreeWidgetItem *first = nullptr;
    for (int row = 0; row < m_commands.size(); ++row) {
        const Command_Keys::Command &command = m_commands[row];
        const bool fits = (command.caption + u' ' + command.name).contains(text, Qt::CaseInsensitive) &&
                          (key.isEmpty() || Of(command.name).contains(key));
        QTreeWidgetItem *item = m_ui->Lsv_Keys->topLevelItem(row);
        item->setHidden(!fits);
        if (fits && first == nullptr)
            first = item;
    }
    QTreeWidgetItem *present = m_ui->Lsv_Keys->currentItem();
    if (present == nullptr || present->isHidden())
        m_ui->Lsv_Keys->setCurrentItem(first);
}

QList<Command_Keys::Command> Config_Keys::Owners(const Command_Keys::Command &wanting, const Keys &keys) const
{
    QList<Command_Keys::Command> owners;
    for (const Command_Keys::Command &command : m_commands) {
        if (command.name == wanting.name || !Command_Keys::Meet(command.place, wanting.place))
            continue;
        const Keys own = Of(command.name);
        if (std::ranges::any_of(keys, [&](const QKeySequence &key) { return own.contains(key); }))
            owners << command;
    }
    return owners;
}

void Config_Keys::Want(const Keys &keys)
{
    const Command_Keys::Command *command = Chosen();
    if (command == nullptr)
        return;
    if (keys.size() == 1 && Key_Field::Writes_Text(keys.first()) && !command->prescribed.contains(keys.first()))
        return Show_Conflict(Text("_Why_Key"), false);
    const QList<Command_Keys::Command> owners = Owners(*command, keys);
    if (owners.isEmpty()) {
        Assign(command->name, keys);
        return Show_Conflict({}, false);
    }
    m_wanted = keys;
    QStringList captions;
    for (const Command_Keys::Command &owner : owners)
        captions << owner.caption;
    Show_Conflict(Filled(Text("_Key_Taken"), {Shown(keys), Pack_List(captions)}), true);
}

void Config_Keys::Take()
{
    const Command_Keys::Command *command = Chosen();
    if (command == nullptr)
        return;
    for (const Command_Keys::Command &owner : Owners(*command, m_wanted)) {
        Keys left = Of(owner.name);
        left.removeIf([&](const QKeySequence &key) { return m_wanted.contains(key); });
        Assign(owner.name, left);
    }
    Assign(command->name, m_wanted);
    Show_Conflict({}, false);
    m_ui->Txt_Key->setFocus();
}

void Config_Keys::Assign(const QString &name, const Keys &keys)
{
    if (keys == Command_Keys::Of_Program().Of(name))
        m_changes.remove(name);
    else
        m_changes.insert(name, keys);
    const auto command = std::ranges::find(m_commands, name, &Command_Keys::Command::name);
    m_ui->Lsv_Keys->topLevelItem(static_cast<int>(command - m_commands.begin()))->setText(Key_Text, Shown(keys));
    if (&*command == Chosen())
        m_ui->Txt_Key->Set_Key(keys.value(0));
    emit Edited();
}

void Config_Keys::Show_Conflict(const QString &text, bool canTake)
{
    m_ui->Lab_Conflict->setText(text);
    m_ui->Txt_Key->setAccessibleDescription(text);
    m_ui->Cmd_Key_Take->setVisible(canTake);
}

void Config_Keys::Show_Defaults()
{
    for (const Command_Keys::Command &command : m_commands)
        Assign(command.name, command.prescribed);
    Show_Command();
}

void Config_Keys::Save()
{
    Command_Keys::Of_Program().Change(m_changes);
    m_changes.clear();
}

QList<Config_Hit> Config_Keys::Find(const Config_Words &words, const QString &text) const
{
    QList<Config_Hit> hits;
    if (words.Answer({QStringLiteral("Pag_Keys"), QStringLiteral("Lab_Key")}, text))
        hits.append({m_ui->Txt_Key});
    constexpr qsizetype Most = 20;
    for (int row = 0; row < m_commands.size() && hits.size() < Most; ++row) {
        if (!words.Answer({}, text, {m_commands[row].caption, m_commands[row].name}))
            continue;
        hits.append({m_ui->Lsv_Keys, [this, row] {
                         m_ui->Cmd_Key_All->click();
                         m_ui->Lsv_Keys->setCurrentItem(m_ui->Lsv_Keys->topLevelItem(row));
                     }});
    }
    return hits;
}
