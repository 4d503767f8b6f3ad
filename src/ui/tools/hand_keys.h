// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/desktop/hot_keys.h"

#include <QObject>
#include <memory>

/// The keys of the program that are heard whichever program is in front, as the settings name them.
class Hand_Keys : public QObject
{
    Q_OBJECT

public:
    enum Key { Window, Note, Keys };

    Hand_Keys();
    ~Hand_Keys() override;

    /// Those of the running program, nullptr before they are begun.
    static Hand_Keys *Present();

    static Hot_Keys::Combination Chosen(Key key);
    static void Choose(Key key, const Hot_Keys::Combination &combination);

    /// Binds what the settings name now.
    void Bind();
    [[nodiscard]] Hot_Keys::Standing Of(Key key) const;
    /// What became of a key, as a sentence; "" while nothing is to say.
    [[nodiscard]] QString Standing_Text(Key key) const;

signals:
    void Pressed(Hand_Keys::Key key);
    void Standing_Changed();

private:
    std::unique_ptr<Hot_Keys> m_keys;
};
