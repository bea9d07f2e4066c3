#include "input_devices.h"

#include "platform/linux/x11_keyboards.h"

#include <cstring>

namespace velmora::test {
namespace {

constexpr std::size_t wordSize = sizeof(uint32_t);

constexpr uint32_t pair(uint32_t low, uint32_t high) {
    return low | high << 16;
}

} // namespace

InputDevices::InputDevices() {
    [[maybe_unused]] const bool ready = setUpInputExtension(m_x);
}

InputDevices::~InputDevices() {
    for (const xcb_input_device_id_t master : std::vector(m_masters))
        removeMaster(master);
}

xcb_input_device_id_t InputDevices::addMaster(const QByteArray& name) {
    const QByteArray padded = name.leftJustified((name.size() + 3) / 4 * 4, '\0');
    constexpr uint32_t sendCoreAndEnable = 0x0101;
    std::vector<uint32_t> words{
        pair(XCB_INPUT_HIERARCHY_CHANGE_TYPE_ADD_MASTER, 2 + static_cast<uint32_t>(padded.size()) / wordSize),
        pair(static_cast<uint32_t>(name.size()), sendCoreAndEnable)};
    words.resize(2 + static_cast<std::size_t>(padded.size()) / wordSize);
    std::memcpy(words.data() + 2, padded.constData(), static_cast<std::size_t>(padded.size()));
    change(std::move(words));

    const XcbReply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        m_x.get(), xcb_input_xi_query_device(m_x.get(), XCB_INPUT_DEVICE_ALL_MASTER), nullptr));
    for (auto each = xcb_input_xi_query_device_infos_iterator(devices.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        const QByteArray found(xcb_input_xi_device_info_name(each.data),
                               xcb_input_xi_device_info_name_length(each.data));
        if (found == name + " keyboard") {
            m_masters.push_back(each.data->deviceid);
            return each.data->deviceid;
        }
    }
    return 0;
}

void InputDevices::removeMaster(xcb_input_device_id_t keyboard) {
    std::erase(m_masters, keyboard);
    constexpr uint32_t toCorePointer = 2;
    change({pair(XCB_INPUT_HIERARCHY_CHANGE_TYPE_REMOVE_MASTER, 3),
            pair(keyboard, XCB_INPUT_CHANGE_MODE_ATTACH), pair(toCorePointer, coreKeyboard())});
}

void InputDevices::attach(xcb_input_device_id_t device, xcb_input_device_id_t keyboard) {
    change({pair(XCB_INPUT_HIERARCHY_CHANGE_TYPE_ATTACH_SLAVE, 2), pair(device, keyboard)});
}

void InputDevices::detach(xcb_input_device_id_t device) {
    change({pair(XCB_INPUT_HIERARCHY_CHANGE_TYPE_DETACH_SLAVE, 2), pair(device, 0)});
}

void InputDevices::setEnabled(xcb_input_device_id_t device, bool enabled) {
    const uint8_t value[4] = {enabled}; // one byte, and what xcb pads it with
    xcb_input_xi_change_property(m_x.get(), device, XCB_PROP_MODE_REPLACE, XCB_INPUT_PROPERTY_FORMAT_8_BITS,
                                 m_x.atom("Device Enabled"), XCB_ATOM_INTEGER, 1, value);
    [[maybe_unused]] const QByteArray sync = m_x.atomName(XCB_ATOM_INTEGER);
}

void InputDevices::change(std::vector<uint32_t> words) {
    xcb_input_xi_change_hierarchy(m_x.get(), 1,
                                  reinterpret_cast<const xcb_input_hierarchy_change_t*>(words.data()));
    [[maybe_unused]] const QByteArray sync = m_x.atomName(XCB_ATOM_INTEGER);
}

} // namespace velmora::test
