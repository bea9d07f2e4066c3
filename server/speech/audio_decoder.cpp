#include "speech/audio_decoder.h"

#include "app/log.h"
#include "speech/decoder_child.h"
#include "speech/sample_rate.h"
#include "speech/sandbox.h"

#include <sys/wait.h>

#include <string>
#include <utility>

namespace velmora::server {

AudioDecoder::AudioDecoder(int descriptor)
    : m_process(descriptor) {}

bool AudioDecoder::ready(std::chrono::milliseconds time) {
    if (!m_first && m_process.wait(time)) {
        m_first = readSlice(m_process.output());
        if (!m_first) {
            fail();
        }
    }
    return m_first.has_value();
}

std::optional<std::chrono::milliseconds> AudioDecoder::announcedDuration() const {
    return m_first ? m_first->announced : std::nullopt;
}

std::vector<std::int16_t> AudioDecoder::read(const std::stop_token& stop) {
    if (m_ended) {
        return {};
    }
    std::optional<SoundSlice> slice;
    {
        const std::stop_callback kill(stop, [this] { m_process.kill(); });
        slice = m_first ? std::exchange(m_first, std::nullopt) : readSlice(m_process.output());
    }
    if (stop.stop_requested()) {
        m_ended = true;
        return {};
    }
    if (!slice) {
        fail();
    }
    m_ended = slice->samples.empty();
    m_samples += slice->samples.size();
    // A second of sound earns a second of processor time.
    m_process.allow(sandboxTime + std::chrono::seconds(m_samples / sampleRate));
    return std::move(slice->samples);
}

void AudioDecoder::fail() {
    m_ended = true;
    const int status = m_process.end().value_or(0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == static_cast<int>(DecoderExit::NotConfined)) {
        throw std::runtime_error("the sound decoder cannot be confined");
    }
    if (WIFSIGNALED(status)) {
        log("the sound decoder ended by signal " + std::to_string(WTERMSIG(status)));
    }
    throw AudioError("no sound that can be read");
}

} // namespace velmora::server
