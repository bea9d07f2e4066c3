#include "platform/linux/x11_held_modifiers.h"

#include "platform/linux/x11_keyboards.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace velmora {
namespace {

constexpr int modifierRows = 8;

bool isLock(xcb_keysym_t symbol) {
    return symbol == XKB_KEY_Caps_Lock || symbol == XKB_KEY_Shift_Lock || symbol == XKB_KEY_Num_Lock ||
           symbol == XKB_KEY_Scroll_Lock;
}

// Without the keys that lock something: letting go of them and pressing them again would switch it over.
X11Keys modifierKeys(X11Connection& connection) {
    xcb_connection_t* x = connection.get();
    const xcb_setup_t* setup = xcb_get_setup(x);
    const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto mapCookie = xcb_get_modifier_mapping(x);
    const auto symbolsCookie = xcb_get_keyboard_mapping(x, setup->min_keycode, count);
    const XcbReply<xcb_get_modifier_mapping_reply_t> map(
        xcb_get_modifier_mapping_reply(x, mapCookie, nullptr));
    const XcbReply<xcb_get_keyboard_mapping_reply_t> symbols(
        xcb_get_keyboard_mapping_reply(x, symbolsCookie, nullptr));
    X11Keys keys;
    if (!map || !symbols)
        return keys;
    const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(map.get());
    const xcb_keysym_t* table = xcb_get_keyboard_mapping_keysyms(symbols.get());
    for (int row = 0; row < modifierRows; ++row) {
        for (int column = 0; column < map->keycodes_per_modifier && row != XCB_MAP_INDEX_LOCK; ++column) {
            const xcb_keycode_t code = codes[row * map->keycodes_per_modifier + column];
            if (code >= setup->min_keycode &&
                !isLock(table[(code - setup->min_keycode) * symbols->keysyms_per_keycode]))
                keys.set(code);
        }
    }
    return keys;
}

// What the session takes to be down.
X11Keys sessionKeys(X11Connection& connection) {
    const XcbReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection.get(), xcb_query_keymap(connection.get()), nullptr));
    return reply ? keysFromBytes(reply->keys) : X11Keys();
}

// What is down on the real keyboards, or on those on which programs type.
X11Keys keyboardKeys(X11Connection& connection, bool real) {
    std::vector<X11Keyboard> keyboards = x11Keyboards(connection);
    std::erase_if(keyboards, [real](const X11Keyboard& keyboard) { return keyboard.isReal != real; });
    X11Keys keys;
    for (const X11Keys& each : pressedKeys(connection, keyboards))
        keys |= each;
    return keys;
}

} // namespace

void fakeKey(X11Connection& connection, uint8_t kind, xcb_keycode_t key) {
    xcb_test_fake_input(connection.get(), kind, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
}

X11HeldModifiers::X11HeldModifiers(X11Connection& connection)
    : m_connection(connection) {
    // A key that was pressed again here and that the user has let go of since is still down on the XTEST
    // keyboard alone, where another press of it would count for nothing.
    const X11Keys held =
        (sessionKeys(connection) | keyboardKeys(connection, false)) & modifierKeys(connection);
    for (std::size_t key = 0; key < held.size(); ++key) {
        if (!held[key])
            continue;
        m_released.push_back(static_cast<xcb_keycode_t>(key));
        fakeKey(m_connection, XCB_KEY_RELEASE, m_released.back());
    }
}

X11HeldModifiers::~X11HeldModifiers() {
    if (m_released.empty())
        return;
    const X11Keys before = keyboardKeys(m_connection, true);
    for (const xcb_keycode_t key : m_released) {
        if (before[key])
            fakeKey(m_connection, XCB_KEY_PRESS, key);
    }
    // Whoever let go between the question and our press would be left with a stuck key.
    const X11Keys after = keyboardKeys(m_connection, true);
    for (const xcb_keycode_t key : m_released) {
        if (before[key] && !after[key])
            fakeKey(m_connection, XCB_KEY_RELEASE, key);
    }
}

} // namespace velmora
