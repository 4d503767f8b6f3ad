// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/command_keys.h"

#include "core/process_state.h"
#include "platform/errors/run_time_error.h"
#include "platform/profile/profile.h"

#include <QMenu>
#include <QRegularExpression>
#include <algorithm>

namespace
{
const QString Section = QStringLiteral("Keys");
const QString No_Keys = QStringLiteral("None"); // an empty value would be none of the user's
constexpr qsizetype Most_Keys = 4;              // of one command, in a file that anybody may have written

QString Config_Path()
{
    return App().App_Path + QStringLiteral("Config.ini");
}

Command_Keys::Keys Keys_Of_Text(const QString &text)
{
    Command_Keys::Keys keys;
    for (const QKeySequence &key : QKeySequence::listFromString(text)) {
        const bool isKnown = !key.isEmpty() && key[0].key() != Qt::Key_unknown;
        if (isKnown && !keys.contains(key) && keys.size() < Most_Keys)
            keys << key;
    }
    return keys;
}
} // namespace

Command_Keys &Command_Keys::Of_Program()
{
    static Command_Keys keys;
    return keys;
}

void Command_Keys::Read_Chosen()
{
    if (m_readFrom == App().App_Path)
        return;
    m_readFrom = App().App_Path;
    m_chosen.clear();
    Profile::Snapshot file;
    try {
        file = Profile::Snapshot(Config_Path());
    } catch (const Run_Time_Error &) {
        return; // who reads the settings has told it
    }
    for (const QString &name : file.Keys(Section)) {
        const QString text = file.Value(Section, name);
        const Keys keys = Keys_Of_Text(text);
        if (!keys.isEmpty() || text.compare(No_Keys, Qt::CaseInsensitive) == 0)
            m_chosen.insert(name, keys);
    }
}

Command_Keys::Entry *Command_Keys::Find(const QString &name)
{
    const auto found = std::ranges::find(m_entries, name, &Entry::name);
    return found == m_entries.end() ? nullptr : &*found;
}

void Command_Keys::Give(QAction &action, Place place, const QString &name)
{
    Read_Chosen();
    const QString command = name.isEmpty() ? action.objectName() : name;
    Entry *entry = Find(command);
    if (entry == nullptr) {
        Keys prescribed = action.shortcuts();
        prescribed.removeAll(QKeySequence());
        entry = &m_entries.emplace_back(Entry{command, place, prescribed, {}});
    }
    if (entry->actions.contains(&action))
        return;
    entry->actions.removeAll(nullptr);
    entry->actions.append(&action);
    if (const Keys keys = Of(command); keys != action.shortcuts())
        action.setShortcuts(keys);
}

void Command_Keys::Give_Menus(const QList<QAction *> &entries)
{
    for (QAction *action : entries) {
        if (action->menu() != nullptr)
            Give_Menus(action->menu()->actions());
        else if (const Entry *entry = Find(action->objectName());
                 !action->objectName().isEmpty() && (entry == nullptr || entry->place == Place::Window))
            Give(*action);
    }
}

QList<Command_Keys::Command> Command_Keys::Commands() const
{
    static const QRegularExpression accessKey(QStringLiteral("\\(&.\\)|&|\\.\\.\\.$"));
    QList<Command> commands;
    for (const Entry &entry : m_entries) {
        const auto alive = std::ranges::find_if(entry.actions, [](const QPointer<QAction> &action) {
            return action != nullptr && !action->text().isEmpty();
        });
        if (alive != entry.actions.end())
            commands.append({entry.name, entry.place, entry.prescribed, (*alive)->text().remove(accessKey).trimmed()});
    }
    return commands;
}

Command_Keys::Keys Command_Keys::Of(const QString &name) const
{
    if (const auto chosen = m_chosen.constFind(name); chosen != m_chosen.constEnd())
        return *chosen;
    const Entry *entry = Find(name);
    return entry == nullptr ? Keys() : entry->prescribed;
}

void Command_Keys::Change(const QHash<QString, Keys> &changes)
{
    Read_Chosen();
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        Entry *entry = Find(change.key());
        if (entry == nullptr || change.value() == Of(change.key()))
            continue;
        const bool isPrescribed = change.value() == entry->prescribed;
        const QString text =
            change.value().isEmpty() ? No_Keys : QKeySequence::listToString(change.value(), QKeySequence::PortableText);
        Profile::Write(Config_Path(), Section, change.key(), isPrescribed ? QString() : text);
        if (isPrescribed)
            m_chosen.remove(change.key());
        else
            m_chosen.insert(change.key(), change.value());
    }
    // What a command gives away goes before another one gets it.
    for (const bool giving : {true, false}) {
        for (auto change = changes.begin(); change != changes.end(); ++change) {
            const Entry *entry = Find(change.key());
            for (const QPointer<QAction> &action : entry == nullptr ? QList<QPointer<QAction>>() : entry->actions) {
                if (action != nullptr)
                    action->setShortcuts(giving ? Keys() : Of(change.key()));
            }
        }
    }
    emit Changed();
}
