#pragma once

#include "platform/audio_device_error.h"
#include "platform/audio_format.h"

#include <QCoro/QCoroTask>
#include <QString>

#include <functional>
#include <vector>

namespace velmora {

/// The user's consent to the microphone, with the codes of the stored and logged form.
enum class MicrophoneAuthorization { NotDetermined = 0, Restricted = 1, Denied = 2, Authorized = 3 };

/// An input as the user chooses it: the ID stays the same over restarts.
struct AudioInput {
    QString uniqueID;
    QString name;

    bool operator==(const AudioInput&) const = default;
};

/// Captures one microphone. All operations belong to the main thread; the tap runs on the engine's own.
class AudioEngine {
public:
    /// Receives captured audio in the input's format, in buffers of about 20 ms. May not block.
    using Tap = std::function<void(const AudioBuffer&)>;

    virtual ~AudioEngine() = default;

    [[nodiscard]] virtual MicrophoneAuthorization authorization() = 0;
    /// Asks the user where the desktop has a way to; the answer is the state after it.
    virtual QCoro::Task<bool> requestAccess() = 0;

    /// The inputs one can speak into (no monitors of outputs), in the system's order.
    [[nodiscard]] virtual std::vector<AudioInput> availableInputs() = 0;

    /// Whatever input the system calls the default at the next start.
    virtual void useDefaultInput() = 0;
    /// Throws AudioDeviceError `notFound` when there is no such input now.
    virtual void setInputDevice(const QString& uniqueID) = 0;

    /// The chosen input's native format; its sample rate is 0 when there is no usable input.
    [[nodiscard]] virtual AudioFormat inputFormat() = 0;

    /// Brings up what makes the next start quick. Opens no capture.
    virtual void prepare() = 0;
    /// Replaces the tap, if there is one.
    virtual void installTap(Tap tap) = 0;
    /// When it returns, the tap isn't running and will not be called again.
    virtual void removeTap() = 0;
    /// Opens the capture; throws AudioDeviceError. An input that goes away later yields silence.
    virtual void start() = 0;
    virtual void stop() = 0;
};

} // namespace velmora
