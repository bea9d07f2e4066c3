#pragma once

#include "platform/audio_engine.h"
#include "samples.h"

#include <mutex>

namespace velmora::bench {

/// Another engine, with the time noted at which its tap is called first.
class TimedAudioEngine final : public AudioEngine {
public:
    explicit TimedAudioEngine(std::unique_ptr<AudioEngine> engine)
        : m_engine(std::move(engine)) {}

    /// The first call of the tap that is installed, if it was called.
    [[nodiscard]] std::optional<Clock::time_point> firstBuffer() const {
        const std::lock_guard lock(m_mutex);
        return m_firstBuffer;
    }

    [[nodiscard]] MicrophoneAuthorization authorization() override { return m_engine->authorization(); }
    QCoro::Task<bool> requestAccess() override { return m_engine->requestAccess(); }
    [[nodiscard]] std::vector<AudioInput> availableInputs() override { return m_engine->availableInputs(); }
    void useDefaultInput() override { m_engine->useDefaultInput(); }
    void setInputDevice(const QString& uniqueID) override { m_engine->setInputDevice(uniqueID); }
    [[nodiscard]] AudioFormat inputFormat() override { return m_engine->inputFormat(); }
    void prepare() override { m_engine->prepare(); }
    void installTap(Tap tap) override {
        m_engine->installTap([this, tap = std::move(tap)](const AudioBuffer& buffer) {
            noteBuffer();
            tap(buffer);
        });
    }
    void removeTap() override {
        m_engine->removeTap();
        const std::lock_guard lock(m_mutex);
        m_firstBuffer.reset();
    }
    void start() override { m_engine->start(); }
    void stop() override { m_engine->stop(); }

private:
    void noteBuffer() {
        const std::lock_guard lock(m_mutex);
        if (!m_firstBuffer)
            m_firstBuffer = Clock::now();
    }

    const std::unique_ptr<AudioEngine> m_engine;
    mutable std::mutex m_mutex;
    std::optional<Clock::time_point> m_firstBuffer;
};

} // namespace velmora::bench
