// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <memory>

/// Keys that are heard whichever program is in front. They end with the object.
class Hot_Keys : public QObject
{
    Q_OBJECT

public:
    /// Modifiers as the settings keep them; together a mask.
    enum Modifier { Alt = 1, Control = 2, Shift = 4, Logo = 8 };

    /// A key by the numbers that the settings keep: that of a letter or digit is its capital's character code.
    struct Combination {
        int modifiers = 0;
        int key = 0;
        bool operator==(const Combination &) const = default;
    };
    struct Wish {
        QString id; ///< for who asks, and for the desktop, which may keep the user's own choice under it
        Combination combination;
        QString description; ///< what the desktop tells the user of it
    };

    /// Who hears a key for the program.
    enum class Way { None, X11, Portal };
    enum class State {
        Off,     ///< no key is wanted
        Waiting, ///< the desktop was asked and has not answered
        Bound,
        Held,    ///< another program has it
        No_Key,  ///< this keyboard has no such key
        Refused, ///< the desktop or its user said no
        No_Way,  ///< nothing here hears a key for a program
    };
    struct Standing {
        Way way = Way::None;
        State state = State::Off;
        QString trigger; ///< the key that the desktop bound, in its words; "" where it is the one that was wished
        bool operator==(const Standing &) const = default;
    };

    /// For the desktop that the program runs on.
    static std::unique_ptr<Hot_Keys> For_This_Desktop();

    /// Binds these keys in the place of those before.
    virtual void Bind(const QList<Wish> &wishes) = 0;
    [[nodiscard]] Standing Of(const QString &id) const;

    /// The keys that can be wished, in the order in which a list shows them.
    static QList<int> Known_Keys();
    /// A key as it is written on keyboards, "" for one that cannot be wished.
    static QString Key_Name(int key);
    /// Both together, as "Ctrl+Alt+I"; "" where there is no key.
    static QString Text_Of(const Combination &combination);

signals:
    void Pressed(const QString &id);
    /// What became of a wish is another thing now.
    void Standing_Changed();

protected:
    struct Kept {
        QString id;
        Standing standing;
    };
    void Set_Standing(const QString &id, const Standing &standing);
    void Forget_Standings() { m_standings.clear(); }

private:
    QList<Kept> m_standings;
};
