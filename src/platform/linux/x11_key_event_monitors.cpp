#include "platform/linux/x11_key_event_monitors.h"

namespace velmora {
namespace {

constexpr auto releaseCheckInterval = std::chrono::milliseconds(10);

} // namespace

class X11KeyEventMonitors::Monitor final : public KeyEventMonitor {
public:
    Monitor(X11KeyEventMonitors& keyboard, KeyEvent::Kind watched, Handler handled)
        : kind(watched)
        , handler(std::move(handled))
        , m_keyboard(keyboard) {}
    ~Monitor() override { m_keyboard.remove(this); }
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

    const KeyEvent::Kind kind;
    const Handler handler;

private:
    X11KeyEventMonitors& m_keyboard;
};

X11KeyEventMonitors::X11KeyEventMonitors(QByteArray display, std::chrono::milliseconds patience)
    : m_display(std::move(display))
    , m_patience(patience) {
    QObject::connect(&m_lettingGo, &QTimer::timeout, &m_lettingGo, [this] { letGoOnceReleased(); });
}

X11KeyEventMonitors::~X11KeyEventMonitors() = default;

std::unique_ptr<KeyEventMonitor> X11KeyEventMonitors::addMonitor(KeyEvent::Kind kind, Handler handler) {
    if (!takeKeyboard())
        return nullptr;
    auto monitor = std::make_unique<Monitor>(*this, kind, std::move(handler));
    m_monitors.push_back(monitor.get());
    return monitor;
}

bool X11KeyEventMonitors::takeKeyboard() {
    if (!m_grab) {
        auto grab = X11KeyboardGrab::take(m_display);
        auto watch = X11KeyWatch::open(
            m_display, [this](const KeyEvent& event) { send(event); }, X11KeyWatch::CapsLockBit::OfKey);
        if (!grab || !watch)
            return false;
        m_grab = std::move(grab);
        m_watch = std::move(watch);
    }
    if (!m_grab->isHeld())
        return false;
    m_lettingGo.stop();
    return true;
}

void X11KeyEventMonitors::send(const KeyEvent& event) {
    const std::vector<Monitor*> monitors = m_monitors;
    for (Monitor* each : monitors) {
        if (std::ranges::find(m_monitors, each) == m_monitors.end() || each->kind != event.kind)
            continue;
        const Handler handler = each->handler; // which may end the monitor
        handler(event);
    }
}

// Never at once: this may be in the middle of an event of the watch.
void X11KeyEventMonitors::remove(Monitor* monitor) {
    std::erase(m_monitors, monitor);
    if (!m_monitors.empty())
        return;
    m_awaited = m_grab->pressed();
    m_deadline.setRemainingTime(m_patience);
    m_lettingGo.start(releaseCheckInterval);
}

void X11KeyEventMonitors::letGoOnceReleased() {
    m_awaited &= m_grab->pressed();
    if (m_awaited.any() && !m_deadline.hasExpired())
        return;
    m_lettingGo.stop();
    m_watch.reset();
    m_grab.reset();
}

} // namespace velmora
