// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QHash>
#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QPointer>
#include <vector>

/// The one place where commands get their keys: the user's own, which stand in section [Keys] of Config.ini, or the
/// prescribed ones. A command may have many actions, as the editor has one for each document; all follow a change.
class Command_Keys : public QObject
{
    Q_OBJECT

public:
    using Keys = QList<QKeySequence>;

    /// Where keys are heard: in the whole window, or while a part of it has the keyboard.
    enum class Place { Window, Tree, List, Text, Tags, Attachments };

    struct Command {
        QString name; ///< of the action
        Place place;
        Keys prescribed;
        QString caption; ///< without its access key
    };

    static Command_Keys &Of_Program();

    /// Takes an action that has its prescribed keys, and gives it those that are in force. It may be given twice.
    /// @param name  of the command, where that is not the action's own
    void Give(QAction &action, Place place = Place::Window, const QString &name = {});
    /// Takes the commands of menus, and of the menus inside them, that nobody has given.
    void Give_Menus(const QList<QAction *> &entries);

    /// Every command that has an action now, in the order in which they came.
    [[nodiscard]] QList<Command> Commands() const;
    [[nodiscard]] Keys Of(const QString &name) const;
    /// Keeps keys for the commands that are named; the prescribed ones leave nothing in the file.
    /// @throws Run_Time_Error when the file cannot be written; nothing has changed then.
    void Change(const QHash<QString, Keys> &changes);

    /// Whether keys of both places can be meant by one press.
    static bool Meet(Place one, Place other) { return one == other || one == Place::Window || other == Place::Window; }

signals:
    void Changed();

private:
    struct Entry {
        QString name;
        Place place;
        Keys prescribed;
        QList<QPointer<QAction>> actions;
    };

    Command_Keys() = default;
    void Read_Chosen();
    [[nodiscard]] Entry *Find(const QString &name);
    [[nodiscard]] const Entry *Find(const QString &name) const { return const_cast<Command_Keys *>(this)->Find(name); }

    std::vector<Entry> m_entries;
    QHash<QString, Keys> m_chosen;
    QString m_readFrom; ///< the program directory whose file was read
};
