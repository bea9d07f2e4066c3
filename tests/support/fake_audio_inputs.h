#pragma once

#include "platform/audio_inputs.h"

namespace velmora::test {

/// Microphones that the test plugs in and out.
class FakeAudioInputs final : public AudioInputs {
public:
    [[nodiscard]] std::vector<AudioInput> inputs() override { return m_inputs; }

    void setInputs(std::vector<AudioInput> inputs) {
        m_inputs = std::move(inputs);
        Q_EMIT inputsChanged();
    }

private:
    std::vector<AudioInput> m_inputs{{QStringLiteral("usb"), QStringLiteral("USB")}};
};

} // namespace velmora::test
