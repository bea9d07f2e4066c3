#include "platform/linux/x11_event_tap.h"

namespace velmora {

X11EventTap::X11EventTap(QByteArray display, EventTapMode mode, Callback callback)
    : m_display(std::move(display))
    , m_mode(mode)
    , m_callback(std::move(callback)) {
    setEnabled(true);
}

bool X11EventTap::isEnabled() const {
    return m_watch && m_watch->isOpen();
}

void X11EventTap::setEnabled(bool enabled) {
    if (enabled == isEnabled())
        return;
    if (m_watch)
        m_watch->releaseAll();
    m_watch.reset();
    if (!enabled || !m_pause.isOver())
        return;
    // The verdict comes too late here: what is to be swallowed has been claimed before.
    m_watch = X11KeyWatch::open(m_display, [this](const KeyEvent& event) { m_callback(event); });
    if (!m_watch) {
        m_pause.failed();
        return;
    }
    m_pause = {};
    m_watch->setFnStandIn(m_fnStandIn);
    m_watch->claim(m_chord);
}

void X11EventTap::claimChord(const std::optional<KeyChord>& chord) {
    if (m_mode == EventTapMode::ListenOnly)
        return;
    m_chord = chord;
    if (m_watch)
        m_watch->claim(chord);
}

void X11EventTap::setFnStandIn(FnStandIn key) {
    m_fnStandIn = key;
    if (m_watch)
        m_watch->setFnStandIn(key);
}

} // namespace velmora
