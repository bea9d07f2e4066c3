#include "platform/linux/pulse_timer.h"

#include "platform/linux/pulse_connection.h"

#include <pulse/context.h>
#include <pulse/rtclock.h>

namespace velmora {

PulseTimer::PulseTimer(PulseConnection& connection, std::function<void()> fire)
    : m_connection(connection)
    , m_fire(std::move(fire)) {}

void PulseTimer::start(std::chrono::microseconds delay) {
    stop();
    const auto fired = [](pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
        auto* timer = static_cast<PulseTimer*>(self);
        timer->stop();
        timer->m_fire();
    };
    m_event = pa_context_rttime_new(m_connection.context(), pa_rtclock_now() + delay.count(), fired, this);
}

void PulseTimer::stop() {
    if (m_event)
        m_connection.api()->time_free(m_event);
    m_event = nullptr;
}

} // namespace velmora
