#include "window_watch.h"

#include "result.h"

#include <xcb/damage.h>

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr auto patience = 10s;

template<typename Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

} // namespace

WindowWatch::WindowWatch() {
    const XcbReply<xcb_damage_query_version_reply_t> version(
        xcb_damage_query_version_reply(m_x.get(), xcb_damage_query_version(m_x.get(), 1, 1), nullptr));
    if (!version)
        throw NotMeasured(QStringLiteral("the X server doesn't tell of drawing"));
    m_damageEvent = xcb_get_extension_data(m_x.get(), &xcb_damage_id)->first_event;
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_x.get(), m_x.root(), XCB_CW_EVENT_MASK, &events);
    m_x.sync();
}

WindowWatch::Drawn WindowWatch::waitForNew(QSize atLeast) {
    Drawn drawn;
    waitUntil("no window has appeared", [&] {
        for (auto it = m_windows.cbegin(); it != m_windows.cend(); ++it) {
            const QSize size = it->size;
            if (!it->isMapped || size.width() < atLeast.width() || size.height() < atLeast.height() ||
                2 * it->drawnPixels < size.width() * size.height())
                continue;
            drawn = {it.key(), it->drawnAt};
            return true;
        }
        return false;
    });
    return drawn;
}

Clock::time_point WindowWatch::waitForDrawing(xcb_window_t window, int pixels) {
    waitUntil("the window has drawn nothing", [&] { return m_windows.value(window).drawnPixels >= pixels; });
    return m_windows.value(window).drawnAt;
}

void WindowWatch::waitForGone(xcb_window_t window) {
    waitUntil("the window has stayed", [&] { return !m_windows.value(window).isMapped; });
}

void WindowWatch::forget() {
    while (const XcbEvent event = m_x.nextEvent())
        handle(*event);
    for (Window& window : m_windows)
        window.drawnPixels = 0;
}

template<typename Condition>
void WindowWatch::waitUntil(const char* what, const Condition& condition) {
    const auto deadline = Clock::now() + patience;
    while (!condition()) {
        const XcbEvent event = m_x.waitForEvent(100ms);
        if (event)
            handle(*event);
        else if (Clock::now() > deadline)
            throw NotMeasured(QLatin1String(what));
    }
}

void WindowWatch::handle(const xcb_generic_event_t& event) {
    switch (typeOf(event)) {
    case XCB_CREATE_NOTIFY: {
        const auto& created = as<xcb_create_notify_event_t>(event);
        m_windows[created.window].size = {created.width, created.height};
        watchDrawing(created.window);
        break;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto& configured = as<xcb_configure_notify_event_t>(event);
        m_windows[configured.window].size = {configured.width, configured.height};
        break;
    }
    case XCB_MAP_NOTIFY:
        m_windows[as<xcb_map_notify_event_t>(event).window].isMapped = true;
        break;
    case XCB_UNMAP_NOTIFY:
        m_windows[as<xcb_unmap_notify_event_t>(event).window].isMapped = false;
        break;
    case XCB_DESTROY_NOTIFY:
        m_windows.remove(as<xcb_destroy_notify_event_t>(event).window);
        break;
    default:
        break;
    }
    if (typeOf(event) != m_damageEvent)
        return;
    const auto& damage = as<xcb_damage_notify_event_t>(event);
    Window& window = m_windows[damage.drawable];
    window.drawnPixels += damage.area.width * damage.area.height;
    window.drawnAt = Clock::now();
}

void WindowWatch::watchDrawing(xcb_window_t window) {
    xcb_damage_create(m_x.get(), xcb_generate_id(m_x.get()), window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    m_x.flush();
}

} // namespace velmora::bench
