#pragma once

#include "platform/audio_engine.h"

#include <QObject>

namespace velmora {

/// The inputs one can speak into, as they come and go.
class AudioInputs : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// What is known now, without waiting for the sound server; in the system's order.
    [[nodiscard]] virtual std::vector<AudioInput> inputs() = 0;

Q_SIGNALS:
    /// May be emitted on another thread: a receiver that lives on the main thread gets it there.
    void inputsChanged();
};

} // namespace velmora
