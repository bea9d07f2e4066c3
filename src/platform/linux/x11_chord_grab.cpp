#include "platform/linux/x11_chord_grab.h"

#include "platform/linux/x11_chord_post.h"
#include "platform/linux/x11_injection_guard.h"

namespace velmora {
namespace {

// The raw events are the tap's: the server hides them from the owner of a grab that doesn't ask for them.
constexpr uint32_t grabbedEvents = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE |
                                   XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                                   XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
constexpr uint32_t anyModifier = 0x80000000;
constexpr uint32_t everyModifier = 0xff;

} // namespace

X11ChordGrab::X11ChordGrab(X11Connection& connection)
    : m_connection(connection) {}

X11ChordGrab::~X11ChordGrab() {
    std::ranges::for_each(m_keys, [this](const Key& key) { ungrab(key); });
    m_connection.sync();
    m_leftDown.merge(m_passedOn);
    for (const xcb_keycode_t key : m_leftDown)
        post(XCB_KEY_RELEASE, key);
}

void X11ChordGrab::set(const std::vector<X11Keyboard>& keyboards, std::vector<Key> keys) {
    std::erase_if(m_detached, [&](const auto& each) {
        return std::ranges::find(keyboards, each.first, &X11Keyboard::id) == keyboards.end();
    });
    std::vector<X11Keyboard> real;
    std::ranges::copy_if(keyboards, std::back_inserter(real), &X11Keyboard::isReal);
    const bool isSameDesk = real == m_keyboards;
    if (isSameDesk && keys == m_keys)
        return;
    const auto isIn = [](const std::vector<Key>& list, const Key& key) {
        return std::ranges::find(list, key) != list.end();
    };
    const std::vector<Key> before = std::exchange(m_keys, std::move(keys));
    for (const Key& key : before) {
        if (!isSameDesk || !isIn(m_keys, key))
            ungrab(key);
    }
    m_keyboards = std::move(real);
    for (const Key& key : m_keys) {
        if (!isSameDesk || !isIn(before, key))
            grab(key);
    }
    m_connection.sync(); // a key struck after this follows the new claim
}

void X11ChordGrab::grab(const Key& key) {
    if (key.states.empty())
        return;
    for (const X11Keyboard& keyboard : m_keyboards) {
        const auto cookie = xcb_input_xi_passive_grab_device(
            m_connection.get(), XCB_CURRENT_TIME, m_connection.root(), XCB_CURSOR_NONE, key.code, keyboard.id,
            static_cast<uint16_t>(key.states.size()), 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
            XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, false, &grabbedEvents,
            key.states.data());
        xcb_discard_reply(m_connection.get(), cookie.sequence);
    }
    // What other programs hold already is theirs: those requests fail.
    for (const uint32_t state : key.states)
        xcb_grab_key(m_connection.get(), false, m_connection.root(), static_cast<uint16_t>(state), key.code,
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
}

void X11ChordGrab::ungrab(const Key& key) {
    for (const X11Keyboard& keyboard : m_keyboards)
        xcb_input_xi_passive_ungrab_device(m_connection.get(), m_connection.root(), key.code, keyboard.id, 1,
                                           XCB_INPUT_GRAB_TYPE_KEYCODE, &anyModifier);
    xcb_ungrab_key(m_connection.get(), key.code, m_connection.root(), XCB_MOD_MASK_ANY);
}

bool X11ChordGrab::isGrabbed(xcb_keycode_t key, uint32_t state) const {
    return std::ranges::any_of(m_keys, [&](const Key& each) {
        return each.code == key && std::ranges::find(each.states, state) != each.states.end();
    });
}

void X11ChordGrab::handleGrabbed(const xcb_input_key_press_event_t& event) {
    const auto key = static_cast<xcb_keycode_t>(event.detail);
    if (event.event_type == XCB_INPUT_KEY_PRESS) {
        const auto& [chord, isNew] = m_detached.try_emplace(event.deviceid, key);
        const bool isRepeat = event.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT;
        if (isNew || isRepeat || chord->second == key || isGrabbed(key, event.mods.effective & everyModifier))
            return;
        m_passedOn.insert(key);
        post(XCB_KEY_PRESS, key);
        return;
    }
    // Also of keys that went down before the chord's, and of the chord's own: a repeat of it may have been
    // what detached the keyboard, if the modifiers came later. The server drops it where the key isn't down.
    m_passedOn.erase(key);
    post(XCB_KEY_RELEASE, key);
    const auto chord = m_detached.find(event.deviceid);
    if (chord != m_detached.end() && chord->second == key) {
        m_detached.erase(chord);
        m_leftDown.merge(m_passedOn);
    }
}

void X11ChordGrab::handleRelease(xcb_keycode_t key) {
    if (m_leftDown.erase(key) > 0)
        post(XCB_KEY_RELEASE, key);
}

void X11ChordGrab::post(uint8_t kind, xcb_keycode_t key) {
    const X11InjectionGuard guard;
    fakeKey(m_connection, kind, key);
    m_connection.sync();
}

} // namespace velmora
