#include "support/desktop/tap_recording.h"

#include <QTest>

namespace velmora::test {

AudioEngine::Tap TapRecording::tap() {
    return [this](const AudioBuffer& buffer) {
        const std::lock_guard lock(m_mutex);
        m_format = buffer.format;
        m_samples.insert(m_samples.end(), buffer.samples.begin(), buffer.samples.end());
    };
}

bool TapRecording::waitForSeconds(double wanted) const {
    return QTest::qWaitFor([&] { return seconds() >= wanted; }, 20'000);
}

double TapRecording::seconds() const {
    const std::lock_guard lock(m_mutex);
    return m_samples.empty() ? 0 : double(m_samples.size()) / m_format.channels / m_format.sampleRate;
}

AudioFormat TapRecording::format() const {
    const std::lock_guard lock(m_mutex);
    return m_format;
}

std::vector<float> TapRecording::samples() const {
    const std::lock_guard lock(m_mutex);
    return m_samples;
}

std::vector<float> TapRecording::last(double seconds) const {
    const std::lock_guard lock(m_mutex);
    const auto wanted = std::size_t(seconds * m_format.sampleRate) * std::size_t(m_format.channels);
    return {m_samples.end() - std::ptrdiff_t(std::min(wanted, m_samples.size())), m_samples.end()};
}

void TapRecording::clear() {
    const std::lock_guard lock(m_mutex);
    m_samples.clear();
}

} // namespace velmora::test
