#include "platform/linux/pulse_devices.h"

#include "platform/linux/pulse_connection.h"

#include <pulse/introspect.h>
#include <pulse/subscribe.h>

using namespace std::chrono_literals;

namespace velmora {
namespace {

constexpr auto patience = 20ms;

// Devices also change, with every turn of a volume knob; their kind doesn't.
bool isComingOrGoing(pa_subscription_event_type_t event) {
    return (event & PA_SUBSCRIPTION_EVENT_TYPE_MASK) != PA_SUBSCRIPTION_EVENT_CHANGE;
}

} // namespace

PulseDevices::PulseDevices(PulseConnection& connection)
    : m_connection(connection) {
    const auto readyChanged = [this](bool ready) {
        m_isFollowing = false;
        if (ready)
            follow();
        else
            publish({}, false);
    };
    connect(&connection, &PulseConnection::readyChanged, this, readyChanged, Qt::DirectConnection);
}

PulseDevices::~PulseDevices() {
    const PulseConnection::Lock lock(m_connection);
    m_connection.disconnect(this);
    if (m_isFollowing)
        pa_context_set_subscribe_callback(m_connection.context(), nullptr, nullptr);
    m_listing.reset();
}

PulseDevices::Kinds PulseDevices::kinds() {
    return sources().kinds();
}

std::vector<AudioInput> PulseDevices::inputs() {
    return sources().microphones;
}

std::optional<std::vector<AudioInput>> PulseDevices::knownInputs() {
    const std::lock_guard guard(m_mutex);
    return m_isCurrent ? std::optional(m_sources.microphones) : std::nullopt;
}

PulseDevices::Sources PulseDevices::sources() {
    {
        const PulseConnection::Lock lock(m_connection);
        m_connection.connectNow();
        if (!m_isFollowing && m_connection.isReady())
            follow();
    }
    std::unique_lock guard(m_mutex);
    if (!std::exchange(m_hasWaited, true))
        m_answered.wait_for(guard, patience, [this] { return m_hasAnswer; });
    return m_sources;
}

void PulseDevices::follow() {
    m_isFollowing = true;
    const auto happened = [](pa_context*, pa_subscription_event_type_t event, uint32_t, void* self) {
        if (isComingOrGoing(event))
            static_cast<PulseDevices*>(self)->list();
    };
    pa_context_set_subscribe_callback(m_connection.context(), happened, this);
    // Its outcome is of no use: without events the list stays what it is now.
    const PulseOperation unheeded(
        pa_context_subscribe(m_connection.context(), PA_SUBSCRIPTION_MASK_SOURCE, nullptr, nullptr));
    list();
}

void PulseDevices::list() {
    m_listed = {};
    const auto next = [](pa_context*, const pa_source_info* source, int end, void* data) {
        auto* self = static_cast<PulseDevices*>(data);
        if (end == 0)
            self->collect(*source);
        else
            self->publish(self->m_listed, true);
    };
    m_listing.reset(pa_context_get_source_info_list(m_connection.context(), next, this));
}

void PulseDevices::collect(const pa_source_info& source) {
    if (source.monitor_of_sink == PA_INVALID_INDEX)
        m_listed.microphones.push_back(
            {.uniqueID = QString::fromUtf8(source.name), .name = QString::fromUtf8(source.description)});
    else
        m_listed.monitors = true;
}

void PulseDevices::publish(const Sources& sources, bool current) {
    Sources before;
    {
        const std::lock_guard guard(m_mutex);
        before = std::exchange(m_sources, sources);
        m_isCurrent = current;
        m_hasAnswer = true;
    }
    m_answered.notify_one();
    if (before.kinds() != sources.kinds())
        Q_EMIT changed();
    if (before.microphones != sources.microphones)
        Q_EMIT inputsChanged();
}

} // namespace velmora
