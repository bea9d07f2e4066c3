#pragma once

#include <QString>

namespace velmora {

/// Plays the short sounds that ship with the program.
class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;

    /// Plays the sound from its beginning, also when it is still running; an unknown name is silence.
    /// `volume` goes from 0.0 to 1.0.
    virtual void play(const QString& name, float volume) = 0;
};

} // namespace velmora
