#pragma once

#include "platform/key_event_monitor_list.h"
#include "platform/linux/x11_key_watch.h"
#include "platform/linux/x11_keyboard_grab.h"

#include <QDeadlineTimer>

namespace velmora {

/// Takes the keyboard of an X session while there is a monitor. Keys that are down when the last one ends
/// stay with it until they are up, so that their repeats reach nobody either. Must outlive its monitors.
class X11KeyEventMonitors final : public KeyEventMonitors {
public:
    /// An empty name is the session's display ($DISPLAY). A key that never comes up, for its release can be
    /// lost, holds the keyboard no longer than the patience lasts.
    explicit X11KeyEventMonitors(QByteArray display = {},
                                 std::chrono::milliseconds patience = std::chrono::seconds(2));
    ~X11KeyEventMonitors() override;

    [[nodiscard]] std::unique_ptr<KeyEventMonitor> addMonitor(KeyEvent::Kind kind, Handler handler) override;

private:
    [[nodiscard]] bool takeKeyboard();
    void beginLettingGo();
    void letGoOnceReleased();

    const QByteArray m_display;
    const std::chrono::milliseconds m_patience;
    KeyEventMonitorList m_monitors{[this] { beginLettingGo(); }};
    std::unique_ptr<X11KeyboardGrab> m_grab;
    std::unique_ptr<X11KeyWatch> m_watch;
    X11Keys m_awaited; // of those that were down when the last monitor ended
    QTimer m_lettingGo;
    QDeadlineTimer m_deadline;
};

} // namespace velmora
