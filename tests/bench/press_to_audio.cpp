#include "dictation_runs.h"
#include "figures.h"

#include <pulse/error.h>
#include <pulse/mainloop.h>
#include <pulse/stream.h>

#include <memory>

namespace velmora::bench {
namespace {

constexpr int runs = 20;
constexpr pa_usec_t bufferLength = 20'000; // as the application asks for

struct Release {
    void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
    void operator()(pa_context* context) const {
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
    void operator()(pa_stream* stream) const {
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
};

/// A connection to the sound server with nothing around it.
class BareMicrophone {
public:
    BareMicrophone() {
        pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
        while (pa_context_get_state(m_context.get()) != PA_CONTEXT_READY)
            iterate();
    }

    /// From the request for a recording to its first samples, in milliseconds.
    double timeToFirstBuffer() {
        const pa_sample_spec spec{.format = PA_SAMPLE_FLOAT32NE, .rate = 48'000, .channels = 1};
        constexpr auto unset = std::uint32_t(-1);
        const pa_buffer_attr attributes{.maxlength = unset,
                                        .tlength = unset,
                                        .prebuf = unset,
                                        .minreq = unset,
                                        .fragsize = std::uint32_t(pa_usec_to_bytes(bufferLength, &spec))};
        const std::unique_ptr<pa_stream, Release> stream(
            pa_stream_new(m_context.get(), "bench", &spec, nullptr));
        std::optional<Clock::time_point> first;
        pa_stream_set_read_callback(
            stream.get(),
            [](pa_stream*, std::size_t, void* time) {
                auto& noted = *static_cast<std::optional<Clock::time_point>*>(time);
                noted = noted.value_or(Clock::now());
            },
            &first);
        const auto start = Clock::now();
        pa_stream_connect_record(stream.get(), nullptr, &attributes, PA_STREAM_ADJUST_LATENCY);
        while (!first)
            iterate();
        return milliseconds(start, *first);
    }

private:
    void iterate() {
        if (pa_mainloop_iterate(m_loop.get(), 1, nullptr) < 0 ||
            !PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context.get())))
            throw NotMeasured(QStringLiteral("no sound server: ") +
                              QLatin1String(pa_strerror(pa_context_errno(m_context.get()))));
    }

    std::unique_ptr<pa_mainloop, Release> m_loop{pa_mainloop_new()};
    std::unique_ptr<pa_context, Release> m_context{
        pa_context_new(pa_mainloop_get_api(m_loop.get()), "velmora-bench")};
};

} // namespace

std::vector<Result> measurePressToAudio(DictationRuns& dictations) {
    Samples times;
    for (const DictationTimes& dictation : dictations.get())
        times.add(dictation.pressToAudio);
    Samples bare;
    BareMicrophone microphone;
    for (int run = 0; run < runs; ++run)
        bare.add(microphone.timeToFirstBuffer());
    return {{QStringLiteral("press to first audio buffer"), QStringLiteral("ms"), times,
             QStringLiteral("bare record stream, same buffers"), bare, target::P95AtMost{60}}};
}

} // namespace velmora::bench
