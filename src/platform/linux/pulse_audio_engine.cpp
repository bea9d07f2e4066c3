#include "platform/linux/pulse_audio_engine.h"

#include "platform/linux/pulse_capture.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_devices.h"

#include <pulse/def.h>

namespace velmora {

PulseAudioEngine::PulseAudioEngine(PulseConnection& connection, PulseDevices* devices)
    : m_connection(connection)
    , m_devices(devices) {}

PulseAudioEngine::~PulseAudioEngine() {
    stop();
}

MicrophoneAuthorization PulseAudioEngine::authorization() {
    return availableInputs().empty() ? MicrophoneAuthorization::Denied : MicrophoneAuthorization::Authorized;
}

QCoro::Task<bool> PulseAudioEngine::requestAccess() {
    co_return authorization() == MicrophoneAuthorization::Authorized;
}

std::vector<AudioInput> PulseAudioEngine::availableInputs() {
    if (auto known = m_devices ? m_devices->knownInputs() : std::nullopt)
        return *std::move(known);
    const PulseConnection::Lock lock(m_connection);
    std::vector<AudioInput> inputs;
    for (const PulseSource& source : listPulseSources(m_connection).value_or(std::vector<PulseSource>())) {
        if (!source.isMonitor)
            inputs.push_back({.uniqueID = source.name, .name = source.description});
    }
    return inputs;
}

void PulseAudioEngine::useDefaultInput() {
    m_device.clear();
    m_input.reset();
}

void PulseAudioEngine::setInputDevice(const QString& uniqueID) {
    const std::vector<AudioInput> inputs = availableInputs();
    if (std::ranges::find(inputs, uniqueID, &AudioInput::uniqueID) == inputs.end()) {
        useDefaultInput();
        throw AudioDeviceError(AudioDeviceError::NotFound{uniqueID});
    }
    m_device = uniqueID.toUtf8();
    m_input.reset();
}

AudioFormat PulseAudioEngine::inputFormat() {
    const PulseConnection::Lock lock(m_connection);
    m_input = findInput();
    return m_input ? m_input->format : AudioFormat();
}

void PulseAudioEngine::prepare() {
    const PulseConnection::Lock lock(m_connection);
    static_cast<void>(findInput());
}

void PulseAudioEngine::installTap(Tap tap) {
    const PulseConnection::Lock lock(m_connection);
    m_tap = std::move(tap);
}

void PulseAudioEngine::removeTap() {
    installTap(nullptr);
}

void PulseAudioEngine::start() {
    const PulseConnection::Lock lock(m_connection);
    if (m_capture)
        return;
    std::optional<PulseSource> input = std::exchange(m_input, std::nullopt);
    if (!input)
        input = findInput();
    if (!input && !m_device.isEmpty() && m_connection.isReady())
        throw AudioDeviceError(AudioDeviceError::NotFound{QString::fromUtf8(m_device)});
    if (!input)
        throw AudioDeviceError(AudioDeviceError::EngineUnavailable{});
    auto capture = std::make_unique<PulseCapture>(m_connection, std::move(*input), m_device,
                                                  [this](const AudioBuffer& buffer) {
                                                      if (m_tap)
                                                          m_tap(buffer);
                                                  });
    if (const int error = capture->start(); error != 0)
        throw AudioDeviceError(AudioDeviceError::SetFailed{error});
    m_capture = std::move(capture);
}

void PulseAudioEngine::stop() {
    const PulseConnection::Lock lock(m_connection);
    m_capture.reset();
}

// The source that a start would record; none when it is missing or the monitor of an output. Needs the lock.
std::optional<PulseSource> PulseAudioEngine::findInput() {
    auto source = findPulseSource(m_connection, m_device.isEmpty() ? defaultPulseSource : m_device);
    return source && !source->isMonitor ? std::move(source) : std::nullopt;
}

} // namespace velmora
