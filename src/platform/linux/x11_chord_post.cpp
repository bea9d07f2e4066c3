#include "platform/linux/x11_chord_post.h"

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

// As far as they are modifiers.
X11Keys only(const X11Keys& modifiers, const std::vector<X11Keys>& pressed) {
    X11Keys all;
    for (const X11Keys& each : pressed)
        all |= each;
    return all & modifiers;
}

void fakeKeys(X11Connection& connection, uint8_t kind, const X11Keys& keys) {
    for (std::size_t key = 0; key < keys.size(); ++key) {
        if (keys[key])
            fakeKey(connection, kind, static_cast<xcb_keycode_t>(key));
    }
}

} // namespace

void fakeKey(X11Connection& connection, uint8_t kind, xcb_keycode_t key) {
    xcb_test_fake_input(connection.get(), kind, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
}

void postChord(X11Connection& connection, xcb_keycode_t modifier, xcb_keycode_t key) {
    const X11Keys modifiers = modifierKeys(connection);
    std::vector<X11Keyboard> keyboards = x11Keyboards(connection);
    std::erase_if(keyboards, [](const X11Keyboard& keyboard) { return !keyboard.isReal; });
    const X11Keys expected = only(modifiers, pressedKeys(connection, keyboards));

    // All modifiers, for one may have been pressed since the question; the server drops what isn't down.
    // Other programs that type have to wait.
    xcb_grab_server(connection.get());
    PressedKeysQuestion question(connection, keyboards);
    fakeKeys(connection, XCB_KEY_RELEASE, modifiers);
    fakeKey(connection, XCB_KEY_PRESS, modifier);
    fakeKey(connection, XCB_KEY_PRESS, key);
    fakeKey(connection, XCB_KEY_RELEASE, key);
    fakeKey(connection, XCB_KEY_RELEASE, modifier);
    fakeKeys(connection, XCB_KEY_PRESS, expected);
    xcb_ungrab_server(connection.get());

    const X11Keys held = only(modifiers, question.answers());
    fakeKeys(connection, XCB_KEY_PRESS, held & ~expected);
    fakeKeys(connection, XCB_KEY_RELEASE, expected & ~held);
    // Whoever has let go since would be left with a stuck key.
    fakeKeys(connection, XCB_KEY_RELEASE, held & ~only(modifiers, pressedKeys(connection, keyboards)));
    connection.sync();
}

} // namespace velmora
