// Works a key of the display's keyboard as a hand would:  press_key down|up|tap KEY[+KEY…]   e.g. tap
// Control_L+s The events come from the keyboard device itself, not from the one that XTest gives to programs,
// so that what tells a person from a program by the device takes them for a person's.

#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <ranges>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template<typename T>
using Reply = std::unique_ptr<T, Free>;

class Keyboard {
public:
    Keyboard()
        : m_connection(xcb_connect(nullptr, nullptr), &xcb_disconnect) {
        if (xcb_connection_has_error(m_connection.get()) != 0)
            throw std::runtime_error("no display");
        const auto* extension = xcb_get_extension_data(m_connection.get(), &xcb_input_id);
        if (extension == nullptr || extension->present == 0)
            throw std::runtime_error("the display has no XInput extension");
        m_firstEvent = extension->first_event;
        m_device = findDevice();
        readKeymap();
    }

    [[nodiscard]] xcb_keycode_t code(const std::string& name) const {
        const xkb_keysym_t symbol = xkb_keysym_from_name(name.c_str(), XKB_KEYSYM_NO_FLAGS);
        for (xkb_keycode_t code = xkb_keymap_min_keycode(m_keymap.get());
             code <= xkb_keymap_max_keycode(m_keymap.get()); ++code) {
            const xkb_keysym_t* symbols = nullptr;
            if (xkb_keymap_key_get_syms_by_level(m_keymap.get(), code, 0, 0, &symbols) > 0 &&
                symbols[0] == symbol)
                return static_cast<xcb_keycode_t>(code);
        }
        throw std::runtime_error("no key gives " + name);
    }

    void send(xcb_keycode_t code, bool down) {
        const auto type = m_firstEvent + (down ? XCB_INPUT_DEVICE_KEY_PRESS : XCB_INPUT_DEVICE_KEY_RELEASE);
        const auto cookie = xcb_test_fake_input_checked(m_connection.get(), static_cast<std::uint8_t>(type),
                                                        code, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                                                        static_cast<std::uint8_t>(m_device));
        if (const Reply<xcb_generic_error_t> error{xcb_request_check(m_connection.get(), cookie)})
            throw std::runtime_error("the display refused the event: error " +
                                     std::to_string(error->error_code));
    }

private:
    [[nodiscard]] xcb_input_device_id_t findDevice() const {
        auto* connection = m_connection.get();
        const Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
            connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
        const Reply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
            connection, xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL), nullptr));
        if (!version || !devices)
            throw std::runtime_error("the display does not tell its devices");
        for (auto each = xcb_input_xi_query_device_infos_iterator(devices.get()); each.rem != 0;
             xcb_input_xi_device_info_next(&each)) {
            const std::string_view name(
                xcb_input_xi_device_info_name(each.data),
                static_cast<std::size_t>(xcb_input_xi_device_info_name_length(each.data)));
            // A grabbed chord detaches the keyboard from the session for as long as its key is down.
            const bool isKeyboard = each.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD ||
                                    (each.data->type == XCB_INPUT_DEVICE_TYPE_FLOATING_SLAVE &&
                                     name.find("keyboard") != name.npos);
            if (isKeyboard && name.find("XTEST") == std::string_view::npos)
                return each.data->deviceid;
        }
        throw std::runtime_error("the display has no keyboard");
    }

    void readKeymap() {
        auto* connection = m_connection.get();
        xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
        m_context.reset(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
        m_keymap.reset(xkb_x11_keymap_new_from_device(m_context.get(), connection,
                                                      xkb_x11_get_core_keyboard_device_id(connection),
                                                      XKB_KEYMAP_COMPILE_NO_FLAGS));
        if (!m_keymap)
            throw std::runtime_error("the display does not tell its keymap");
    }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> m_context{nullptr, &xkb_context_unref};
    std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> m_keymap{nullptr, &xkb_keymap_unref};
    xcb_input_device_id_t m_device = 0;
    int m_firstEvent = 0;
};

void run(const std::string& action, std::string_view keys) {
    Keyboard keyboard;
    std::vector<xcb_keycode_t> codes;
    for (const auto part : std::views::split(keys, '+'))
        codes.push_back(keyboard.code(std::string(part.begin(), part.end())));
    if (action != "up") {
        for (const auto code : codes)
            keyboard.send(code, true);
    }
    if (action != "down") {
        for (const auto code : std::views::reverse(codes))
            keyboard.send(code, false);
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() != 2 || (arguments[0] != "down" && arguments[0] != "up" && arguments[0] != "tap")) {
        std::cerr << "usage: press_key down|up|tap KEY[+KEY…]\n";
        return 64;
    }
    try {
        run(arguments[0], arguments[1]);
    } catch (const std::exception& error) {
        std::cerr << "press_key: " << error.what() << '\n';
        return 1;
    }
}
