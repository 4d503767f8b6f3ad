// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/hot_keys.h"

#include "platform/desktop/desktop_kind.h"
#include "platform/desktop/hot_keys_portal.h"
#include "platform/desktop/hot_keys_x11.h"
#include "platform/desktop/key_table.h"

#include <algorithm>

namespace
{
/// Where nothing hears a key for a program.
class No_Hot_Keys : public Hot_Keys
{
public:
    void Bind(const QList<Wish> &wishes) override
    {
        Forget_Standings();
        for (const Wish &wish : wishes)
            Set_Standing(wish.id, {Way::None, wish.combination.key == 0 ? State::Off : State::No_Way, {}});
    }
};

struct Modifier_Name {
    Hot_Keys::Modifier modifier;
    const char *name;
    const char *trigger;
};

constexpr Modifier_Name Modifier_Names[] = {
    {Hot_Keys::Control, "Ctrl", "CTRL"},
    {Hot_Keys::Alt, "Alt", "ALT"},
    {Hot_Keys::Shift, "Shift", "SHIFT"},
    {Hot_Keys::Logo, "Super", "LOGO"},
};

const Key_Table::Row *Other_Key(int key)
{
    const auto *row = std::find_if(std::begin(Key_Table::Others), std::end(Key_Table::Others),
                                   [key](const Key_Table::Row &other) { return other.key == key; });
    return row == std::end(Key_Table::Others) ? nullptr : row;
}

QString Joined(const Hot_Keys::Combination &combination, const char *Modifier_Name::*word, const QString &key)
{
    QStringList parts;
    for (const Modifier_Name &row : Modifier_Names) {
        if ((combination.modifiers & row.modifier) != 0)
            parts << QLatin1String(row.*word);
    }
    return (parts << key).join(QLatin1Char('+'));
}
} // namespace

std::uint32_t Key_Table::Symbol_Of(int key)
{
    if (Is_Letter(key))
        return static_cast<std::uint32_t>(key - 'A' + 'a');
    if (Is_Digit(key))
        return static_cast<std::uint32_t>(key);
    if (Is_Function_Key(key))
        return First_Function_Symbol + static_cast<std::uint32_t>(key - First_Function_Key);
    const Row *other = Other_Key(key);
    return other == nullptr ? 0 : other->symbol;
}

QString Key_Table::Trigger_Of(const Hot_Keys::Combination &combination)
{
    const Row *other = Other_Key(combination.key);
    const QString name = other != nullptr ? QLatin1String(other->symbol_name) : Hot_Keys::Key_Name(combination.key);
    return Joined(combination, &Modifier_Name::trigger, Is_Letter(combination.key) ? name.toLower() : name);
}

/// A session of Wayland may show the program by X11 too; the keys of other programs are not heard there that way.
std::unique_ptr<Hot_Keys> Hot_Keys::For_This_Desktop()
{
    if (Desktop_Kind::Is_Wayland() && Hot_Keys_Portal::Is_There())
        return std::make_unique<Hot_Keys_Portal>();
    if (Desktop_Kind::Is_X11() && !Desktop_Kind::Is_Wayland())
        return std::make_unique<Hot_Keys_X11>();
    return std::make_unique<No_Hot_Keys>();
}

Hot_Keys::Standing Hot_Keys::Of(const QString &id) const
{
    const auto kept =
        std::find_if(m_standings.begin(), m_standings.end(), [&](const Kept &row) { return row.id == id; });
    return kept == m_standings.end() ? Standing() : kept->standing;
}

void Hot_Keys::Set_Standing(const QString &id, const Standing &standing)
{
    const auto kept =
        std::find_if(m_standings.begin(), m_standings.end(), [&](const Kept &row) { return row.id == id; });
    if (kept == m_standings.end())
        m_standings.append({id, standing});
    else if (kept->standing == standing)
        return;
    else
        kept->standing = standing;
    emit Standing_Changed();
}

QList<int> Hot_Keys::Known_Keys()
{
    QList<int> keys;
    for (int key = 'A'; key <= 'Z'; ++key)
        keys << key;
    for (int key = '0'; key <= '9'; ++key)
        keys << key;
    for (int i = 0; i < Key_Table::Function_Keys; ++i)
        keys << Key_Table::First_Function_Key + i;
    for (const Key_Table::Row &row : Key_Table::Others)
        keys << row.key;
    return keys;
}

QString Hot_Keys::Key_Name(int key)
{
    if (Key_Table::Is_Letter(key) || Key_Table::Is_Digit(key))
        return QString(QChar(key));
    if (Key_Table::Is_Function_Key(key))
        return QLatin1Char('F') + QString::number(key - Key_Table::First_Function_Key + 1);
    const Key_Table::Row *other = Other_Key(key);
    return other == nullptr ? QString() : QLatin1String(other->name);
}

QString Hot_Keys::Text_Of(const Combination &combination)
{
    const QString key = Key_Name(combination.key);
    return key.isEmpty() ? QString() : Joined(combination, &Modifier_Name::name, key);
}
