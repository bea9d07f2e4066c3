#pragma once

#include "platform/event_tap.h"
#include "platform/linux/retry_pause.h"
#include "platform/linux/x11_key_watch.h"

#include <QByteArray>

namespace velmora {

/// A watch over the keyboards of one X server that can be begun anew when the server has gone.
class X11EventTap final : public EventTap {
public:
    X11EventTap(QByteArray display, EventTapMode mode, Callback callback);

    /// False also when the server has hung up.
    [[nodiscard]] bool isEnabled() const override;
    /// Enabling connects again if need be, but not at every call while that fails; isEnabled() tells whether
    /// it went well.
    void setEnabled(bool enabled) override;
    void claimChord(const std::optional<KeyChord>& chord) override;
    void setFnStandIn(FnStandIn key) override;

private:
    const QByteArray m_display;
    const EventTapMode m_mode;
    const Callback m_callback;
    std::optional<KeyChord> m_chord;
    FnStandIn m_fnStandIn = FnStandIn::None;
    std::unique_ptr<X11KeyWatch> m_watch;
    RetryPause m_pause;
};

} // namespace velmora
