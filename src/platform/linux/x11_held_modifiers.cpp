#include "platform/linux/x11_held_modifiers.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace velmora {
namespace {

// Shift, Lock and Control have their places in the modifier map, the others are Mod1 to Mod5.
constexpr int lockRow = 1;
constexpr int modifierRows = 8;
constexpr uint32_t firstLockSymbol = 0xffe5; // Caps_Lock and Shift_Lock
constexpr uint32_t lastLockSymbol = 0xffe6;
constexpr uint32_t numLockSymbol = 0xff7f;
constexpr uint32_t scrollLockSymbol = 0xff14;

bool isLock(uint32_t symbol) {
    return (symbol >= firstLockSymbol && symbol <= lastLockSymbol) || symbol == numLockSymbol ||
           symbol == scrollLockSymbol;
}

std::bitset<256> fromBytes(const uint8_t* bytes) {
    std::bitset<256> keys;
    for (std::size_t key = 0; key < keys.size(); ++key)
        keys[key] = bytes[key / 8] & (1 << (key % 8));
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
    const Keys held = (pressedKeys() | pressedKeys(Keyboards::Synthetic)) & modifierKeys();
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
    const Keys before = pressedKeys(Keyboards::Physical);
    for (const xcb_keycode_t key : m_released) {
        if (before[key])
            fakeKey(m_connection, XCB_KEY_PRESS, key);
    }
    // Whoever let go between the question and our press would be left with a stuck key.
    const Keys after = pressedKeys(Keyboards::Physical);
    for (const xcb_keycode_t key : m_released) {
        if (before[key] && !after[key])
            fakeKey(m_connection, XCB_KEY_RELEASE, key);
    }
    m_connection.flush();
}

// Without the keys that lock something: letting go of them and pressing them again would switch it over.
X11HeldModifiers::Keys X11HeldModifiers::modifierKeys() const {
    xcb_connection_t* x = m_connection.get();
    const xcb_setup_t* setup = xcb_get_setup(x);
    const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto mapCookie = xcb_get_modifier_mapping(x);
    const auto symbolsCookie = xcb_get_keyboard_mapping(x, setup->min_keycode, count);
    const XcbReply<xcb_get_modifier_mapping_reply_t> map(
        xcb_get_modifier_mapping_reply(x, mapCookie, nullptr));
    const XcbReply<xcb_get_keyboard_mapping_reply_t> symbols(
        xcb_get_keyboard_mapping_reply(x, symbolsCookie, nullptr));
    Keys keys;
    if (!map || !symbols)
        return keys;
    const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(map.get());
    const xcb_keysym_t* table = xcb_get_keyboard_mapping_keysyms(symbols.get());
    for (int row = 0; row < modifierRows; ++row) {
        for (int column = 0; column < map->keycodes_per_modifier && row != lockRow; ++column) {
            const xcb_keycode_t code = codes[row * map->keycodes_per_modifier + column];
            if (code >= setup->min_keycode &&
                !isLock(table[(code - setup->min_keycode) * symbols->keysyms_per_keycode]))
                keys.set(code);
        }
    }
    return keys;
}

X11HeldModifiers::Keys X11HeldModifiers::pressedKeys() const {
    const XcbReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(m_connection.get(), xcb_query_keymap(m_connection.get()), nullptr));
    return reply ? fromBytes(reply->keys) : Keys();
}

X11HeldModifiers::Keys X11HeldModifiers::pressedKeys(Keyboards which) const {
    xcb_connection_t* x = m_connection.get();
    const XcbReply<xcb_input_xi_query_device_reply_t> devices(
        xcb_input_xi_query_device_reply(x, xcb_input_xi_query_device(x, XCB_INPUT_DEVICE_ALL), nullptr));
    Keys keys;
    if (!devices)
        return keys;
    for (auto device = xcb_input_xi_query_device_infos_iterator(devices.get()); device.rem > 0;
         xcb_input_xi_device_info_next(&device)) {
        const QByteArray name(xcb_input_xi_device_info_name(device.data),
                              xcb_input_xi_device_info_name_length(device.data));
        const Keyboards kind = name.contains("XTEST") ? Keyboards::Synthetic : Keyboards::Physical;
        if (device.data->type != XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD || kind != which)
            continue;
        const XcbReply<xcb_input_query_device_state_reply_t> state(xcb_input_query_device_state_reply(
            x, xcb_input_query_device_state(x, static_cast<uint8_t>(device.data->deviceid)), nullptr));
        if (!state)
            continue;
        const auto* at = reinterpret_cast<const uint8_t*>(state.get() + 1);
        for (int number = 0; number < state->num_classes; ++number) {
            const auto* input = reinterpret_cast<const xcb_input_key_state_t*>(at);
            if (input->class_id == XCB_INPUT_INPUT_CLASS_KEY)
                keys |= fromBytes(input->keys);
            at += input->len;
        }
    }
    return keys;
}

} // namespace velmora
