#include "platform/linux/x11_key_event_monitors.h"

namespace velmora {
namespace {

constexpr auto releaseCheckInterval = std::chrono::milliseconds(10);

} // namespace

X11KeyEventMonitors::X11KeyEventMonitors(QByteArray display, std::chrono::milliseconds patience)
    : m_display(std::move(display))
    , m_patience(patience) {
    QObject::connect(&m_lettingGo, &QTimer::timeout, &m_lettingGo, [this] { letGoOnceReleased(); });
}

X11KeyEventMonitors::~X11KeyEventMonitors() = default;

std::unique_ptr<KeyEventMonitor> X11KeyEventMonitors::addMonitor(KeyEvent::Kind kind, Handler handler) {
    return takeKeyboard() ? m_monitors.add(kind, std::move(handler)) : nullptr;
}

bool X11KeyEventMonitors::takeKeyboard() {
    if (!m_grab) {
        auto grab = X11KeyboardGrab::take(m_display);
        auto watch = X11KeyWatch::open(
            m_display, [this](const KeyEvent& event) { m_monitors.send(event); },
            X11KeyWatch::CapsLockBit::OfKey);
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

// Never at once: this may be in the middle of an event of the watch.
void X11KeyEventMonitors::beginLettingGo() {
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
