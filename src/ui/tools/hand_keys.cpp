// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/hand_keys.h"

#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/settings.h"

#include <algorithm>

namespace
{
Hand_Keys *Running = nullptr;

/// The setting of the window's key stands in the record; that of the note is read by nobody else. What the file of an
/// older version lacks is Alt+Shift with the window's letter.
struct Row {
    const char *id; ///< for the desktop, which may keep its user's choice under it
    const char *modifiers;
    const char *key;
    Hot_Keys::Combination usual;
    const char *description;
};

constexpr Row Rows[] = {
    {"window", "Shift", "Key", {Hot_Keys::Alt, 'I'}, "_Key_Window"},
    {"note", "Note_Shift", "Note_Key", {Hot_Keys::Alt | Hot_Keys::Shift, 'I'}, "_Key_Note"},
};
const QString Section = QStringLiteral("RegKey");

int Number(const char *key, int usual)
{
    bool isNumber = false;
    const int number = GetIni(Section, QLatin1String(key)).toInt(&isNumber);
    return isNumber ? number : usual;
}
} // namespace

Hand_Keys::Hand_Keys() : m_keys(Hot_Keys::For_This_Desktop())
{
    Running = this;
    connect(m_keys.get(), &Hot_Keys::Pressed, this, [this](const QString &id) {
        for (int key = 0; key < Keys; ++key) {
            if (id == QLatin1String(Rows[key].id))
                emit Pressed(static_cast<Key>(key));
        }
    });
    connect(m_keys.get(), &Hot_Keys::Standing_Changed, this, &Hand_Keys::Standing_Changed);
}

Hand_Keys::~Hand_Keys()
{
    Running = nullptr;
}

Hand_Keys *Hand_Keys::Present()
{
    return Running;
}

Hot_Keys::Combination Hand_Keys::Chosen(Key key)
{
    const Row &row = Rows[key];
    return {Number(row.modifiers, row.usual.modifiers), Number(row.key, row.usual.key)};
}

void Hand_Keys::Choose(Key key, const Hot_Keys::Combination &combination)
{
    const QString modifiers = QString::number(combination.modifiers);
    const QString number = QString::number(combination.key);
    WriteIni(Section, QLatin1String(Rows[key].modifiers), modifiers);
    WriteIni(Section, QLatin1String(Rows[key].key), number);
    if (key == Window) {
        Config().Shift = modifiers;
        Config().Key = number;
    }
}

void Hand_Keys::Bind()
{
    QList<Hot_Keys::Wish> wishes;
    for (int key = 0; key < Keys; ++key)
        wishes.append({QLatin1String(Rows[key].id), Chosen(static_cast<Key>(key)),
                       Pack_Text("Page_Hand", Rows[key].description)});
    m_keys->Bind(wishes);
}

Hot_Keys::Standing Hand_Keys::Of(Key key) const
{
    return m_keys->Of(QLatin1String(Rows[key].id));
}

QString Hand_Keys::Standing_Text(Key key) const
{
    const Hot_Keys::Standing standing = Of(key);
    const QString chosen = Hot_Keys::Text_Of(Chosen(key));
    const auto text = [&](const char *words) {
        return Filled(Pack_Text("Page_Hand", words), {standing.trigger.isEmpty() ? chosen : standing.trigger});
    };
    switch (standing.state) {
    case Hot_Keys::State::Bound:
        return text(standing.way == Hot_Keys::Way::X11 ? "_Bound_X11" : "_Bound_Portal");
    case Hot_Keys::State::Held:
        return text("_Held");
    case Hot_Keys::State::No_Key:
        return text("_No_Key");
    case Hot_Keys::State::Refused:
        return text("_Refused");
    case Hot_Keys::State::Waiting:
        return text("_Waiting");
    case Hot_Keys::State::No_Way:
        return text("_No_Way");
    case Hot_Keys::State::Off:
        break;
    }
    return text("_Off");
}
