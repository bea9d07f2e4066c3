#include "platform/linux/x11_key_watch.h"

#include "platform/linux/x11_key_codes.h"
#include "platform/linux/xcb_xkb.h"
#include "platform/modifier_flags.h"

#include <xcb/xinput.h>

namespace velmora {
namespace {

// An event is lost only when a keyboard is taken away by others in the middle; a stuck hotkey would go on
// recording.
constexpr auto comparisonInterval = std::chrono::milliseconds(500);

constexpr int capsLockKeyCode = 57;
constexpr uint32_t hierarchyChanges =
    XCB_INPUT_HIERARCHY_MASK_SLAVE_ADDED | XCB_INPUT_HIERARCHY_MASK_SLAVE_REMOVED |
    XCB_INPUT_HIERARCHY_MASK_SLAVE_ATTACHED | XCB_INPUT_HIERARCHY_MASK_SLAVE_DETACHED |
    XCB_INPUT_HIERARCHY_MASK_DEVICE_ENABLED | XCB_INPUT_HIERARCHY_MASK_DEVICE_DISABLED;

template<typename Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

} // namespace

std::unique_ptr<X11KeyWatch> X11KeyWatch::open(const QByteArray& display, Handler handler,
                                               CapsLockBit capsLockBit) {
    auto connection = std::make_unique<X11Connection>(display);
    if (!setUpInputExtension(*connection))
        return nullptr;
    return std::unique_ptr<X11KeyWatch>(
        new X11KeyWatch(std::move(connection), std::move(handler), capsLockBit));
}

X11KeyWatch::X11KeyWatch(std::unique_ptr<X11Connection> connection, Handler handler, CapsLockBit capsLockBit)
    : m_connection(std::move(connection))
    , m_handler(std::move(handler))
    , m_capsLockBit(capsLockBit)
    , m_injections(*m_connection)
    , m_grab(*m_connection) {
    selectEvents();
    m_modifiers = modifiersNow();
    readKeyboards();
    const std::vector<X11Keys> held = pressedByServer();
    for (std::size_t i = 0; i < m_keyboards.size(); ++i)
        m_pressed[m_keyboards[i].id] = held[i];
    const XcbReply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        m_connection->get(), xcb_query_pointer(m_connection->get(), m_connection->root()), nullptr));
    m_capsLock = m_capsLockBit == CapsLockBit::OfLock && pointer && pointer->mask & XCB_MOD_MASK_LOCK;

    m_connection->listen([this] { dispatch(); });
    QObject::connect(&m_comparison, &QTimer::timeout, &m_comparison, [this] { compareWithServer(); });
}

// Of every keyboard by itself, so that one which a grab detaches from the session is heard on.
void X11KeyWatch::selectEvents() {
    xcb_connection_t* x = m_connection->get();
    const struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL, 1};
        uint32_t events = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
                          XCB_INPUT_XI_EVENT_MASK_HIERARCHY;
    } mask;
    xcb_input_xi_select_events(x, m_connection->root(), 1, &mask.head);
    m_inputOpcode = xcb_get_extension_data(x, &xcb_input_id)->major_opcode;

    if (!m_connection->hasExtension(&xcb_xkb_id))
        return;
    const XcbReply<xcb_xkb_use_extension_reply_t> version(
        xcb_xkb_use_extension_reply(x, xcb_xkb_use_extension(x, 1, 0), nullptr));
    if (!version || !version->supported)
        return;
    constexpr uint16_t wanted = XCB_XKB_EVENT_TYPE_STATE_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
    constexpr uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(x, XCB_XKB_ID_USE_CORE_KBD, wanted, 0, wanted, parts, parts, nullptr);
    m_keyboardEvent = xcb_get_extension_data(x, &xcb_xkb_id)->first_event;
}

void X11KeyWatch::dispatch() {
    while (const XcbEvent event = m_connection->nextEvent())
        handle(*event);
    if (!m_connection->isOpen()) {
        m_comparison.stop();
        releaseAll();
        return;
    }
    if (std::exchange(m_mappingChanged, false))
        readModifiers();
    const bool anyDown = pressed().any();
    if (anyDown && !m_comparison.isActive())
        m_comparison.start(comparisonInterval);
    else if (!anyDown)
        m_comparison.stop();
}

void X11KeyWatch::handle(const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    if (type == XCB_GE_GENERIC && as<xcb_ge_generic_event_t>(event).extension == m_inputOpcode)
        handleInput(as<xcb_ge_generic_event_t>(event));
    else if (type == m_keyboardEvent)
        handleKeyboard(event);
    else if (type == XCB_MAPPING_NOTIFY)
        m_mappingChanged = true;
}

void X11KeyWatch::handleInput(const xcb_ge_generic_event_t& event) {
    const auto& generic = reinterpret_cast<const xcb_generic_event_t&>(event);
    switch (event.event_type) {
    case XCB_INPUT_RAW_KEY_PRESS:
    case XCB_INPUT_RAW_KEY_RELEASE:
        handleRaw(as<xcb_input_raw_key_press_event_t>(generic));
        break;
    case XCB_INPUT_KEY_PRESS:
    case XCB_INPUT_KEY_RELEASE:
        m_grab.handleGrabbed(as<xcb_input_key_press_event_t>(generic));
        break;
    case XCB_INPUT_HIERARCHY:
        if (as<xcb_input_hierarchy_event_t>(generic).flags & hierarchyChanges) {
            readKeyboards(); // at once: what follows may be a key of the new one
            grabChord();
        }
        break;
    default:
        break;
    }
}

// Each comes once for the keyboard, and a second time for the session, which is left out.
void X11KeyWatch::handleRaw(const xcb_input_raw_key_press_event_t& event) {
    const auto keyboard = std::ranges::find(m_keyboards, event.deviceid, &X11Keyboard::id);
    if (keyboard == m_keyboards.end() || event.detail > 0xff)
        return;
    if (!keyboard->isReal && m_injections.isOwn(event.full_sequence))
        return;
    const auto code = static_cast<xcb_keycode_t>(event.detail);
    const bool down = event.event_type == XCB_INPUT_RAW_KEY_PRESS;
    key(*keyboard, code, down);
    if (!down && keyboard->isReal)
        m_grab.handleRelease(code);
}

void X11KeyWatch::handleKeyboard(const xcb_generic_event_t& event) {
    const auto& notify = as<xcb_xkb_state_notify_event_t>(event);
    if (notify.xkbType == XCB_XKB_NEW_KEYBOARD_NOTIFY || notify.xkbType == XCB_XKB_MAP_NOTIFY)
        m_mappingChanged = true;
    if (notify.xkbType != XCB_XKB_STATE_NOTIFY || m_capsLockBit != CapsLockBit::OfLock)
        return;
    const bool locked = notify.lockedMods & XCB_MOD_MASK_LOCK;
    if (std::exchange(m_capsLock, locked) != locked)
        send(KeyEvent::Kind::FlagsChanged, capsLockKeyCode);
}

void X11KeyWatch::key(const X11Keyboard& keyboard, xcb_keycode_t code, bool down) {
    const bool wasDown = pressed()[code];
    m_pressed[keyboard.id][code] = down;
    if (m_modifiers.isCapsLock(code))
        return;
    const bool isDown = pressed()[code];
    if (isDown && !wasDown)
        m_playsFn[code] = code == m_standIn;
    if (usesFn())
        grabChord();
    const int keyCode = m_modifiers.virtualKeyCode(code);
    if (m_modifiers.flags(code) != 0 || m_playsFn[code]) {
        if (wasDown != isDown)
            send(KeyEvent::Kind::FlagsChanged, keyCode);
    } else if (down) {
        send(KeyEvent::Kind::KeyDown, keyCode, wasDown);
    } else if (wasDown && !isDown) {
        send(KeyEvent::Kind::KeyUp, keyCode);
    }
}

// A keyboard that a grab has detached stays one of the session's; one that never was attached isn't.
void X11KeyWatch::readKeyboards() {
    const std::vector<X11Keyboard> before = std::exchange(m_keyboards, x11Keyboards(*m_connection));
    const auto isKnown = [](const std::vector<X11Keyboard>& keyboards, xcb_input_device_id_t id) {
        return std::ranges::find(keyboards, id, &X11Keyboard::id) != keyboards.end();
    };
    std::erase_if(m_keyboards,
                  [&](const X11Keyboard& each) { return !each.isAttached && !isKnown(before, each.id); });
    for (const X11Keyboard& each : before) {
        if (isKnown(m_keyboards, each.id))
            continue;
        const X11Keys held = m_pressed[each.id];
        for (std::size_t code = 0; code < held.size(); ++code) {
            if (held[code])
                key(each, static_cast<xcb_keycode_t>(code), false);
        }
        m_pressed.erase(each.id);
    }
}

X11ModifierKeys X11KeyWatch::modifiersNow() {
    X11ModifierKeys now = X11ModifierKeys::read(*m_connection);
    if (m_capsLockBit == CapsLockBit::OfKey)
        now.setCapsLockFollowsKey();
    return now;
}

void X11KeyWatch::readModifiers() {
    const X11ModifierKeys now = modifiersNow();
    if (now == m_modifiers)
        return;
    const quint64 before = flags();
    m_modifiers = now;
    grabChord();
    if (flags() != before) // a held key has another meaning now, and its release will have it too
        send(KeyEvent::Kind::FlagsChanged, X11KeyCodes::fn);
}

void X11KeyWatch::setFnStandIn(FnStandIn standIn) {
    m_standIn = X11KeyCodes::ofStandIn(standIn);
    grabChord();
}

void X11KeyWatch::claim(const std::optional<KeyChord>& chord) {
    if (m_chord == chord)
        return;
    m_chord = chord;
    grabChord();
}

void X11KeyWatch::grabChord() {
    std::vector<X11ChordGrab::Key> keys;
    const auto add = [&](xcb_keycode_t code, quint64 mask) {
        keys.push_back({code, m_modifiers.statesWith(mask)});
    };
    const bool withFn = usesFn();
    if (withFn && m_standIn && m_modifiers.flags(*m_standIn) == 0)
        add(*m_standIn, 0);
    if (m_chord && (!withFn || isFnChordOpen())) {
        for (const xcb_keycode_t code : X11KeyCodes::fromVirtual(m_chord->keyCode))
            add(code, m_chord->mask & ~modifier::fn);
    }
    m_grab.set(m_keyboards, std::move(keys));
}

bool X11KeyWatch::usesFn() const {
    return m_chord && m_chord->mask & modifier::fn;
}

// The server knows nothing of Fn, so the key of its chord is grabbed while Fn is held, and as long as it is
// down.
bool X11KeyWatch::isFnChordOpen() const {
    return flags() & modifier::fn ||
           std::ranges::any_of(X11KeyCodes::fromVirtual(m_chord->keyCode),
                               [down = pressed()](xcb_keycode_t code) { return down[code]; });
}

void X11KeyWatch::releaseAll() {
    for (const X11Keyboard& keyboard : m_keyboards) {
        const X11Keys held = m_pressed[keyboard.id];
        for (std::size_t code = 0; code < held.size(); ++code) {
            if (held[code])
                key(keyboard, static_cast<xcb_keycode_t>(code), false);
        }
    }
}

// Says what the server's answer is compared with: all that happened before it has been handled, or this is
// left to the next time.
void X11KeyWatch::compareWithServer() {
    dispatch();
    if (!m_connection->isOpen())
        return;
    const std::vector<X11Keys> held = pressedByServer();
    if (m_connection->hasWaitingEvents())
        return;
    for (std::size_t i = 0; i < m_keyboards.size(); ++i) {
        const X11Keyboard keyboard = m_keyboards[i];
        const X11Keys missed = m_pressed[keyboard.id] & ~held[i];
        for (std::size_t code = 0; code < missed.size(); ++code) {
            if (missed[code])
                key(keyboard, static_cast<xcb_keycode_t>(code), false);
        }
    }
}

// For each of the keyboards. A program's key press may be left over on the XTEST keyboard when the user let
// go of the key: the session has it up.
std::vector<X11Keys> X11KeyWatch::pressedByServer() {
    std::vector<X11Keys> held = pressedKeys(*m_connection, m_keyboards);
    const XcbReply<xcb_query_keymap_reply_t> session(
        xcb_query_keymap_reply(m_connection->get(), xcb_query_keymap(m_connection->get()), nullptr));
    for (std::size_t i = 0; session && i < held.size(); ++i) {
        if (!m_keyboards[i].isReal)
            held[i] &= keysFromBytes(session->keys);
    }
    return held;
}

X11Keys X11KeyWatch::pressed() const {
    X11Keys all;
    for (const auto& [id, keys] : m_pressed)
        all |= keys;
    return all;
}

quint64 X11KeyWatch::flags() const {
    const X11Keys down = pressed();
    return m_modifiers.flags(down) | ((down & m_playsFn).any() ? modifier::fn : 0) |
           (m_capsLock ? modifier::capsLock : 0);
}

void X11KeyWatch::send(KeyEvent::Kind kind, int keyCode, bool repeat) {
    m_handler({kind, keyCode, flags(), repeat});
}

} // namespace velmora
