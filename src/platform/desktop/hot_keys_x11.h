// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/desktop/hot_keys.h"

#include <QAbstractNativeEventFilter>
#include <QTimer>
#include <cstdint>

struct xcb_connection_t;
struct xcb_get_keyboard_mapping_reply_t;

/// Keys that an X server hears for the program: grabbed on the root window, with every mixture of the locks, which
/// change nothing for a user. They are grabbed anew when the keyboard has another layout.
class Hot_Keys_X11 : public Hot_Keys, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    Hot_Keys_X11();
    ~Hot_Keys_X11() override;

    void Bind(const QList<Wish> &wishes) override;
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    struct Grab {
        QString id;
        std::uint8_t code = 0;
        std::uint16_t modifiers = 0;
        bool down = false;
    };
    void Read_Keyboard();
    [[nodiscard]] QList<std::uint8_t> Codes_Of(std::uint32_t symbol) const;
    [[nodiscard]] QList<std::uint16_t> Lock_Mixtures() const;
    State Grab_Key(const Wish &wish);
    bool Grab_Code(std::uint8_t code, std::uint16_t modifiers);
    void Release_Code(std::uint8_t code, std::uint16_t modifiers);
    void Release_All();
    void Heard(std::uint8_t code, std::uint16_t state, bool pressed);

    xcb_connection_t *m_connection = nullptr;
    std::uint32_t m_root = 0;
    int m_keyboardEvent = 0; ///< the events of the keyboard extension have this number
    std::uint16_t m_numLock = 0;
    std::uint16_t m_scrollLock = 0;
    std::uint8_t m_firstCode = 0;
    int m_symbolsPerCode = 0;
    QList<std::uint32_t> m_symbols;
    QList<Wish> m_wishes;
    QList<Grab> m_grabs;
    QTimer m_layoutChanged;
};
