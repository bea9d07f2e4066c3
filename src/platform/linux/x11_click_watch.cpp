#include "platform/linux/x11_click_watch.h"

#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_keyboards.h"

#include <QCursor>

#include <xcb/xinput.h>

namespace velmora {
namespace {

constexpr uint32_t leftButton = 1;
constexpr uint32_t rightButton = 3;

} // namespace

X11ClickWatch::X11ClickWatch(QObject* parent)
    : ClickWatch(parent) {}

X11ClickWatch::~X11ClickWatch() = default;

void X11ClickWatch::setEnabled(bool enabled) {
    if (enabled == (m_connection != nullptr))
        return;
    m_connection.reset();
    if (enabled)
        open();
}

void X11ClickWatch::open() {
    m_connection = std::make_unique<X11Connection>();
    if (!setUpInputExtension(*m_connection))
        return;
    const struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        uint32_t events = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
    } mask;
    xcb_input_xi_select_events(m_connection->get(), m_connection->root(), 1, &mask.head);
    m_inputOpcode = xcb_get_extension_data(m_connection->get(), &xcb_input_id)->major_opcode;
    m_connection->listen([this] { readEvents(); });
    m_connection->sync();
}

// Whoever hears of a press may switch the watch off.
void X11ClickWatch::readEvents() {
    bool isPressed = false;
    while (const XcbEvent event = m_connection->nextEvent()) {
        const auto& press = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(*event);
        if (typeOf(*event) == XCB_GE_GENERIC && press.extension == m_inputOpcode &&
            press.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
            isPressed = isPressed || press.detail == leftButton || press.detail == rightButton;
    }
    if (isPressed)
        Q_EMIT pressed(QCursor::pos());
}

} // namespace velmora
