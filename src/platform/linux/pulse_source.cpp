#include "platform/linux/pulse_source.h"

#include "platform/linux/pulse_connection.h"

#include <pulse/introspect.h>

namespace velmora {
namespace {

using Sources = std::vector<PulseSource>;

void collect(pa_context*, const pa_source_info* info, int end, void* sources) {
    if (end != 0)
        return;
    static_cast<Sources*>(sources)->push_back(
        {.name = QString::fromUtf8(info->name),
         .description = QString::fromUtf8(info->description),
         .format = {.sampleRate = double(info->sample_spec.rate), .channels = info->sample_spec.channels},
         .channels = info->channel_map,
         .isMonitor = info->monitor_of_sink != PA_INVALID_INDEX});
}

} // namespace

std::optional<Sources> listPulseSources(PulseConnection& connection) {
    Sources sources;
    const bool answered = connection.run(
        [&](pa_context* context) { return pa_context_get_source_info_list(context, collect, &sources); });
    return answered ? std::optional(std::move(sources)) : std::nullopt;
}

std::optional<PulseSource> findPulseSource(PulseConnection& connection, const QByteArray& name) {
    Sources sources;
    const bool answered = connection.run([&](pa_context* context) {
        return pa_context_get_source_info_by_name(context, name.constData(), collect, &sources);
    });
    return answered && !sources.empty() ? std::optional(std::move(sources.front())) : std::nullopt;
}

} // namespace velmora
