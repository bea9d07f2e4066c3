#include "platform/linux/pulse_connection.h"

#include "platform/linux/pulse_stream.h"
#include "platform/linux/pulse_timer.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/operation.h>
#include <pulse/thread-mainloop.h>

using namespace std::chrono_literals;

namespace velmora {
namespace {

constexpr auto patience = 1s;
constexpr auto retryInterval = 500ms;

} // namespace

PulseConnection::Lock::Lock(PulseConnection& connection)
    : m_loop(connection.m_loop) {
    pa_threaded_mainloop_lock(m_loop);
}

PulseConnection::Lock::~Lock() {
    pa_threaded_mainloop_unlock(m_loop);
}

PulseConnection::PulseConnection(QByteArray server)
    : m_server(std::move(server))
    , m_loop(pa_threaded_mainloop_new())
    , m_retry(std::make_unique<PulseTimer>(*this, [this] { openContext(); })) {
    pa_threaded_mainloop_set_name(m_loop, "velmora-sound");
}

PulseConnection::~PulseConnection() {
    {
        const Lock lock(*this);
        m_retry.reset();
        closeContext();
    }
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
}

pa_mainloop_api* PulseConnection::api() const {
    return pa_threaded_mainloop_get_api(m_loop);
}

bool PulseConnection::isReady() const {
    return m_context && pa_context_get_state(m_context) == PA_CONTEXT_READY;
}

void PulseConnection::connectNow() {
    if (!m_started)
        m_started = pa_threaded_mainloop_start(m_loop) == 0;
    if (m_started && (!m_context || !PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context))))
        openContext();
}

bool PulseConnection::waitUntilReady() {
    connectNow();
    const auto settled = [this] {
        return isReady() || !m_context || !PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context));
    };
    return m_started && waitUntil(settled) && isReady();
}

bool PulseConnection::waitUntil(const std::function<bool()>& done) {
    if (done() || !m_patient)
        return done();
    PulseTimer deadline(*this, [this] {
        m_patient = false;
        wake();
    });
    deadline.start(patience);
    while (m_patient && !done())
        pa_threaded_mainloop_wait(m_loop);
    if (!m_patient)
        askForSignOfLife();
    return done();
}

bool PulseConnection::run(const std::function<pa_operation*(pa_context*)>& start) {
    if (!waitUntilReady())
        return false;
    const PulseOperation operation(start(m_context));
    if (!operation)
        return false;
    const auto changed = [](pa_operation*, void* self) { static_cast<PulseConnection*>(self)->wake(); };
    pa_operation_set_state_callback(operation.get(), changed, this);
    const auto state = [&] { return pa_operation_get_state(operation.get()); };
    return waitUntil([&] { return state() != PA_OPERATION_RUNNING; }) && state() == PA_OPERATION_DONE;
}

void PulseConnection::wake() {
    pa_threaded_mainloop_signal(m_loop, 0);
}

void PulseConnection::openContext() {
    closeContext();
    m_context = pa_context_new(api(), "Velmora");
    const auto changed = [](pa_context*, void* self) {
        static_cast<PulseConnection*>(self)->contextChanged();
    };
    pa_context_set_state_callback(m_context, changed, this);
    // libpulse would fork and wait for a server of its own making with the lock held; sessions start theirs.
    const int result = pa_context_connect(m_context, m_server.isEmpty() ? nullptr : m_server.constData(),
                                          PA_CONTEXT_NOAUTOSPAWN, nullptr);
    if (result < 0)
        m_retry->start(retryInterval);
}

void PulseConnection::closeContext() {
    if (!m_context)
        return;
    if (m_retry)
        m_retry->stop();
    pa_context_set_state_callback(m_context, nullptr, nullptr);
    pa_context_disconnect(m_context);
    pa_context_unref(m_context);
    m_context = nullptr;
}

void PulseConnection::contextChanged() {
    const bool ready = isReady();
    const bool failed = !PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context));
    if (failed)
        m_retry->start(retryInterval);
    if (ready || failed)
        m_patient = true;
    wake();
    if (ready != std::exchange(m_announced, ready))
        Q_EMIT readyChanged(ready);
}

// Whatever it answers, and be it late, proves that waiting makes sense again.
void PulseConnection::askForSignOfLife() {
    if (!isReady())
        return;
    const auto answered = [](pa_context*, const pa_server_info*, void* self) {
        static_cast<PulseConnection*>(self)->m_patient = true;
    };
    if (pa_operation* question = pa_context_get_server_info(m_context, answered, this))
        pa_operation_unref(question);
}

} // namespace velmora
