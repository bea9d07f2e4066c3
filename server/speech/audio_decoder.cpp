#include "speech/audio_decoder.h"

#include "app/log.h"
#include "speech/decoder_child.h"
#include "speech/sample_rate.h"
#include "speech/sandbox.h"

#include <sys/wait.h>

#include <string>

namespace velmora::server {

AudioDecoder::AudioDecoder(int descriptor)
    : m_process(descriptor) {}

bool AudioDecoder::ready(std::chrono::milliseconds time) {
    if (!m_begun && m_process.wait(time) && !readLength()) {
        fail();
    }
    return m_begun;
}

std::vector<std::int16_t> AudioDecoder::read(const std::stop_token& stop) {
    if (m_ended) {
        return {};
    }
    std::vector<std::int16_t> slice;
    bool complete = false;
    {
        const std::stop_callback kill(stop, [this] { m_process.kill(); });
        complete = (m_begun || readLength()) && readSlice(slice);
    }
    if (stop.stop_requested()) {
        m_ended = true;
        return {};
    }
    if (!complete) {
        fail();
    }
    m_ended = slice.empty();
    m_samples += slice.size();
    // A second of sound earns a second of processor time.
    m_process.allow(sandboxTime + std::chrono::seconds(m_samples / sampleRate));
    return slice;
}

bool AudioDecoder::readLength() {
    std::int64_t length = noLength;
    m_begun = m_process.read(std::as_writable_bytes(std::span(&length, 1)));
    if (length >= 0) {
        m_duration = std::chrono::milliseconds(length);
    }
    return m_begun;
}

bool AudioDecoder::readSlice(std::vector<std::int16_t>& slice) {
    std::uint32_t size = 0;
    if (!m_process.read(std::as_writable_bytes(std::span(&size, 1))) || size > sliceSize) {
        return false;
    }
    slice.resize(size);
    return m_process.read(std::as_writable_bytes(std::span(slice)));
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
