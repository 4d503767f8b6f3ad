// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/hot_keys_x11.h"

#include "platform/desktop/key_table.h"

#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace
{
constexpr std::uint32_t Num_Lock_Symbol = 0xff7f; // X11/keysymdef.h
constexpr std::uint32_t Scroll_Lock_Symbol = 0xff14;
constexpr std::uint8_t Event_Kind = 0x7f; // the highest bit says that another program sent it

struct Modifier_Mask {
    Hot_Keys::Modifier modifier;
    std::uint16_t mask;
};

constexpr Modifier_Mask Masks[] = {
    {Hot_Keys::Alt, XCB_MOD_MASK_1},
    {Hot_Keys::Control, XCB_MOD_MASK_CONTROL},
    {Hot_Keys::Shift, XCB_MOD_MASK_SHIFT},
    {Hot_Keys::Logo, XCB_MOD_MASK_4},
};

template <class Reply>
std::unique_ptr<Reply, decltype(&std::free)> Held(Reply *reply)
{
    return {reply, &std::free};
}
} // namespace

Hot_Keys_X11::Hot_Keys_X11()
{
    m_connection = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    m_root = xcb_setup_roots_iterator(setup).data->root;
    m_firstCode = setup->min_keycode;
    const QByteArray name = "XKEYBOARD";
    const auto extension = Held(xcb_query_extension_reply(
        m_connection, xcb_query_extension(m_connection, static_cast<std::uint16_t>(name.size()), name.constData()),
        nullptr));
    m_keyboardEvent = extension && extension->present != 0 ? extension->first_event : 0;
    constexpr int Soon = 500; // milliseconds: a new layout comes as many events
    m_layoutChanged.setSingleShot(true);
    m_layoutChanged.setInterval(Soon);
    connect(&m_layoutChanged, &QTimer::timeout, this, [this] { Bind(QList<Wish>(m_wishes)); });
    qGuiApp->installNativeEventFilter(this);
}

Hot_Keys_X11::~Hot_Keys_X11()
{
    qGuiApp->removeNativeEventFilter(this);
    Release_All();
}

void Hot_Keys_X11::Bind(const QList<Wish> &wishes)
{
    Release_All();
    m_wishes = wishes;
    Read_Keyboard();
    for (const Wish &wish : wishes)
        Set_Standing(wish.id, {Way::X11, wish.combination.key == 0 ? State::Off : Grab_Key(wish), {}});
}

void Hot_Keys_X11::Read_Keyboard()
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    const auto keyboard = Held(xcb_get_keyboard_mapping_reply(
        m_connection,
        xcb_get_keyboard_mapping(m_connection, setup->min_keycode,
                                 static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1)),
        nullptr));
    m_symbols.clear();
    if (!keyboard)
        return;
    m_symbolsPerCode = keyboard->keysyms_per_keycode;
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(keyboard.get());
    m_symbols = QList<std::uint32_t>(symbols, symbols + xcb_get_keyboard_mapping_keysyms_length(keyboard.get()));

    const auto modifiers =
        Held(xcb_get_modifier_mapping_reply(m_connection, xcb_get_modifier_mapping(m_connection), nullptr));
    m_numLock = m_scrollLock = 0;
    if (!modifiers || modifiers->keycodes_per_modifier == 0)
        return;
    const xcb_keycode_t *codes = xcb_get_modifier_mapping_keycodes(modifiers.get());
    const QList<std::uint8_t> numLock = Codes_Of(Num_Lock_Symbol);
    const QList<std::uint8_t> scrollLock = Codes_Of(Scroll_Lock_Symbol);
    for (int i = 0; i < xcb_get_modifier_mapping_keycodes_length(modifiers.get()); ++i) {
        const auto mask = static_cast<std::uint16_t>(1 << (i / modifiers->keycodes_per_modifier));
        if (numLock.contains(codes[i]))
            m_numLock = mask;
        if (scrollLock.contains(codes[i]))
            m_scrollLock = mask;
    }
}

/// All keys that bear a symbol, in whichever of their layouts.
QList<std::uint8_t> Hot_Keys_X11::Codes_Of(std::uint32_t symbol) const
{
    QList<std::uint8_t> codes;
    for (qsizetype i = 0; i < m_symbols.size(); ++i) {
        const auto code = static_cast<std::uint8_t>(m_firstCode + i / m_symbolsPerCode);
        if (m_symbols[i] == symbol && !codes.contains(code))
            codes << code;
    }
    return codes;
}

QList<std::uint16_t> Hot_Keys_X11::Lock_Mixtures() const
{
    QList<std::uint16_t> mixtures{0};
    for (const std::uint16_t lock : {static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK), m_numLock, m_scrollLock}) {
        const QList<std::uint16_t> before = mixtures;
        for (const std::uint16_t mixture : before) {
            const auto with = static_cast<std::uint16_t>(mixture | lock);
            if (!mixtures.contains(with))
                mixtures << with;
        }
    }
    return mixtures;
}

Hot_Keys::State Hot_Keys_X11::Grab_Key(const Wish &wish)
{
    std::uint16_t modifiers = 0;
    for (const Modifier_Mask &row : Masks) {
        if ((wish.combination.modifiers & row.modifier) != 0)
            modifiers = static_cast<std::uint16_t>(modifiers | row.mask);
    }
    const std::uint32_t symbol = Key_Table::Symbol_Of(wish.combination.key);
    const QList<std::uint8_t> codes = symbol == 0 ? QList<std::uint8_t>() : Codes_Of(symbol);
    if (codes.isEmpty())
        return State::No_Key;
    const std::uint8_t code = codes.first();
    for (const Grab &other : m_grabs) {
        if (other.code == code && other.modifiers == modifiers)
            return State::Held; // by this program, for something else
    }
    if (!Grab_Code(code, modifiers))
        return State::Held;
    m_grabs.append({wish.id, code, modifiers, false});
    return State::Bound;
}

/// All mixtures of the locks or none: a key that is heard now and then is worse than one that is not.
bool Hot_Keys_X11::Grab_Code(std::uint8_t code, std::uint16_t modifiers)
{
    QList<xcb_void_cookie_t> asked;
    for (const std::uint16_t locks : Lock_Mixtures())
        asked << xcb_grab_key_checked(m_connection, 0, m_root, static_cast<std::uint16_t>(modifiers | locks), code,
                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    bool all = true;
    for (const xcb_void_cookie_t &cookie : asked)
        all = !Held(xcb_request_check(m_connection, cookie)) && all;
    if (!all)
        Release_Code(code, modifiers);
    return all;
}

void Hot_Keys_X11::Release_Code(std::uint8_t code, std::uint16_t modifiers)
{
    for (const std::uint16_t locks : Lock_Mixtures())
        xcb_ungrab_key(m_connection, code, m_root, static_cast<std::uint16_t>(modifiers | locks));
    xcb_flush(m_connection);
}

void Hot_Keys_X11::Release_All()
{
    for (const Grab &grab : m_grabs)
        Release_Code(grab.code, grab.modifiers);
    m_grabs.clear();
}

bool Hot_Keys_X11::nativeEventFilter(const QByteArray &eventType, void *message, qintptr * /*result*/)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const int kind = event->response_type & Event_Kind;
    const bool sent = (event->response_type & ~Event_Kind) != 0;
    if ((kind == XCB_KEY_PRESS || kind == XCB_KEY_RELEASE) && !sent) { // nobody else presses keys here
        const auto *key = static_cast<const xcb_key_press_event_t *>(message);
        if (key->event == m_root)
            Heard(key->detail, key->state, kind == XCB_KEY_PRESS);
    } else if (kind == XCB_MAPPING_NOTIFY || (m_keyboardEvent != 0 && kind == m_keyboardEvent)) {
        constexpr std::uint8_t New_Keyboard = 0;
        constexpr std::uint8_t New_Map = 1; // the kinds of the extension's event, behind its first byte
        const bool map = kind == XCB_MAPPING_NOTIFY || event->pad0 == New_Keyboard || event->pad0 == New_Map;
        if (map && !m_wishes.isEmpty())
            m_layoutChanged.start();
    }
    return false; // the toolkit learns the time of the event, without which no window comes forward
}

/// A key that is held down repeats itself: it counts once.
void Hot_Keys_X11::Heard(std::uint8_t code, std::uint16_t state, bool pressed)
{
    constexpr std::uint16_t Counted = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
    for (Grab &grab : m_grabs) {
        if (grab.code != code || (pressed && (state & Counted) != grab.modifiers))
            continue;
        const bool repeated = grab.down && pressed;
        grab.down = pressed;
        if (!pressed || repeated)
            continue;
        const QString id = grab.id;
        QMetaObject::invokeMethod(
            this, [this, id] { emit Pressed(id); }, Qt::QueuedConnection);
        return;
    }
}
