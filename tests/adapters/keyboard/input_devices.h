#pragma once

#include "platform/linux/x11_connection.h"

#include <xcb/xinput.h>

namespace velmora::test {

/// Plugs the X server's keyboards together in other ways, and as they were at the end.
class InputDevices {
public:
    InputDevices();
    ~InputDevices();
    InputDevices(const InputDevices&) = delete;
    InputDevices& operator=(const InputDevices&) = delete;

    /// A second pair of a pointer and a keyboard for the session; the new keyboard's ID.
    [[nodiscard]] xcb_input_device_id_t addMaster(const QByteArray& name);
    void removeMaster(xcb_input_device_id_t keyboard);
    void attach(xcb_input_device_id_t device, xcb_input_device_id_t keyboard);
    /// Takes a keyboard out of the session.
    void detach(xcb_input_device_id_t device);
    /// Unplugs a keyboard as far as programs can tell, or plugs it in again.
    void setEnabled(xcb_input_device_id_t device, bool enabled);
    /// The session's first keyboard, to which all are attached at the beginning.
    [[nodiscard]] static constexpr xcb_input_device_id_t coreKeyboard() { return 3; }

private:
    void change(std::vector<uint32_t> words);

    X11Connection m_x;
    std::vector<xcb_input_device_id_t> m_masters;
};

} // namespace velmora::test
