#include "platform/linux/pulse_monitor_probe.h"

#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_stream.h"

#include <pulse/stream.h>

namespace velmora {

bool canRecordOutput(PulseConnection& connection) {
    const PulseConnection::Lock lock(connection);
    if (!connection.waitUntilReady())
        return false;
    constexpr pa_sample_spec spec{.format = PA_SAMPLE_S16NE, .rate = 48'000, .channels = 1};
    const PulseStream stream(pa_stream_new(connection.context(), "Check", &spec, nullptr));
    if (!stream)
        return false;
    const auto changed = [](pa_stream*, void* self) { static_cast<PulseConnection*>(self)->wake(); };
    pa_stream_set_state_callback(stream.get(), changed, &connection);
    // No sound is needed for the answer, and none should wake a device that sleeps.
    constexpr auto flags = pa_stream_flags_t(PA_STREAM_START_CORKED | PA_STREAM_DONT_MOVE);
    if (pa_stream_connect_record(stream.get(), "@DEFAULT_MONITOR@", nullptr, flags) < 0)
        return false;
    const auto state = [&] { return pa_stream_get_state(stream.get()); };
    return connection.waitUntil([&] { return state() != PA_STREAM_CREATING; }) && state() == PA_STREAM_READY;
}

} // namespace velmora
