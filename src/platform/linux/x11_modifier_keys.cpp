#include "platform/linux/x11_modifier_keys.h"

#include "platform/linux/x11_key_codes.h"
#include "platform/modifier_flags.h"

namespace velmora {
namespace {

struct Modifier {
    quint64 generic;
    xcb_keycode_t leftKey;
    quint64 left;
    xcb_keycode_t rightKey;
    quint64 right;
};

constexpr std::array modifiers{
    Modifier{modifier::shift, 50, modifier::leftShift, 62, modifier::rightShift},
    Modifier{modifier::control, 37, modifier::leftControl, 105, modifier::rightControl},
    Modifier{modifier::option, 64, modifier::leftOption, 108, modifier::rightOption},
    Modifier{modifier::command, 133, modifier::leftCommand, 134, modifier::rightCommand},
};

constexpr std::size_t lockRow = XCB_MAP_INDEX_LOCK;
constexpr std::size_t rowCount = 8;
constexpr uint32_t stateCount = 1U << rowCount;
constexpr xcb_keysym_t fnSymbol = 0x100811d0; // XF86Fn

using Rows = std::array<X11Keys, rowCount>;

// The keys of each of the server's eight modifiers: Shift, Lock, Control and Mod1 to Mod5.
Rows readRows(X11Connection& connection) {
    const XcbReply<xcb_get_modifier_mapping_reply_t> map(xcb_get_modifier_mapping_reply(
        connection.get(), xcb_get_modifier_mapping(connection.get()), nullptr));
    Rows rows;
    if (!map)
        return rows;
    const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(map.get());
    for (std::size_t row = 0; row < rowCount; ++row) {
        for (int column = 0; column < map->keycodes_per_modifier; ++column)
            rows[row].set(*keys++);
        rows[row].reset(0); // fills up short rows
    }
    return rows;
}

X11Keys readFnKeys(X11Connection& connection) {
    const xcb_setup_t* setup = xcb_get_setup(connection.get());
    const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const XcbReply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
        connection.get(), xcb_get_keyboard_mapping(connection.get(), setup->min_keycode, count), nullptr));
    X11Keys keys;
    if (!map)
        return keys;
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int i = 0; i < count; ++i)
        keys[setup->min_keycode + i] = symbols[i * map->keysyms_per_keycode] == fnSymbol;
    return keys;
}

} // namespace

X11ModifierKeys X11ModifierKeys::read(X11Connection& connection) {
    X11ModifierKeys result;
    const Rows rows = readRows(connection);
    result.m_capsLockKeys = rows[lockRow];
    result.m_fnKeys = readFnKeys(connection);

    X11Keys placed;
    for (std::size_t i = 0; i < modifiers.size(); ++i) {
        const Modifier& each = modifiers[i];
        result.m_flags[each.leftKey] = each.generic | each.left;
        result.m_flags[each.rightKey] = each.generic | each.right;
        placed.set(each.leftKey).set(each.rightKey);
        for (std::size_t row = 0; row < rowCount; ++row) {
            if (row != lockRow && (rows[row][each.leftKey] || rows[row][each.rightKey]))
                result.m_serverModifiers[i] |= static_cast<uint8_t>(1U << row);
        }
    }
    for (std::size_t key = 0; key < placed.size(); ++key) {
        if (rows[lockRow][key])
            result.m_flags[key] = 0;
        for (std::size_t i = 0; i < modifiers.size() && !placed[key]; ++i) {
            for (std::size_t row = 0; row < rowCount; ++row) {
                if (rows[row][key] && result.m_serverModifiers[i] & (1U << row))
                    result.m_flags[key] |= modifiers[i].generic | modifiers[i].left;
            }
        }
    }
    return result;
}

void X11ModifierKeys::setCapsLockFollowsKey() {
    for (std::size_t key = 0; key < m_flags.size(); ++key) {
        if (m_capsLockKeys[key])
            m_flags[key] = modifier::capsLock;
    }
    m_capsLockKeys.reset();
}

quint64 X11ModifierKeys::flags(xcb_keycode_t key) const {
    return m_flags[key] | (m_fnKeys[key] ? modifier::fn : 0);
}

quint64 X11ModifierKeys::flags(const X11Keys& pressed) const {
    quint64 all = 0;
    for (std::size_t key = 0; key < pressed.size(); ++key) {
        if (pressed[key])
            all |= flags(static_cast<xcb_keycode_t>(key));
    }
    return all;
}

int X11ModifierKeys::virtualKeyCode(xcb_keycode_t key) const {
    return m_fnKeys[key] ? X11KeyCodes::fn : X11KeyCodes::toVirtual(key);
}

std::vector<uint32_t> X11ModifierKeys::statesWith(quint64 mask) const {
    std::vector<uint32_t> states;
    for (uint32_t state = 0; state < stateCount; ++state) {
        const auto holds = [&](std::size_t i) {
            return !(mask & modifiers[i].generic) || state & m_serverModifiers[i];
        };
        if (holds(0) && holds(1) && holds(2) && holds(3))
            states.push_back(state);
    }
    return states;
}

} // namespace velmora
