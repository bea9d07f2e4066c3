#pragma once

#include "platform/audio_format.h"

#include <QString>

#include <pulse/channelmap.h>

#include <optional>
#include <vector>

namespace velmora {

class PulseConnection;

/// A source of the sound server: a microphone, or the monitor of an output.
struct PulseSource {
    QString name;
    QString description;
    AudioFormat format; ///< the native one
    pa_channel_map channels{};
    bool isMonitor = false;
};

/// What stands for whatever source is the default.
inline constexpr char defaultPulseSource[] = "@DEFAULT_SOURCE@";

/// All sources in the server's order; none when it doesn't answer. Needs the lock.
[[nodiscard]] std::optional<std::vector<PulseSource>> listPulseSources(PulseConnection& connection);
/// None when there is no such source, or no server. Needs the lock.
[[nodiscard]] std::optional<PulseSource> findPulseSource(PulseConnection& connection, const QByteArray& name);

} // namespace velmora
