#pragma once

#include "platform/audio_inputs.h"
#include "platform/linux/pulse_stream.h"

#include <condition_variable>
#include <mutex>

struct pa_context;
struct pa_source_info;

namespace velmora {

class PulseConnection;

/// The sources that the sound server has, followed on the sound thread as devices come and go, so that the
/// main thread needn't wait for the server to know.
class PulseDevices final : public AudioInputs {
    Q_OBJECT

public:
    struct Kinds {
        bool microphones = false;
        bool monitors = false; ///< of outputs: what is played there can be recorded

        bool operator==(const Kinds&) const = default;
    };

    explicit PulseDevices(PulseConnection& connection);
    ~PulseDevices() override;

    /// What is known; a server that isn't there has none. The first call connects, and gives the server 20 ms
    /// to answer. Main thread.
    [[nodiscard]] Kinds kinds();
    /// The microphones, as kinds() gets them.
    [[nodiscard]] std::vector<AudioInput> inputs() override;
    /// The same, only without connecting and waiting: absent while the server isn't there or hasn't told yet.
    [[nodiscard]] std::optional<std::vector<AudioInput>> knownInputs();

Q_SIGNALS:
    /// Emitted on the sound thread: a receiver that lives on the main thread gets it there.
    void changed();

private:
    struct Sources {
        std::vector<AudioInput> microphones;
        bool monitors = false;

        [[nodiscard]] Kinds kinds() const { return {!microphones.empty(), monitors}; }
    };

    [[nodiscard]] Sources sources();
    void follow();
    void list();
    void collect(const pa_source_info& source);
    /// `current` tells what the server has from what is assumed while there is none.
    void publish(const Sources& sources, bool current);

    PulseConnection& m_connection;
    PulseOperation m_listing;
    Sources m_listed; // by the listing under way
    bool m_isFollowing = false;

    std::mutex m_mutex; // for what follows
    std::condition_variable m_answered;
    Sources m_sources;
    bool m_isCurrent = false;
    bool m_hasAnswer = false;
    bool m_hasWaited = false;
};

} // namespace velmora
