#pragma once

#include "platform/event_tap.h"
#include "platform/linux/retry_pause.h"

#include <QByteArray>

namespace velmora {

/// Taps on the keyboards of an X server.
class X11EventTapFactory final : public EventTapFactory {
public:
    /// An empty name is the session's display ($DISPLAY).
    explicit X11EventTapFactory(QByteArray display = {});

    /// Null when there is no X server, or one with an input extension older than 2.1. Such a one isn't asked
    /// again at every call.
    [[nodiscard]] std::unique_ptr<EventTap> createTap(EventTapMode mode,
                                                      EventTap::Callback callback) override;

private:
    const QByteArray m_display;
    RetryPause m_pause;
};

} // namespace velmora
