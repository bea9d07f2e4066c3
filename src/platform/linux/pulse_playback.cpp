#include "platform/linux/pulse_playback.h"

#include "platform/linux/pulse_connection.h"

#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/stream.h>
#include <pulse/timeval.h>

namespace velmora {
namespace {

constexpr pa_usec_t bufferLength = 40 * PA_USEC_PER_MSEC;
constexpr pa_usec_t lengthToBegin = 10 * PA_USEC_PER_MSEC;

} // namespace

// Some servers ignore the volume of a stream, so that the samples themselves are scaled.
PulsePlayback::PulsePlayback(PulseConnection& connection, const WavSound& sound, float volume)
    : m_samples(sound.samples) {
    for (float& sample : m_samples)
        sample *= std::clamp(volume, 0.0F, 1.0F);

    const pa_sample_spec spec{.format = PA_SAMPLE_FLOAT32NE,
                              .rate = std::uint32_t(sound.sampleRate),
                              .channels = std::uint8_t(sound.channels)};
    pa_proplist* properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_MEDIA_ROLE, "event");
    m_stream.reset(
        pa_stream_new_with_proplist(connection.context(), "Sound cue", &spec, nullptr, properties));
    pa_proplist_free(properties);
    if (!m_stream)
        return;
    const auto changed = [](pa_stream*, void* self) { static_cast<PulsePlayback*>(self)->streamChanged(); };
    pa_stream_set_state_callback(m_stream.get(), changed, this);
    const pa_buffer_attr attributes{.maxlength = std::uint32_t(-1),
                                    .tlength = std::uint32_t(pa_usec_to_bytes(bufferLength, &spec)),
                                    .prebuf = std::uint32_t(pa_usec_to_bytes(lengthToBegin, &spec)),
                                    .minreq = std::uint32_t(-1),
                                    .fragsize = std::uint32_t(-1)};
    if (pa_stream_connect_playback(m_stream.get(), nullptr, &attributes, PA_STREAM_ADJUST_LATENCY, nullptr,
                                   nullptr) < 0)
        close();
}

void PulsePlayback::streamChanged() {
    const pa_stream_state_t state = pa_stream_get_state(m_stream.get());
    if (!PA_STREAM_IS_GOOD(state)) {
        close();
    } else if (state == PA_STREAM_READY) {
        // The server takes the whole of such a short sound at once.
        pa_stream_write(m_stream.get(), m_samples.data(), m_samples.size() * sizeof(float), nullptr, 0,
                        PA_SEEK_RELATIVE);
        const auto played = [](pa_stream*, int, void* self) { static_cast<PulsePlayback*>(self)->close(); };
        m_drain.reset(pa_stream_drain(m_stream.get(), played, this));
    }
}

void PulsePlayback::close() {
    m_drain.reset();
    m_stream.reset();
}

} // namespace velmora
