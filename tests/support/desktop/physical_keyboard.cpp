#include "support/desktop/physical_keyboard.h"

#include "platform/linux/xcb_xkb.h"

#include <QProcess>

#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace velmora::test {

PhysicalKeyboard::PhysicalKeyboard(const QByteArray& display)
    : m_x(display) {
    XcbReply<xcb_input_xi_query_version_reply_t>(
        xcb_input_xi_query_version_reply(m_x.get(), xcb_input_xi_query_version(m_x.get(), 2, 2), nullptr));
    XcbReply<xcb_xkb_use_extension_reply_t>(
        xcb_xkb_use_extension_reply(m_x.get(), xcb_xkb_use_extension(m_x.get(), 1, 0), nullptr));
    const XcbReply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        m_x.get(), xcb_input_xi_query_device(m_x.get(), XCB_INPUT_DEVICE_ALL), nullptr));
    if (!devices)
        return;
    for (auto device = xcb_input_xi_query_device_infos_iterator(devices.get()); device.rem > 0;
         xcb_input_xi_device_info_next(&device)) {
        const QByteArray name(xcb_input_xi_device_info_name(device.data),
                              xcb_input_xi_device_info_name_length(device.data));
        if (device.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD && !name.contains("XTEST"))
            m_device = static_cast<uint8_t>(device.data->deviceid);
    }
}

PhysicalKeyboard::~PhysicalKeyboard() {
    for (const xcb_keycode_t key : std::vector(m_down))
        release(key);
}

void PhysicalKeyboard::press(xcb_keycode_t key) {
    m_down.push_back(key);
    fake(XCB_INPUT_DEVICE_KEY_PRESS, key);
}

void PhysicalKeyboard::release(xcb_keycode_t key) {
    std::erase(m_down, key);
    fake(XCB_INPUT_DEVICE_KEY_RELEASE, key);
}

void PhysicalKeyboard::tap(xcb_keycode_t key) {
    press(key);
    release(key);
}

bool PhysicalKeyboard::isDown(xcb_keycode_t key) {
    const XcbReply<xcb_query_keymap_reply_t> keys(
        xcb_query_keymap_reply(m_x.get(), xcb_query_keymap(m_x.get()), nullptr));
    return keys && keys->keys[key / 8] & (1 << (key % 8));
}

uint16_t PhysicalKeyboard::modifiers() {
    const XcbReply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(m_x.get(), xcb_query_pointer(m_x.get(), m_x.root()), nullptr));
    return pointer ? pointer->mask & 0xff : 0;
}

void PhysicalKeyboard::setLayouts(const char* layouts, uint8_t active) {
    QProcess::execute(QStringLiteral("setxkbmap"), {QStringLiteral("-layout"), QLatin1String(layouts)});
    xcb_xkb_latch_lock_state(m_x.get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, true, active, 0, false, 0);
    [[maybe_unused]] const uint16_t sync = modifiers();
}

uint8_t PhysicalKeyboard::layout() {
    const XcbReply<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(m_x.get(), xcb_xkb_get_state(m_x.get(), XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return state ? state->group : 0;
}

void PhysicalKeyboard::fake(uint8_t kind, xcb_keycode_t key) {
    const uint8_t first = xcb_get_extension_data(m_x.get(), &xcb_input_id)->first_event;
    xcb_test_fake_input(m_x.get(), static_cast<uint8_t>(first + kind), key, XCB_CURRENT_TIME, XCB_WINDOW_NONE,
                        0, 0, m_device);
    [[maybe_unused]] const uint16_t sync = modifiers();
}

} // namespace velmora::test
