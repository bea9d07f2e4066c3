#include "platform/linux/x11_keyboards.h"

namespace velmora {
namespace {

constexpr uint16_t wantedMajor = 2;
constexpr uint16_t wantedMinor = 2;

bool hasKeys(const xcb_input_xi_device_info_t& info) {
    auto each = xcb_input_xi_device_info_classes_iterator(&info);
    for (; each.rem > 0; xcb_input_device_class_next(&each)) {
        if (each.data->type == XCB_INPUT_DEVICE_CLASS_TYPE_KEY)
            return true;
    }
    return false;
}

template<typename Visit>
void forEachDevice(X11Connection& connection, const Visit& visit) {
    const XcbReply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        connection.get(), xcb_input_xi_query_device(connection.get(), XCB_INPUT_DEVICE_ALL), nullptr));
    if (!devices)
        return;
    auto each = xcb_input_xi_query_device_infos_iterator(devices.get());
    for (; each.rem > 0; xcb_input_xi_device_info_next(&each))
        visit(*each.data);
}

} // namespace

bool setUpInputExtension(X11Connection& connection) {
    if (!connection.isOpen() || !connection.hasExtension(&xcb_input_id))
        return false;
    const XcbReply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection.get(), xcb_input_xi_query_version(connection.get(), wantedMajor, wantedMinor), nullptr));
    return version &&
           (version->major_version > 2 || (version->major_version == 2 && version->minor_version >= 1));
}

std::vector<X11Keyboard> x11Keyboards(X11Connection& connection) {
    std::vector<X11Keyboard> keyboards;
    forEachDevice(connection, [&](const xcb_input_xi_device_info_t& device) {
        const bool attached = device.type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD;
        const bool floating = device.type == XCB_INPUT_DEVICE_TYPE_FLOATING_SLAVE && hasKeys(device);
        if (!attached && !floating)
            return;
        const QByteArray name(xcb_input_xi_device_info_name(&device),
                              xcb_input_xi_device_info_name_length(&device));
        keyboards.push_back({device.deviceid, !name.contains("XTEST"), attached});
    });
    return keyboards;
}

std::vector<xcb_input_device_id_t> x11SessionKeyboards(X11Connection& connection) {
    std::vector<xcb_input_device_id_t> keyboards;
    forEachDevice(connection, [&](const xcb_input_xi_device_info_t& device) {
        if (device.type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD)
            keyboards.push_back(device.deviceid);
    });
    return keyboards;
}

PressedKeysQuestion::PressedKeysQuestion(X11Connection& connection, const std::vector<X11Keyboard>& keyboards)
    : m_connection(connection) {
    for (const X11Keyboard& keyboard : keyboards)
        m_asked.push_back(xcb_input_query_device_state(connection.get(), static_cast<uint8_t>(keyboard.id)));
}

std::vector<X11Keys> PressedKeysQuestion::answers() {
    std::vector<X11Keys> pressed(m_asked.size());
    for (std::size_t i = 0; i < m_asked.size(); ++i) {
        xcb_generic_error_t* error = nullptr; // a keyboard that has just gone
        const XcbReply<xcb_input_query_device_state_reply_t> state(
            xcb_input_query_device_state_reply(m_connection.get(), m_asked[i], &error));
        const XcbReply<xcb_generic_error_t> freed(error);
        if (!state)
            continue;
        const auto* at = reinterpret_cast<const uint8_t*>(state.get() + 1);
        for (int number = 0; number < state->num_classes; ++number) {
            const auto* input = reinterpret_cast<const xcb_input_key_state_t*>(at);
            if (input->class_id == XCB_INPUT_INPUT_CLASS_KEY)
                pressed[i] |= keysFromBytes(input->keys);
            at += input->len;
        }
    }
    return pressed;
}

std::vector<X11Keys> pressedKeys(X11Connection& connection, const std::vector<X11Keyboard>& keyboards) {
    return PressedKeysQuestion(connection, keyboards).answers();
}

X11Keys keysFromBytes(const uint8_t (&bytes)[32]) {
    X11Keys keys;
    for (std::size_t key = 0; key < keys.size(); ++key)
        keys[key] = bytes[key / 8] & (1 << (key % 8));
    return keys;
}

} // namespace velmora
