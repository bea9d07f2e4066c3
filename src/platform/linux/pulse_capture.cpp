#include "platform/linux/pulse_capture.h"

#include "platform/linux/pulse_connection.h"

#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/introspect.h>
#include <pulse/operation.h>
#include <pulse/stream.h>

using namespace std::chrono_literals;

namespace velmora {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::microseconds bufferLength = 20ms;
constexpr auto retryInterval = 500ms;

} // namespace

PulseCapture::PulseCapture(PulseConnection& connection, PulseSource source, QByteArray device,
                           AudioEngine::Tap deliver)
    : m_connection(connection)
    , m_source(std::move(source))
    , m_device(std::move(device))
    , m_deliver(std::move(deliver))
    , m_pace(m_source.format.sampleRate)
    , m_standInTimer(connection, [this] { standIn(); })
    , m_silence(std::size_t(m_source.format.sampleRate / (1s / bufferLength) + 1) *
                std::size_t(m_source.format.channels)) {}

int PulseCapture::start() {
    open();
    const bool settled = m_connection.waitUntil(
        [this] { return !m_stream || pa_stream_get_state(m_stream.get()) == PA_STREAM_READY; });
    if (!settled)
        return PA_ERR_TIMEOUT;
    if (!m_stream)
        return m_error != 0 ? m_error : PA_ERR_UNKNOWN;
    m_started = true;
    loseIfSuspended();
    return 0;
}

void PulseCapture::open() {
    m_lastTry = Clock::now();
    if (!m_started)
        m_lastSample = m_lastTry;
    const pa_sample_spec spec{.format = PA_SAMPLE_FLOAT32NE,
                              .rate = std::uint32_t(m_source.format.sampleRate),
                              .channels = std::uint8_t(m_source.format.channels)};
    m_stream.reset(pa_stream_new(m_connection.context(), "Microphone", &spec, &m_source.channels));
    if (!m_stream) {
        m_error = pa_context_errno(m_connection.context());
        return;
    }
    using Self = PulseCapture;
    pa_stream_set_state_callback(
        m_stream.get(), [](pa_stream*, void* self) { static_cast<Self*>(self)->streamChanged(); }, this);
    pa_stream_set_read_callback(
        m_stream.get(), [](pa_stream*, std::size_t, void* self) { static_cast<Self*>(self)->read(); }, this);
    pa_stream_set_moved_callback(
        m_stream.get(), [](pa_stream*, void* self) { static_cast<Self*>(self)->checkDevice(); }, this);
    pa_stream_set_suspended_callback(
        m_stream.get(), [](pa_stream*, void* self) { static_cast<Self*>(self)->loseIfSuspended(); }, this);

    constexpr auto unset = std::uint32_t(-1);
    const pa_buffer_attr attributes{.maxlength = unset,
                                    .tlength = unset,
                                    .prebuf = unset,
                                    .minreq = unset,
                                    .fragsize = std::uint32_t(pa_usec_to_bytes(bufferLength.count(), &spec))};
    // A chosen device is recorded or nothing is; without the flag the stream would end up on some other one.
    const bool isDefault = m_device.isEmpty();
    const int flags = PA_STREAM_ADJUST_LATENCY | (isDefault ? 0 : PA_STREAM_DONT_MOVE);
    m_trusted = !isDefault;
    if (pa_stream_connect_record(m_stream.get(), isDefault ? nullptr : m_device.constData(), &attributes,
                                 pa_stream_flags_t(flags)) < 0) {
        m_error = pa_context_errno(m_connection.context());
        close();
    }
}

void PulseCapture::close() {
    m_check.reset();
    m_stream.reset();
}

void PulseCapture::streamChanged() {
    const pa_stream_state_t state = pa_stream_get_state(m_stream.get());
    if (state == PA_STREAM_READY) {
        checkDevice();
    } else if (!PA_STREAM_IS_GOOD(state)) {
        m_error = pa_context_errno(m_connection.context());
        close();
        lose();
    }
    m_connection.wake();
}

// The default may have become, or the server may have moved the stream to, the monitor of an output: what is
// heard there is not what the user says.
void PulseCapture::checkDevice() {
    if (!m_device.isEmpty())
        return;
    const QByteArray name = pa_stream_get_device_name(m_stream.get());
    m_trusted = name == m_source.name.toUtf8();
    if (m_trusted)
        return;
    const auto answered = [](pa_context*, const pa_source_info* info, int end, void* self) {
        auto* capture = static_cast<PulseCapture*>(self);
        if (end != 0)
            return;
        if (info->monitor_of_sink == PA_INVALID_INDEX) {
            capture->m_trusted = true;
        } else {
            capture->close();
            capture->lose();
        }
    };
    m_check.reset(
        pa_context_get_source_info_by_name(m_connection.context(), name.constData(), answered, this));
}

void PulseCapture::read() {
    const auto channels = std::size_t(m_source.format.channels);
    while (pa_stream_readable_size(m_stream.get()) > 0) {
        const void* data = nullptr;
        std::size_t bytes = 0;
        if (pa_stream_peek(m_stream.get(), &data, &bytes) < 0 || bytes == 0)
            break;
        const std::size_t samples = bytes / sizeof(float);
        const auto frames = std::int64_t(samples / channels);
        const auto now = Clock::now();
        deliverSilence(m_pace.take(now, frames));
        m_pace.end();
        m_standInTimer.stop();
        m_lastSample = now;
        // No data is a hole in the stream.
        if (data && m_trusted)
            m_deliver({.format = m_source.format, .samples = {static_cast<const float*>(data), samples}});
        else
            deliverSilence(frames);
        pa_stream_drop(m_stream.get());
    }
    loseIfSuspended(); // what was under way comes after the news of it
}

void PulseCapture::loseIfSuspended() {
    if (pa_stream_is_suspended(m_stream.get()) > 0)
        lose();
}

void PulseCapture::lose() {
    if (!m_started)
        return;
    m_pace.begin(m_lastSample);
    m_standInTimer.start(bufferLength);
}

void PulseCapture::standIn() {
    m_standInTimer.start(bufferLength);
    deliverSilence(m_pace.take(Clock::now()));
    if (!m_stream && m_connection.isReady() && Clock::now() - m_lastTry >= retryInterval)
        open();
}

void PulseCapture::deliverSilence(std::int64_t frames) {
    const auto channels = std::size_t(m_source.format.channels);
    for (auto left = std::size_t(frames) * channels; left > 0;) {
        const std::size_t samples = std::min(left, m_silence.size());
        m_deliver({.format = m_source.format, .samples = std::span(m_silence).first(samples)});
        left -= samples;
    }
}

} // namespace velmora
